"""tools/cxx.py - the overloads of the C++ interface, made from the description of the interface

    python3 tools/generate.py cxx FILE

A parameter is left out where the arrays tell it: the leading dimension and the order of a matrix, the length and the
increment of a vector. What else the overloads add to the description is in the two tables below.
"""
import re
import textwrap

import interface

SCALARS = {"integer": "std::int32_t", "unsigned": "std::uint32_t", "long": "std::int64_t",
           "long unsigned": "std::uint64_t", "single": "float", "double": "double", "complex": "std::complex<float>",
           "double complex": "std::complex<double>", "character": "char"}
PRECISIONS = ("double complex", "complex", "double", "single")  # the first of them that a routine has is its own
KEYWORDS = {"or", "and", "not", "new", "this"}

# Values of arguments that may be left out, where all that follow them may be.
DEFAULTS = {"IPATH": "1", "ERRABS": "std::sqrt(std::numeric_limits<{real}>::epsilon())",
            "ERRREL": "std::sqrt(std::numeric_limits<{real}>::epsilon())", "IRULE": "2", "MAXSUB": "500",
            "ITMAX": "100", "MAXFN": "1000"}

# Lengths that arrays have beside the routine's own: a spline of NINTV pieces ends with a breakpoint more.
LENGTHS = {"NINTV": ("BRKPT", "static_cast<std::int64_t>(brkpt.size()) - 1")}
OMITTED = ("frame.h", "host.h")  # what the overloads do themselves
CONSTANTS = ("AMACH",)  # IMACH stops the program when it is asked for what there is not


def cased(name):
    return name.lower() + ("_" if name.lower() in KEYWORDS else "")


def condition(value):
    """An expression of the description in C++; lengths are 64 bits wide."""
    if found := re.fullmatch(r"(.+?) if (\w+) = (\w+), else (.+)", value):
        yes, name, choice, no = found.groups()
        test = f"{cased(name)} == {choice}" if choice.isdigit() else f"detail::is({cased(name)}, '{choice}')"
        return f"({test} ? {expression(yes)} : {expression(no)})"
    return expression(value)


def expression(text):
    return re.sub(r"[A-Z][A-Z0-9]*", lambda m: f"std::int64_t({cased(m[0])})", text)


