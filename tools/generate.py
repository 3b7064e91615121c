#!/usr/bin/env python3
"""tools/generate.py WHAT INTO [HEADERS] - writes what is made from the description of the interface

    fortran DIRECTORY    interface modules, one for each header, orvel_constants and the module of the array style
    probes DIRECTORY     two halves of a program, probe.c and probe.f90, whose link with -flto compares all types
    exports FILE         version script of liborvel
    exports_blas FILE    version script of liborvel_blas
    table FILE           orvel_test::routines, an array of all routines with their arguments, for tests in C++
"""
import re
import sys
import textwrap
from pathlib import Path

import interface

FORTRAN = {"integer": "integer", "unsigned": "integer", "long": "integer(int64)", "long unsigned": "integer(int64)",
           "single": "real", "double": "double precision", "complex": "complex",
           "double complex": "complex(kind(0d0))"}
FUNCTIONS = {"single function": "real_function", "double function": "double_function"}
CONSTANTS = ("AMACH", "DMACH", "IMACH", "SRMACH", "DRMACH")


def families(description):
    for header in description["headers"]:
        standard = {s["title"] for s in header["sections"] if s["standard"]}
        for family in header["families"]:
            yield header, family, family["section"] in standard


# ---- Fortran modules -------------------------------------------------------------------------------------


def wrapped(text):
    """A statement within the line length of free form."""
    indent = " " * (len(text) - len(text.lstrip()))
    lines = textwrap.wrap(text, 118, subsequent_indent=indent + "  ", break_long_words=False, break_on_hyphens=False)
    return " &\n".join(lines)


def intent(name, member, rows):
    """What is written on demand only, or may be the same array as another, has none, so that such calls conform."""
    row = rows[name]
    present = {a["name"] for a in member["arguments"]}
    shared = [other for other in row["may_be"] if other in present]
    shared += [other for other in present if name in rows[other]["may_be"]]
    if row["role"] == "in/out" or shared:
        return ""
    return ", intent(in)" if row["role"] == "in" else ", intent(inout)"


def dimensions(name, member, rows):
    row, names = rows[name], {a["name"] for a in member["arguments"]}
    if not row["shape"]:
        return ""
    inner = [d.lower() if d in names or d.isdigit() else None for d in row["shape"]]
    if None in inner[:-1]:
        return "(*)"
    last = inner[-1] if inner[-1] and inner[-1].isdigit() else "*"
    return f"({', '.join([*inner[:-1], last])})"


def declared(argument, member, rows):
    """The declaration of a dummy argument without its name and dimensions, and these."""
    name, kind = argument["name"], argument["type"]
    if kind in FUNCTIONS:
        return f"procedure({FUNCTIONS[kind]})", name.lower()
    if kind == "character":
        length = "(*)" if rows[name]["shape"] else ""
        return f"character{length}{intent(name, member, rows)}", name.lower()
    if kind.startswith("orvel_"):
        return f"type({kind.removeprefix('orvel_')}){intent(name, member, rows)}", \
            name.lower() + dimensions(name, member, rows)
    if "or N complex numbers" in rows[name]["meaning"]:
        return "type(*)", name.lower() + "(*)"
    return FORTRAN[kind] + intent(name, member, rows), name.lower() + dimensions(name, member, rows)


def procedure(member, rows, binding="", name=None, result=None):
    """The interface body of a routine, indented by four blanks."""
    name = name or member["name"].lower()
    arguments = ", ".join(a["name"].lower() for a in member["arguments"])
    is_function = member["returns"] != "none"
    kind = "function" if is_function else "subroutine"
    prefix = f"{FORTRAN[member['returns']]} " if is_function and not result else ""
    lines = [wrapped(f"    {prefix}{kind} {name}({arguments}){binding}{result or ''}")]
    merged = {}
    for argument in member["arguments"]:
        form, entity = declared(argument, member, rows)
        merged.setdefault(form, []).append(entity)
    imports = {m[1] for form in merged for m in [re.match(r"(?:type|procedure)\(([a-z]\w+)\)", form)] if m}
    imports |= {"int64"} if any("int64" in form for form in merged) else set()
    if imports:
        lines.append(f"      import :: {', '.join(sorted(imports))}")
    # lengths before the arrays that they dimension
    for form in sorted(merged, key=lambda f: (not f.startswith("integer"), list(merged).index(f))):
        lines.append(wrapped(f"      {form} :: {', '.join(merged[form])}"))
    return lines + [f"    end {kind} {name}"]


