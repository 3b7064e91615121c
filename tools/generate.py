#!/usr/bin/env python3
"""tools/generate.py WHAT INTO [HEADERS] - writes what is made from the description of the interface

    fortran DIRECTORY    interface modules, one for each header, orvel_constants and the module of the array style
    probes DIRECTORY     two halves of a program, probe.c and probe.f90, whose link with -flto compares all types
    cxx FILE             overloads of the C++ interface
    exports FILE         version script of liborvel
    exports_blas FILE    version script of liborvel_blas
    python FOLDER        what the Python package reads of the description, its stubs
    table FILE           orvel_test::routines, an array of all routines with their arguments, for tests in C++
    drivers FILE         hostile::routines, with shapes as functions and typed calls, for tests/hostile
"""
import re
import sys
import textwrap
from pathlib import Path

import cxx
import drivers
import interface
import python_face

FORTRAN = {"integer": "integer", "unsigned": "integer", "long": "integer(int64)", "long unsigned": "integer(int64)",
           "single": "real", "double": "double precision", "complex": "complex",
           "double complex": "complex(kind(0d0))"}
C_KINDS = {"integer": "integer(c_int32_t)", "single": "real(c_float)", "double": "real(c_double)"}
FUNCTIONS = {"single function": "real_function", "double function": "double_function"}
CONSTANTS = ("AMACH", "DMACH", "IMACH", "SRMACH", "DRMACH")


def families(description):
    for header in description["headers"]:
        standard = {s["title"] for s in header["sections"] if s["standard"]}
        for family in header["families"]:
            yield header, family, family["section"] in standard


def module_of(header, family):
    """The Fortran module that a family is in."""
    if family["name"] in CONSTANTS:
        return "orvel_constants"
    return "amach_int" if "_mp_" in family["name"] else "orvel_" + header["name"].removesuffix(".h")


def generic_groups(header, family):
    """Members that share a generic name, with that name in Fortran, or None where their arguments do not tell them
    apart. It is that of the single routine; the kernels' has a prefix, as their names would be too common."""
    groups = {}
    for member in family["members"]:
        groups.setdefault(member["generic"], []).append(member)
    prefix = "orvel_" if header["name"] in interface.KERNELS else ""
    for name, group in groups.items():
        kinds = {tuple(a["type"] for a in member["arguments"]) for member in group}
        yield prefix + name.lower() if len(group) == len(kinds) > 1 else None, group


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


def declared(argument, member, rows, kinds):
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
    return kinds[kind] + intent(name, member, rows), name.lower() + dimensions(name, member, rows)


def procedure(member, rows, kinds=FORTRAN, name=None, binding=""):
    """The interface body of a routine, indented by four blanks."""
    name = name or member["name"].lower()
    arguments = ", ".join(a["name"].lower() for a in member["arguments"])
    is_function, structure = member["returns"] != "none", member["returns"].startswith("orvel_")
    kind = "function" if is_function else "subroutine"
    result = f"type({member['returns'].removeprefix('orvel_')})" if structure else kinds.get(member["returns"], "")
    head = f"{result} {kind} {name}({arguments}){binding}".strip()
    lines = [wrapped("    " + head)]
    merged = {}
    for argument in member["arguments"]:
        form, entity = declared(argument, member, rows, kinds)
        merged.setdefault(form, []).append(entity)
    imports = {m[1] for form in [*merged, result] for m in [re.match(r"\w+\(([a-z]\w+)\)", form)] if m}
    if imports:
        lines.append(f"      import :: {', '.join(sorted(imports))}")
    # lengths before the arrays that they dimension
    for form in sorted(merged, key=lambda f: (not f.startswith("integer"), list(merged).index(f))):
        lines.append(wrapped(f"      {form} :: {', '.join(merged[form])}"))
    return lines + [f"    end {kind} {name}"]