class Member:
    """One routine as an overload."""

    def __init__(self, header, family, member):
        self.family, self.member, self.rows = family, member, family["arguments"]
        self.in_place = header["name"] in interface.KERNELS
        self.arguments = member["arguments"]
        self.types = {a["name"]: a["type"] for a in self.arguments}
        kinds = [a["type"] for a in self.arguments] + [member["returns"]]
        kinds += [k.removesuffix(" function") for k in kinds if k.endswith(" function")]
        self.precision = next((p for p in PRECISIONS if p in kinds), None)
        self.real = {"complex": "single", "double complex": "double"}.get(self.precision, self.precision)
        self.lines, self.known = [], {}
        self.work_out()

    # ---- which arguments are what

    def is_array(self, name):
        return self.rows[name]["shape"] is not None and self.types[name] != "character"

    def is_matrix(self, name):
        return self.is_array(name) and len(self.rows[name]["shape"]) == 2

    def is_given(self, name):
        """An array that the caller passes; the others are returned or scratch."""
        role = self.rows[name]["role"]
        return self.is_array(name) and (role in ("in", "inout", "in/out") or (role == "out" and self.in_place))

    def returned(self):
        for a in self.arguments:
            row = self.rows[a["name"]]
            if row["role"] == "out" and not (self.is_array(a["name"]) and self.in_place):
                yield a["name"]
            elif row["role"] == "inout" and not row["shape"]:
                yield a["name"]

    def work_out(self):
        """What each length is worked out from, in an order in which that can be done."""
        given = [a["name"] for a in self.arguments if self.is_given(a["name"])]
        lengths = self.family["lengths"]
        scalars = [a["name"] for a in self.arguments if a["type"] == "integer" and not self.rows[a["name"]]["shape"]
                   and self.rows[a["name"]]["role"] == "in"]
        sources = {}
        for name, (array, value) in LENGTHS.items():
            if name in scalars and array in given:
                sources[name] = f'lengths.count("{cased(array)}", static_cast<std::size_t>(std::max<std::int64_t>({value}, 0)))'
        for name in given:
            row, own = self.rows[name], cased(name)
            if row["step"]:
                sources.setdefault(row["step"], f'lengths.step("{own}", {own})')
            if self.is_matrix(name):
                first, last = row["shape"]
                if first in scalars and row["rows"]:
                    sources.setdefault(first, f'lengths.leading("{own}", {own})')
                sources.setdefault(last, f'lengths.count("{own}", {own}.columns())')
                sources.setdefault(row["rows"] or first, f'lengths.count("{own}", {own}.rows())')
            else:
                sources.setdefault(row["shape"][0], f'lengths.count("{own}", {own}.size())')
        for name in given:  # K is the one or the other side of a matrix
            row, own = self.rows[name], cased(name)
            sides = [lengths.get(side, "") for side in (row["shape"][-1], row["rows"]) if self.is_matrix(name) and side]
            if len(sides) < 2:
                continue
            for k, other in ((0, "rows"), (1, "columns")):
                found = re.fullmatch(r"(\w+) if (\w+) = (\w+), else (\w+)", sides[k])
                if found and found[1] in scalars and found[1] not in sources:
                    side = "columns" if k == 0 else "rows"
                    test = f"detail::is({cased(found[2])}, '{found[3]}')"
                    sources[found[1]] = f'lengths.count("{own}", {test} ? {own}.{side}() : {own}.{other}())'
        self.sources = {name: sources[name] for name in scalars if name in sources}
        self.made_leading = {row["shape"][0] for name, row in self.rows.items() if name in self.types and row["rows"]
                             and not self.is_given(name)} - set(self.sources)

    def parameters(self):
        """Name, role and C++ type of the parameters, in the order of the routine."""
        result = []
        for a in self.arguments:
            name, row, kind = a["name"], self.rows[a["name"]], a["type"]
            if name in self.sources or name in self.made_leading or row["role"] == "scratch":
                continue
            if kind.endswith("function"):
                result.append((name, "Function&&"))
            elif self.is_given(name):
                const = "const " if row["role"] == "in" else ""
                view = "matrix_view" if self.is_matrix(name) else "vector_view"
                result.append((name, f"{view}<{const}{SCALARS[kind]}>"))
            elif kind == "character":
                result.append((name, "std::string_view" if row["shape"] else "char"))
            elif row["role"] in ("in", "inout", "in/out") and not row["shape"]:
                result.append((name, SCALARS[kind]))
        return result

    def takes_float(self):
        """Precision told by scalars alone; those are deduced, so that whole numbers are double."""
        types = [t for _, t in self.parameters()]
        return self.precision == "single" and "float" in types and not any("view" in t and "float" in t for t in types)

    # ---- the text of the overload

    def signature(self):
        return tuple(t for _, t in self.parameters() if t != "Function&&") + (self.precision if any(
            t == "Function&&" for _, t in self.parameters()) else None,)

    def declared(self):
        """Template head and parameter list."""
        template, texts, defaults = [], [], True
        parameters = self.parameters()
        if any(t == "Function&&" for _, t in parameters):
            template.append("class Function")
        if self.takes_float():
            template += ["class Real", "detail::if_float<Real> = 0"]
        for name, kind in reversed(parameters):
            kind = "Real" if kind == "float" and self.takes_float() else kind
            default = DEFAULTS.get(name) if "view" not in kind else None
            defaults = defaults and default is not None
            value = f" = {default.format(real=SCALARS[self.real] if self.real else '')}" if defaults else ""
            texts.insert(0, f"{kind} {cased(name)}{value}")
        head = f"template <{', '.join(template)}>\n" if template else ""
        return head, ", ".join(texts)

    def element(self, name, generic=False):
        kind = self.types[name]
        if generic and self.precision:
            if kind == self.precision:
                return "T"
            if kind == self.real:
                return "detail::real_of<T>"
        return SCALARS[kind]

    def storage(self, name, generic=False):
        element = self.element(name, generic)
        if self.is_matrix(name):
            return f"orvel::matrix<{element}>"
        return f"std::vector<{element}>" if self.is_array(name) else element

    def outputs(self, name):
        """The type of what is returned, and the structure where it is several."""
        returned = list(self.returned())
        if self.member["returns"] != "none":
            returned.insert(0, None)
        if not returned:
            return "void", None
        if len(returned) == 1:
            return self.storage(returned[0]) if returned[0] else SCALARS[self.member["returns"]], None
        members = [f"    {self.storage(r, True) if r else self.value_type()} {cased(r) if r else 'value'}{{}};"
                   for r in returned]
        head = "template <class T>\n" if self.precision else ""
        text = f"namespace outputs {{\n{head}struct {name} {{\n" + "\n".join(members) + "\n};\n}"
        return f"outputs::{name}" + (f"<{SCALARS[self.precision]}>" if self.precision else ""), text

    def value_type(self):
        kind = self.member["returns"]
        return "T" if kind == self.precision else "detail::real_of<T>" if kind == self.real else SCALARS[kind]

    def checks(self):
        """Statements: lengths, agreement of the arrays, storage of results and scratch."""
        for name, source in self.sources.items():
            yield f"const std::int32_t {cased(name)} = {source};"
        shaped = [self.rows[a["name"]] for a in self.arguments if self.is_array(a["name"])]
        used = " ".join(" ".join([*r["shape"], r["rows"] or ""]) for r in shaped)
        for name, value in self.family["lengths"].items():
            if re.search(rf"\b{name}\b", used):
                yield f"const std::int64_t {cased(name)} = {condition(value)};"
        for a in self.arguments:
            name, row, own = a["name"], self.rows[a["name"]], cased(a["name"])
            if not self.is_given(name):
                continue
            if self.is_matrix(name):
                rows = condition(row["rows"] or row["shape"][0])
                columns = condition(row["shape"][1])
                if row["shape"][1] in LENGTHS:  # the constructors give a column more
                    columns = f"std::int64_t({own}.columns()) < {columns} ? {columns} : std::int64_t({own}.columns())"
                yield f'lengths.shape("{own}", {own}, {rows}, {columns});'
                continue
            if row["step"] is None:
                yield f'lengths.side_by_side("{own}", {own});'
            length = row["shape"][0]
            if sources := self.sources.get(length):
                if f'"{own}", {own}.size()' not in sources and length not in LENGTHS:
                    yield f'lengths.equal("{own}", {own}, {condition(length)});'
            elif length != "*":
                how = "equal" if re.fullmatch(r"[A-Z]\w*", length) else "at_least"
                yield f'lengths.{how}("{own}", {own}, {condition(length)});'

    def made(self):
        """Statements: leading dimensions and storage of what the caller does not pass."""
        for a in self.arguments:
            name, row, own = a["name"], self.rows[a["name"]], cased(a["name"])
            if not self.is_array(name) or self.is_given(name):
                continue
            shape = row["shape"]
            if self.is_matrix(name):
                rows = row["rows"] or shape[0]
                if shape[0] in self.made_leading:
                    yield f"const auto {cased(shape[0])} = static_cast<std::int32_t>(std::max<std::int64_t>({condition(rows)}, 1));"
                yield f'auto {own} = lengths.matrix<{self.element(name)}>("{own}", {condition(rows)}, {condition(shape[1])});'
            else:
                yield f'auto {own} = lengths.vector<{self.element(name)}>("{own}", {condition(shape[0])});'

    def address(self, a):
        name, own = a["name"], cased(a["name"])
        if a["type"].endswith("function"):
            return own + "_"
        if self.is_given(name):
            return f"detail::lowest({own})" if self.rows[name]["step"] else f"{own}.data()"
        if self.is_array(name) or (a["type"] == "character" and self.rows[name]["shape"]):
            return f"{own}.data()"
        return f"&{own}"

    def body(self, name, returns):
        statements = [*self.checks(), *self.made()]
        returned = list(self.returned())
        scalars = [r for r in returned if not self.is_array(r) and self.rows[r]["role"] == "out"]
        lines = []
        if statements:
            lines += ["detail::lengths lengths;", *statements]
        lines += [f"{self.element(r)} {cased(r)}{{}};" for r in scalars]
        has_value = self.member["returns"] != "none"
        outputs = [f"std::move({cased(r)})" if self.is_array(r) else cased(r) for r in returned]
        if statements:
            empty = "" if returns == "void" else f", {returns}{{}}"
            lines.append(f'if (lengths.disagree()) return lengths.refused("{self.member["name"]}"{empty});')
        lines.append("detail::quiet call;")
        arguments = [self.address(a) for a in self.arguments]
        arguments += [f"{cased(a['name'])}.size()" for a in self.arguments
                      if a["type"] == "character" and self.rows[a["name"]]["shape"]]
        call = f"::{self.member['name']}({', '.join(arguments)})"
        function = next((a["name"] for a in self.arguments if a["type"].endswith("function")), None)
        if function:
            own, kind = cased(function), "orvel_function" if self.real == "single" else "orvel_dfunction"
            call = f"detail::with_function<{SCALARS[self.real]}>(call, {own}, [&]({kind} {own}_) {{ {call}; }})"
        if has_value:
            lines.append(f"const auto value = {call};")
            outputs.insert(0, "value")
        else:
            lines.append(f"{call};")
        if returns == "void":
            lines.append("return call.keep();")
        elif len(outputs) == 1:
            lines.append(f"return call.keep<{returns}>({outputs[0]});")
        else:
            lines.append(f"return call.keep({returns}{{{', '.join(outputs)}}});")
        return lines