def distinguishable(members):
    kinds = [tuple(a["type"] for a in m["arguments"]) for m in members]
    return len(set(kinds)) == len(kinds) and all(kinds)


def generic_name(group, standard_kernels):
    """That of the single routine; the kernels' has a prefix, as their names would be too common."""
    name = group[0]["generic"].lower()
    return f"orvel_{name}" if standard_kernels else name


def interface_blocks(header, family):
    groups = {}
    for member in family["members"]:
        groups.setdefault(member["generic"], []).append(member)
    kernels = header["name"] in ("kernels.h", "matrices.h")
    for group in groups.values():
        generic = len(group) > 1 and distinguishable(group)
        yield f"  interface {generic_name(group, kernels)}" if generic else "  interface"
        for member in group:
            yield from procedure(member, family["arguments"])
        yield "  end interface"


def module(name, header, body, uses=(), types=(), title=None):
    text = [f"! {name} - {title or header['title'].partition(' - ')[2]}", "!",
            f"! Made from include/orvel/{header['name']}, where the arguments are explained. A result is inout, because the",
            "! compiler may drop what the caller stored in an out one; what is written on demand only has no intent, so that",
            "! literals pass. A generic name stands for the members of all precisions.", f"module {name}", *uses,
            "  implicit none", "  public", *types]
    body = list(body)
    if any("real_function" in line or "double_function" in line for line in body):
        text += ["  private :: real_function, double_function", "", "  abstract interface"]
        for kind, prefix in (("real", "real"), ("double precision", "double")):
            text += [f"    {kind} function {prefix}_function(x)", f"      {kind}, intent(in) :: x",
                     f"    end function {prefix}_function"]
        text += ["  end interface"]
    return "\n".join([*text, "", *body, f"end module {name}"]) + "\n"


def packet_types(header):
    """Structures that routines take as arguments, as derived types."""
    for declared_type in header["types"]:
        name = declared_type.get("struct", "").removeprefix("orvel_")
        if name.endswith("_epack"):
            yield f"  type, bind(c) :: {name}"
            for member in declared_type["members"]:
                c_type, member_name = member.split()
                yield f"    {FORTRAN[interface.SCALARS[c_type]]} :: {member_name}"
            yield f"  end type {name}"


def array_style(header):
    """The module of the functions MODULE_mp_NAME: a value that becomes a constant where it is assigned."""
    members = [(f, m) for f in header["families"] for m in f["members"] if "_mp_" in m["name"]]
    name = members[0][1]["name"].partition("_mp_")[0].lower()
    value = next(t for t in header["types"] if t.get("struct") == "orvel_floating_point")
    body = {"": [], "assignment(=)": [], "amach": []}
    for family, member in members:
        own = member["name"].partition("_mp_")[2].lower()
        block = "assignment(=)" if "_eq_" in own else own if member["returns"].startswith("orvel_") else ""
        lines = procedure(member, family["arguments"], f' bind(c, name="{member["name"]}")',
                          own + ("_value" if block == own else ""), " result(value)" if block == own else None)
        if block == own:
            lines[-1:-1] = ["      type(floating_point) :: value"]
        lines = [line for line in lines if not line.startswith("      import")]
        lines[1:1] = ["      import :: floating_point, c_int32_t, c_float, c_double"]
        if block == "assignment(=)":  # the standard asks for it, and nothing is kept of what was there
            lines = [line.replace("intent(inout)", "intent(out)") for line in lines]
        body[block] += lines
    text = []
    for block, lines in body.items():
        text += [f"  interface {block}".rstrip(), *lines, f"  end interface {block}".rstrip()]
    kinds = ((r"\binteger\b", "integer(c_int32_t)"), (r"\breal\b(?=,| function)", "real(c_float)"),
             (r"\bdouble precision\b", "real(c_double)"))
    for pattern, kind in kinds:
        text = [re.sub(pattern, kind, line) for line in text]
    public = "  private\n  public :: floating_point, amach, s_amach, d_amach, assignment(=)"
    types = ["", "  type, bind(c) :: floating_point", f"    integer(c_int32_t) :: {value['members'][0].split()[1]}",
             "  end type floating_point"]
    uses = ["  use, intrinsic :: iso_c_binding, only: c_int32_t, c_float, c_double"]
    title = "machine constants in the precision of the variable that they are assigned to"
    return name, module(name, header, text, uses, types, title).replace("  public", public, 1)


