"""The documentation of a routine, from its description, in the form that readers of numpy know."""
import re
import textwrap

TYPES = {"s": "float32", "d": "float64", "c": "complex64", "z": "complex128", "i": "int32", "l": "int64"}


def filled(text, indent="    "):
    return textwrap.fill(text, 96, initial_indent=indent, subsequent_indent=indent, break_long_words=False)


def kinds(entry, name):
    """The types that an argument can have over the members."""
    position = list(entry["arguments"]).index(name)
    found = dict.fromkeys(TYPES.get(m[2][position], "str") for m in entry["members"])
    return " or ".join(found)


def shape_words(entry, family, name):
    shape, what = family["arguments"][name][1], entry["arguments"][name]
    if not shape or what.get("text"):
        return ""
    extents = what["shape"]
    for size, array in entry["one_less"].items():
        if array == name:
            return f"({size} + 1)"

    def word(extent):
        if isinstance(extent, list) and len(extent) == 4:
            return f"{word(extent[2])} or {word(extent[3])}"
        if isinstance(extent, list):
            return extent[0] + (f" + {extent[1]}" if extent[1] else "")
        return str(extent)

    return "(" + ", ".join(map(word, extents)) + ")"


def parameter_lines(entry, family, name):
    what, optional = entry["arguments"][name], entry["optional"].get(name)
    if what["role"] == "function":
        yield f"{name} : function of a float that returns a float"
    elif "shape" in what:
        yield f"{name} : array {shape_words(entry, family, name)} of {kinds(entry, name)}"
    else:
        yield f"{name} : {kinds(entry, name)}"
    yield filled(capital(family["arguments"][name][0]) or "See above.")
    if optional:
        value, words = optional
        yield filled(f"Default: {words or value}.")


def capital(text):
    return text[:1].upper() + text[1:]


def keyword_lines(entry, words):
    for word in words:
        name = word.partition("=")[0]
        if name in entry["sizes"]:
            least = " (one less than its length)" if name in entry["one_less"] else ""
            yield f"{name} : int, optional"
            yield filled(f"Taken from the arrays{least}; smaller to use their leading part.")
        elif name.startswith("overwrite_"):
            yield f"{name} : bool, optional"
            yield filled(f"Changes {name.removeprefix('overwrite_')} itself, not a copy.")
        elif name == "out":
            yield "out : array, tuple or dict of arrays, optional"
            yield filled("Where array results go; for several in their order, None for a new one, or by their names.")
        elif name == "dtype":
            yield "dtype : optional"
            yield filled("The precision, where it shall not be that of the arguments: numbers of Python are double.")


def result_lines(entry, family, fields):
    for field in fields:
        if field == "value":
            yield f"value : {' or '.join(dict.fromkeys(TYPES[m[1]] for m in entry['members']))}"
            yield filled(family["purpose"])
        else:
            yield f"{field} : " + (f"array {shape_words(entry, family, field)} of " if "shape" in
                                   entry["arguments"][field] else "") + kinds(entry, field)
            yield filled(capital(family["arguments"][field][0]))


def error_lines(family):
    for severity, code, cause, text, remedy in family["errors"]:
        yield filled(f"{severity} {code}: {cause}.")
        yield filled(f'"{text.strip()}"', "        ")
        if remedy:
            yield filled(f"Remedy: {remedy}.", "        ")
    for names in family["passes_up"]:
        yield filled(f"{'And those' if family['errors'] else 'Those'} of {names}.")


def section(title, lines):
    lines = list(lines)
    return [title, "-" * len(title), *lines, ""] if lines else []


def document(name, entry, family, words, fields):
    members = ", ".join(m[0] for m in entry["members"])
    shown = [re.sub("=.*", "", w) for w in words]
    lines = [filled(family["purpose"], ""), "", filled(f"Routines: {members}.", ""), ""]
    lengths = [f"{n} is {v}." for n, v in family["lengths"].items()]
    parameters = [line for n in shown if n in entry["arguments"] and n not in entry["sizes"]
                  for line in parameter_lines(entry, family, n)]
    if lengths:
        parameters.append(filled(" ".join(lengths)))
    parameters += keyword_lines(entry, words[words.index("*"):] if "*" in words else [])
    lines += section("Parameters", parameters)
    lines += section("Returns", result_lines(entry, family, fields))
    lines += section("Errors and warnings", error_lines(family))
    notes = [filled("Numbers may be arrays: a call for each element.", ""), ""] if entry["elemental"] else []
    for text in family["text"]:
        notes += text["verbatim"] if isinstance(text, dict) else [filled(text, ""), ""]
    for label, text in family["labels"].items():
        notes += [filled(f"{label}: {text}", ""), ""]
    while notes and not notes[-1]:
        notes.pop()
    return "\n".join(lines + section("Notes", notes)).rstrip() + "\n"