def groups(description):
    """Overloads by name: the generic one where their parameters tell them apart, else the member's own."""
    result = {}
    for header in description["headers"]:
        for family in header["families"]:
            if header["name"] in OMITTED and family["name"] not in CONSTANTS:
                continue
            for member in family["members"]:
                result.setdefault(member["generic"].lower(), []).append(Member(header, family, member))
    for name, members in result.items():
        signatures = [m.signature() for m in members]
        if len(set(signatures)) == len(members):
            yield name, members
        else:
            yield from ((m.member["name"].lower(), [m]) for m in members)


def overloads(description):
    yield "// The overloads of orvel/orvel.hpp, made from the headers in C, where each routine is described."
    yield "#ifndef ORVEL_OVERLOADS_HPP\n#define ORVEL_OVERLOADS_HPP\n\n#include <cmath>\n\n#include \"orvel/orvel.hpp\"\n"
    yield "namespace orvel {\n"
    for name, members in groups(description):
        structures = set()
        for m in members:
            returns, structure = m.outputs(name)
            if structure and name not in structures:
                structures.add(name)
                yield structure
        for m in members:
            returns, _ = m.outputs(name)
            head, parameters = m.declared()
            comment = textwrap.wrap(f"{m.member['name']}: {m.family['purpose']}", 107)
            yield "\n".join(f"// {line}" for line in comment)
            signature = f"inline result<{returns}> {name}({parameters})"
            yield head + "\n".join(textwrap.wrap(signature, 110, subsequent_indent="    ")) + "\n{"
            yield "\n".join(f"    {line}" for line in m.body(name, returns))
            yield "}\n"
    yield "}  // namespace orvel\n\n#endif"