HOST_TYPES = {"integer": "integer(c_int32_t), value", "character": "character(kind=c_char), intent(in)",
              "none": "type(c_ptr), value", "size": "integer(c_size_t), value"}


def host_module(header):
    """By value, with addresses of procedures and data."""
    body = ["  interface"]
    for family in header["families"]:
        for member in family["members"]:
            arguments = ", ".join(a["name"].lower() for a in member["arguments"])
            kinds = {"integer": "integer(c_int32_t) function", "none": "subroutine", "character": "type(c_ptr) function"}
            kind = kinds[member["returns"]]
            name = member["name"].lower()
            body += [f"    {kind} {name}({arguments}) bind(c)",
                     "      import :: c_int32_t, c_ptr, c_funptr, c_char"]
            for a in member["arguments"]:
                form = HOST_TYPES.get(a["type"], "type(c_funptr), value")
                body.append(f"      {form} :: {a['name'].lower()}{'(*)' if a['type'] == 'character' else ''}")
            body.append(f"    end {kind.split()[-1]} {name}")
    uses = ["  use, intrinsic :: iso_c_binding, only: c_int32_t, c_ptr, c_funptr, c_char"]
    return module("orvel_host", header, [*body, "  end interface"], uses,
                  ["  private :: c_int32_t, c_ptr, c_funptr, c_char"])


def fortran_modules(description):
    for header in description["headers"]:
        name = "orvel_" + header["name"].removesuffix(".h")
        if header["name"] == "host.h":
            yield name, host_module(header)
            continue
        if header["name"] == "frame.h":
            yield array_style(header)
            constants = [line for f in header["families"] if f["name"] in CONSTANTS
                         for line in interface_blocks(header, f)]
            yield "orvel_constants", module("orvel_constants", header, constants, title="machine constants")
        body = [line for f in header["families"] if f["name"] not in CONSTANTS and "_mp_" not in f["name"]
                for line in interface_blocks(header, f)]
        uses = ["  use orvel_constants, only: dmach, imach, srmach, drmach"] if header["name"] == "frame.h" else []
        if any("int64" in line for line in body):
            uses.append("  use, intrinsic :: iso_fortran_env, only: int64")
        yield name, module(name, header, body, uses, list(packet_types(header)))


# ---- comparison of types by the linker -------------------------------------------------------------------


def probe_definitions(description):
    """Definitions of the Fortran names with the types that the headers give them."""
    yield '#include "orvel/orvel.h"'
    yield "void keep_(void (*address)(void)) { (void)address; }"
    for header, family, _ in families(description):
        if header["name"] == "host.h":
            continue
        for member in family["members"]:
            c = member["c"].removesuffix(";")
            lengths = "".join(f", long {a['name'].lower()}_hidden" for a in member["arguments"]
                              if a["type"] == "character" and not family["arguments"][a["name"]]["shape"])
            c = re.sub(r"\bsize_t\b", "long", c[:-1]) + lengths + ")"  # gfortran's lengths are signed
            if "_mp_" not in member["name"]:
                c = c.replace(f" {member['name']}(", f" {member['name'].lower()}_(", 1)
            result = re.match(r"(.*?)\s*\w+\(", c)[1]
            yield c + (" {}" if member["returns"] == "none" else f" {{ static {result} zero; return zero; }}")


