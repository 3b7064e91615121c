"""tools/synopsis.py - how the routines of a family are called from each language, for man pages and the HTML manual"""
import textwrap

import cxx
import python_face
from generate import generic_groups, module_of


def wrapped(text, width, indent="        "):
    return textwrap.wrap(text, width, subsequent_indent=indent, break_on_hyphens=False, break_long_words=False)


class Synopsis:
    def __init__(self, description, width):
        self.width, self.overloads = width, {}
        self.python_names = python_face.compact(description, "")["routines"]
        for name, members in cxx.groups(description):
            for m in members:
                self.overloads.setdefault(m.family["name"], {}).setdefault(name, []).append(m)

    def all(self, header, family):
        """Title, language and lines, where a language has the routine."""
        for title, language, lines in (("Fortran", "fortran", self.fortran(header, family)),
                                       ("C", "c", self.c(header, family)), ("C++", "cpp", self.cpp(family)),
                                       ("Python", "python", self.python(family))):
            lines = list(lines)
            if lines:
                yield title, language, lines

    def fortran(self, header, family):
        """A call of each generic name."""
        if header["name"] == "host.h":
            yield "use orvel_host"
            return
        yield f"use {module_of(header, family)}"
        for generic, group in generic_groups(header, family):
            for member in group[:1] if generic else group:
                call = f"{generic or member['name'].lower()}({', '.join(a['name'].lower() for a in member['arguments'])})"
                call = f"call {call}" if member["returns"] == "none" else f"value = {call}"
                yield " &\n".join(wrapped(call, self.width, "    "))

    def c(self, header, family):
        yield f"#include <orvel/{header['name']}>"
        for member in family["members"]:
            yield from wrapped(member["c"], self.width, "    ")

    def cpp(self, family):
        """The overload for double precision of each name."""
        overloads = self.overloads.get(family["name"], {})
        if overloads:
            yield "#include <orvel/orvel.hpp>"
        for name, members in overloads.items():
            member = next((m for m in members if m.precision == "double"), members[0])
            returns, _ = member.outputs(name)
            fields = [*(["value"] if member.member["returns"] != "none" else []), *map(cxx.cased, member.returned())]
            yield from wrapped(f"orvel::result<{returns}> orvel::{name}({member.declared()[1]});", self.width)
            if len(fields) > 1:
                yield from wrapped(f"// with the members {', '.join(fields)}", self.width, "// ")

    def python(self, family):
        for name in dict.fromkeys(m["generic"].lower() for m in family["members"]):
            entry = self.python_names.get(name)
            if not entry:
                continue
            given = [*entry["required"], *(f"{n}={entry['optional'][n][0]}" for n in entry["optional"]
                                           if n not in entry["sizes"])]
            outputs = ["value"] if entry["members"][0][1] else []
            outputs += [n for n, a in entry["arguments"].items()
                        if a["role"] in ("out", "inout", "in/out") and not a.get("in_place")]
            yield from wrapped(f"{', '.join(outputs)}{' = ' if outputs else ''}orvel.{name}({', '.join(given)})", self.width)
