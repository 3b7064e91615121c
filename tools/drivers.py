"""tools/drivers.py - the table from which tests/hostile calls every routine, with shapes as functions"""
import json
import re
from pathlib import Path

TYPES = {"integer": "i", "unsigned": "i", "long": "l", "long unsigned": "l", "single": "s", "double": "d", "complex": "c",
         "double complex": "z", "character": "t", "single function": "f", "double function": "g",
         "orvel_floating_point": "i", "orvel_s_epack": "p", "orvel_d_epack": "q", "none": "v"}
# Driven by the engine around calls of others: an outcome or a count by itself means nothing.
APART = ("orvel_begin_quiet", "orvel_end_quiet", "orvel_with_context", "orvel_call_with_context")
SAME = Path(__file__).resolve().parent.parent / "tests/same_on_all_levels.txt"
SYMBOL = re.compile(r"[A-Z][A-Z0-9]*")


def in_terms_of(expression, positions, lengths):
    """An expression of the headers in C++: scalar arguments by their places, lengths by what they stand for."""
    def replaced(found):
        name = found[0]
        if name in positions:
            return f"v[{positions[name]}]"
        yes, argument, value, no = re.fullmatch(r"(\w+) if (\w+) = (\w), else (\w+)", lengths[name]).groups()
        value = value if value.isdigit() else f"'{value}'"
        return f"(v[{positions[argument]}] == {value} ? v[{positions[yes]}] : v[{positions[no]}])"
    return SYMBOL.sub(replaced, expression)


def shape(row, positions, lengths):
    """A function that gives a Shape, without elements where a size is negative; null where a length follows."""
    if not row["shape"] or "*" in row["shape"]:
        return "nullptr"
    if row["step"]:
        parts = row["shape"][0], "1", f"|{row['step']}"
    elif row["rows"]:
        parts = row["shape"][1], row["rows"], row["shape"][0]
    else:
        whole = " * ".join(f"({d})" for d in row["shape"])
        parts = "1", whole, whole
    sizes = sorted({s for part in parts[:2] for s in SYMBOL.findall(part)})
    parts = [in_terms_of(p, positions, lengths) for p in parts]
    parts = [f"std::fabs({p[1:]})" if p.startswith("|") else p for p in parts]
    least = "".join(f", {in_terms_of(s, positions, lengths)}" for s in sizes)
    guard = f"std::min({{0.0{least}}}) < 0 ? Shape{{}} : " if sizes else ""
    return f"[](const double*{' v' if 'v[' in ''.join(parts) else ''}) " \
           f"{{ return {guard}Shape{{{', '.join(parts)}}}; }}"


def kind(name, rows):
    """What an integer is for: a leading dimension, an increment, a size, one of a few choices, or something else."""
    if rows[name]["choices"]:
        return "choice"
    for row in rows.values():
        if row["rows"] and row["shape"][0] == name:
            return "leading"
        if row["step"] == name:
            return "increment"
    words = {w for row in rows.values() for e in [*(row["shape"] or []), row["rows"] or ""] for w in SYMBOL.findall(e)}
    return "size" if name in words | {"M", "N", "K"} else "other"


def argument(given, rows, lengths):
    name, row = given["name"], rows[given["name"]]
    positions = {name: k for k, name in enumerate(rows)}
    code = TYPES.get(given["type"], "a")
    other = next((positions[b] for b in row["may_be"] if b in rows), -1)
    pair = re.search(r"where (\w+) = (\w+)", row["meaning"])
    equal = [positions[p] for p in pair.groups()] if pair and set(pair.groups()) <= rows.keys() else [-1, -1]
    ascending = bool(re.search("abscissas|break points", row["meaning"]))
    return f'{{"{name}", \'{code}\', Role::{row["role"].replace("/", "_")}, Kind::{kind(name, rows)}, ' \
           f'"{",".join(row["choices"] or [])}", {other}, {{{equal[0]}, {equal[1]}}}, {str(ascending).lower()}, ' \
           f'{str(bool(row["shape"])).lower()}, {shape(row, positions, lengths)}}}'


def own(error, member):
    """Whether an error that names its routine names this one."""
    origin = re.search(r"; from (\w+)", error["cause"])
    return not origin or member["generic"] == origin[1]


def source(description):
    members = [(h, f, m) for h in description["headers"] for f in h["families"] for m in f["members"]
               if m["name"] not in APART]
    names = {m["name"] for _, _, m in members}
    same = set(SAME.read_text().split("\n\n", 1)[1].split())
    assert same <= names, f"{SAME} knows other routines: {same - names}"
    yield '// Every routine as the public headers describe it.\n#include "orvel/orvel.h"'
    yield '#include "tests/hostile/description.h"\n\nnamespace hostile {\n\nnamespace {\n'
    for _, family, member in members:
        rows = {a["name"]: family["arguments"][a["name"]] for a in member["arguments"]}
        described = [argument(a, rows, family["lengths"]) for a in member["arguments"]]
        yield f"const Argument arguments_{member['name']}[] = {{"
        yield ",\n".join("    " + d for d in described or ["{}"]) + "};"
        refusals = [e for e in family["errors"] if "no storage" in e["cause"] and own(e, member)]
        yield f"const Refusal refusals_{member['name']}[] = {{"
        yield ",\n".join(f'    {{{e["code"]}, {json.dumps(e["text"])}}}' for e in refusals) or "    {}"
        yield "};"
        member["refusals"] = len(refusals)
    yield "\n}  // namespace\n\nconst std::vector<Routine>& routines()\n{\n    static const std::vector<Routine> all = {"
    for header, family, member in members:
        name = member["name"]
        texts = sum(a["type"] == "character" and bool(family["arguments"][a["name"]]["shape"]) for a in member["arguments"])
        result = "v" if member["returns"] == "character" else TYPES[member["returns"]]
        workers = {name[:k] + "2" + name[k + 1:] for k in (1, 2)} - {name}  # whose second character is 2
        yield f'        {{"{name}", "{header["name"]}", call<{name}>, \'{result}\', {len(member["arguments"])}, ' \
              f'{texts if header["name"] != "host.h" else 0}, arguments_{name}, {str(bool(workers & names)).lower()}, ' \
              f'{str(name in same).lower()}, {member["refusals"]}, refusals_{name}}},'
    yield "    };\n    return all;\n}\n\nstd::vector<Block> blocks()\n{\n    return {"
    for header in description["headers"]:
        for block in header["blocks"]:
            yield f"        {{&{block['block']}, sizeof {block['block']}}},"
    yield "    };\n}\n\n}  // namespace hostile"