def probe_references(description):
    """A subroutine for each routine that takes its address, and with it its types, from the module."""
    count = 0
    for header, family, _ in families(description):
        if header["name"] == "host.h":
            continue
        for member in family["members"]:
            name = member["name"].lower()
            if "_mp_" in name:
                continue
            module_name = "orvel_constants" if family["name"] in CONSTANTS else \
                "orvel_" + header["name"].removesuffix(".h")
            count += 1
            yield f"subroutine probe_{count}\n  use {module_name}, only: {name}\n" \
                  f"  external :: keep\n  call keep({name})\nend subroutine probe_{count}"
    yield "program probe"
    for k in range(1, count + 1):
        yield f"  call probe_{k}"
    yield "end program probe"


# ---- lists for the linker and for tests ------------------------------------------------------------------


def version_script(names):
    return "ORVEL_1 {\nglobal:\n  " + ";\n  ".join(sorted(names)) + ";\nlocal:\n  *;\n};\n"


def exports(description):
    names = set()
    for header, family, standard in families(description):
        for member in family["members"]:
            names.add(member["name"])
            if not standard and header["name"] != "host.h":
                names.add(member["name"].lower() + "_")
    for header in description["headers"]:
        for block in header["blocks"]:
            names |= {block["block"], block["block"].lower() + "_"}
    return names


def blas_exports(description):
    return {m["name"].lower() + "_" for _, family, standard in families(description) if standard
            for m in family["members"]}


def table(description):
    yield "// All routines of the public headers with their arguments, in the order of the headers."
    yield "#pragma once\n\n#include \"orvel/orvel.h\"\n\nnamespace orvel_test {\n"
    yield "struct Argument {\n    const char *name, *type, *role, *shape, *step;\n};"
    yield "struct RoutineEntry {\n    const char *name, *family, *header, *returns;\n    void (*address)();\n" \
          "    int count;\n    Argument arguments[16];\n};\n"
    yield "inline const RoutineEntry routines[] = {"
    for header, family, _ in families(description):
        for member in family["members"]:
            arguments = []
            for a in member["arguments"]:
                row = family["arguments"][a["name"]]
                shape = ",".join(row["shape"] or [])
                arguments.append(f'{{"{a["name"]}", "{a["type"]}", "{row["role"]}", "{shape}", "{row["step"] or ""}"}}')
            yield f'    {{"{member["name"]}", "{family["name"]}", "{header["name"]}", "{member["returns"]}",\n' \
                  f'     reinterpret_cast<void (*)()>(&{member["name"]}), {len(arguments)}, {{{", ".join(arguments)}}}}},'
    yield "};\n\n}  // namespace orvel_test"


def main():
    what, into, *headers = sys.argv[1:]
    into = Path(into)
    try:
        description = interface.read(headers[0] if headers else "include/orvel")
    except interface.Misunderstood as problem:
        sys.exit(str(problem))
    if what == "fortran":
        into.mkdir(parents=True, exist_ok=True)
        for name, text in fortran_modules(description):
            (into / f"{name}.f90").write_text(text)
    elif what == "probes":
        into.mkdir(parents=True, exist_ok=True)
        (into / "probe.c").write_text("\n".join(probe_definitions(description)) + "\n")
        (into / "probe.f90").write_text("\n".join(probe_references(description)) + "\n")
    elif what == "exports":
        into.write_text(version_script(exports(description)))
    elif what == "exports_blas":
        into.write_text(version_script(blas_exports(description)))
    elif what == "table":
        into.write_text("\n".join(table(description)) + "\n")
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main()