def interface_blocks(header, family):
    for generic, group in generic_groups(header, family):
        yield f"  interface {generic or ''}".rstrip()
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
        block = "assignment(=)" if "_eq_" in own else own if own in body else ""
        lines = procedure(member, family["arguments"], C_KINDS, own + ("_value" if block == own else ""),
                          f' bind(c, name="{member["name"]}")')
        if block == "assignment(=)":  # the standard asks for it, and nothing is kept of what was there
            lines = [line.replace("intent(inout)", "intent(out)") for line in lines]
        body[block] += lines
    text = []
    for block, lines in body.items():
        text += [f"  interface {block}".rstrip(), *lines, f"  end interface {block}".rstrip()]
    public = "  private\n  public :: floating_point, amach, s_amach, d_amach, assignment(=)"
    types = ["", "  type, bind(c) :: floating_point", f"    integer(c_int32_t) :: {value['members'][0].split()[1]}",
             "  end type floating_point"]
    uses = ["  use, intrinsic :: iso_c_binding, only: c_int32_t, c_float, c_double"]
    title = "machine constants in the precision of the variable that they are assigned to"
    return name, module(name, header, text, uses, types, title).replace("  public", public, 1)


HOST_TYPES = {"integer": "integer(c_int32_t), value", "character": "character(kind=c_char), intent(in)",
              "none": "type(c_ptr), value", "size": "integer(c_size_t), value",
              "orvel_address": "type(c_ptr), intent(in)"}


def host_module(header):
    """By value, with addresses of procedures and data."""
    structures = {declared_type.get("struct") for declared_type in header["types"]}
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
                row = family["arguments"][a["name"]]
                form = HOST_TYPES.get(a["type"], "type(c_funptr), value")
                if a["type"] in structures:
                    form = f"type({a['type']}), intent(inout), target"
                    body.append(f"      import :: {a['type']}")
                elif a["type"] == "character" and "null" in row["meaning"]:
                    form += ", optional"
                body.append(f"      {form} :: {a['name'].lower()}{'(*)' if row['shape'] else ''}")
            body.append(f"    end {kind.split()[-1]} {name}")
    uses = ["  use, intrinsic :: iso_c_binding, only: c_int32_t, c_ptr, c_funptr, c_char"]
    return module("orvel_host", header, [*body, "  end interface"], uses,
                  ["  private :: c_int32_t, c_ptr, c_funptr, c_char", *host_structures(header)])


def host_structures(header):
    for declared_type in header["types"]:
        if "struct" in declared_type:
            yield f"  type, bind(c) :: {declared_type['struct']}"
            for member in declared_type["members"]:
                c_type, name, count = re.fullmatch(r"(?:struct )?(\w+\*?) (\w+)(?:\[(\d+)\])?", member).groups()
                kind = {"int32_t": "integer(c_int32_t)", "char": "character(kind=c_char)"}.get(c_type, "type(c_ptr)")
                yield f"    {kind} :: {name}{f'({count})' if count else ''}"
            yield f"  end type {declared_type['struct']}"


def whole_module(names):
    """All of them by one name."""
    return "\n".join(["! orvel - every routine; AMACH is that of orvel_constants", "module orvel",
                      *(f"  use {name}" for name in names), "  implicit none", "  public", "end module orvel"]) + "\n"


def fortran_modules(description):
    names = ["orvel_" + header["name"].removesuffix(".h") for header in description["headers"]]
    yield "orvel", whole_module(["orvel_constants", *names])
    for name, header in zip(names, description["headers"]):
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
    """Definitions of the names that Fortran calls, with the types that the headers give them."""
    yield '#include "orvel/orvel.h"'
    yield "void keep_(void (*address)(void)) { (void)address; }"
    for header, family, _ in families(description):
        for member in family["members"]:
            c, is_bound = member["c"].removesuffix(";"), header["name"] == "host.h" or "_mp_" in member["name"]
            if not is_bound:  # a Fortran name and lengths of texts, which are signed there
                lengths = "".join(f", long {a['name'].lower()}_hidden" for a in member["arguments"]
                                  if a["type"] == "character" and not family["arguments"][a["name"]]["shape"])
                c = re.sub(r"\bsize_t\b", "long", c[:-1]) + lengths + ")"
                c = c.replace(f" {member['name']}(", f" {member['name'].lower()}_(", 1)
            result = re.match(r"(.*?)\s*\w+\(", c)[1]
            yield c + (" {}" if result == "void" else f" {{ static {result} zero; return zero; }}")


ARRAY_STYLE_PROBE = """subroutine probe_array_style
  use amach_int
  real :: single
  double precision :: double
  single = amach(1)
  double = amach(1)
  single = s_amach(1) + single
  double = d_amach(1) + double + single
  if (double < 0) error stop
end subroutine probe_array_style"""


def probe_references(description):
    """A subroutine for each routine that takes its address, and with it its types, from the module."""
    probes = []
    for header, family, _ in families(description):
        module_name = module_of(header, family)
        for member in family["members"] if module_name != "amach_int" else []:
            name = member["name"].lower()
            probes.append(f"probe_{len(probes) + 1}")
            yield f"subroutine {probes[-1]}\n  use {module_name}, only: {name}\n" \
                  f"  external :: keep\n  call keep({name})\nend subroutine {probes[-1]}"
    yield ARRAY_STYLE_PROBE
    yield "program probe"
    yield from (f"  call {probe}" for probe in [*probes, "probe_array_style"])
    yield "end program probe"


# ---- ordinary arguments, lists for the linker and for tests ----------------------------------------------

ORDINARY = {"M": 3, "N": 4, "K": 2, "KL": 1, "KU": 1, "NDATA": 6, "NINTV": 5, "KORDER": 4, "MAXSUB": 10, "NRA": 3,
            "NCA": 3, "INCX": 1, "INCY": 1, "NOS": 3, "ITMAX": 5, "NROOT": 1, "MAXFN": 9, "NVALS": 2, "MONTH": 3,
            "IDAY": 3, "IYEAR": 2000, "IDERIV": 1, "IRULE": 2, "IERTYP": 0, "LO": 1, "HI": 5, "IARG": 3, "A": 0.25,
            "B": 2.0, "ERRABS": 0.5, "ERRREL": 0.5, "CHAPTER": "MATH", "LEN": 4, "NR": 5, "SLEN": 1}


def ordinary(family):
    """Values of the scalar arguments: the first choice, small sizes, leading dimensions with room."""
    values = {}
    for name, row in family["arguments"].items():
        if row["choices"]:
            first = next(iter(row["choices"]))
            values[name] = int(first) if first.lstrip("-").isdigit() else first
        else:
            values[name] = ORDINARY.get(name, 8 if name.startswith("LD") else 1)
    if family["name"] == "IUMAG":
        values["IOPT"] = 16
    return values


def elements(family, row):
    """How many elements an array has for ordinary arguments, and the larger of two where a condition decides."""
    values = {name: v for name, v in ordinary(family).items() if isinstance(v, int)}
    for name, condition in family["lengths"].items():
        values[name] = max(values[word] for word in re.findall(r"[A-Z]+", condition) if word in values)
    if "*" in row["shape"]:
        return 4
    count = 1
    for expression in row["shape"]:
        count *= eval(expression.replace("/", "//"), {}, values)
    return max(count, 1)


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
    yield "// Elements and value are those of an ordinary call.\nstruct Argument {\n" \
          "    const char *name, *type, *role, *shape;\n    int elements;\n    double value;\n    const char* text;\n};"
    yield "struct RoutineEntry {\n    const char *name, *family, *header, *returns;\n    void (*address)();\n" \
          "    int count;\n    Argument arguments[20];\n};\n"
    yield "inline const RoutineEntry routines[] = {"
    for header, family, _ in families(description):
        values = ordinary(family)
        for member in family["members"]:
            arguments = []
            for a in member["arguments"]:
                row, value = family["arguments"][a["name"]], values[a["name"]]
                number, text = (0, value) if isinstance(value, str) else (value, "")
                arguments.append(f'{{"{a["name"]}", "{a["type"]}", "{row["role"]}", "{",".join(row["shape"] or [])}", '
                                 f'{elements(family, row) if row["shape"] else 0}, {number}, "{text}"}}')
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
    elif what == "cxx":
        into.parent.mkdir(parents=True, exist_ok=True)
        into.write_text("\n".join(cxx.overloads(description)) + "\n")
    elif what == "table":
        into.write_text("\n".join(table(description)) + "\n")
    elif what == "drivers":
        into.parent.mkdir(parents=True, exist_ok=True)
        into.write_text("\n".join(drivers.source(description)) + "\n")
    elif what == "python":
        types = Path(headers[0] if headers else "include/orvel") / "types.h"
        version = re.search(r'define ORVEL_VERSION "([\d.]+)"', types.read_text())[1]
        try:
            python_face.write(description, into, version)
        except interface.Misunderstood as problem:
            sys.exit(str(problem))
    else:
        sys.exit(__doc__)


if __name__ == "__main__":
    main()
