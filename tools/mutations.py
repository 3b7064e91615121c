#!/usr/bin/python3
"""tools/mutations.py - small faults in C++ text: where one can be made, and which

A site is a place in a file with the text that stands there and the one that is put instead. Sites are found by regular
expressions on text that clang-format has laid out: an operator of two operands has a blank on each side, a bracket of a
template or a pointer has not. Comments, strings and directives are blanked out before. What does not compile is for the
caller to find out.
"""
import random
import re
from typing import NamedTuple


class Mutation(NamedTuple):
    file: str
    start: int
    end: int
    kind: str
    new: str

    def apply(self, text):
        return text[:self.start] + self.new + text[self.end:]

    def describe(self, text):
        """Line number, line before and line after."""
        first = text.rfind("\n", 0, self.start) + 1
        last = text.find("\n", self.end)
        after = text[first:self.start] + self.new + text[self.end:last]
        return text.count("\n", 0, self.start) + 1, " ".join(text[first:last].split()), " ".join(after.split())


SWAPS = {
    "comparison": {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="},
    "logic": {"&&": "||", "||": "&&"},
    "sign": {"+": "-", "-": "+", "+=": "-=", "-=": "+="},
}
NO_STATEMENT = re.compile(r"\s*(return|using|break|continue|goto|throw|delete|case|default|else|do|if|for|while|static_assert"
                          r"|const|constexpr|static|auto|extern|typedef|template|struct|class|namespace|ORVEL_)\b")
ASSIGNMENT = re.compile(r"^\s+[\w:.*>\[\]()+\-]+(?: [-+*/|&^%]|) ?(?:<<|>>)?= [^;{}]*;$", re.M)
CALL = re.compile(r"^\s+(?:(?:\+\+|--)[\w.\[\]>-]+|[\w:.>-]+(?:<[\w, :]*>)?\([^;{}]*\));$", re.M)


def blanked(text):
    """The text with blanks for comments, strings, directives and lines that no test can see."""
    hidden = re.compile(r'//[^\n]*|/\*.*?\*/|R"\((?:.|\n)*?\)"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\''
                        r'|^[ \t]*#(?:\\\n|[^\n])*|^ORVEL_(?:\\\n|[^;])*;|static_assert\((?:.|\n)*?\);|template <[^\n]*>$'
                        r'|operator[-+<>=!&|]+', re.M | re.S)
    digits = re.compile(r"(?<=\d)'(?=\d)")  # of 1'000
    return hidden.sub(lambda found: re.sub(r"[^\n]", " ", found.group()), digits.sub("_", text))


def sites(file, text):
    """All mutations of a file, as {kind: [Mutation]}."""
    clear, found = blanked(text), {}

    def add(kind, start, end, new):
        found.setdefault(kind, []).append(Mutation(file, start, end, kind, new))

    for kind, swaps in SWAPS.items():
        for m in re.finditer(r"(?<= )(%s)(?= )" % "|".join(map(re.escape, sorted(swaps, key=len, reverse=True))), clear):
            add(kind, m.start(), m.end(), swaps[m.group()])
    for m in re.finditer(r"(?<=[(,=] )-(?=[\w(])|(?<=\()-(?=[\w(])|(?<=return )-(?=[\w(])", clear):
        add("sign", m.start(), m.end(), "")
    for m in re.finditer(r"(?<=[\w\])])\[([^\[\]\n;]+)\]", clear):
        for step in (" + 1", " - 1"):
            add("index", m.end() - 1, m.end() - 1, step)
    for m in re.finditer(r"(?<![\w.])(\d+)(?![\w.'_])", clear):
        add("constant", m.start(), m.end(), str(int(m.group()) + 1))
    for m in re.finditer(r"(?<![\w.])(\d+\.\d*(?:e[-+]?\d+)?|\d+e[-+]?\d+)[fL]?(?![\w.])", clear):
        add("constant", m.start(), m.end(), f"(2 * {m.group()})" if float(m.group(1)) else "1.0f")
    for pattern in (ASSIGNMENT, CALL):
        for m in pattern.finditer(clear):
            words = m.group().split(" = ")[0]
            if not NO_STATEMENT.match(m.group()) and m.group().count("(") == m.group().count(")") and "&&" not in words:
                start = m.end() - len(m.group().lstrip())
                add("statement", start, m.end(), ";")
    return found


def choose(texts, seed, folders):
    """An endless sequence of different mutations: first a folder, then a file, a kind and a site. A folder's weight is the
    root of its size, so that small ones have their share; kinds are equally likely."""
    rng = random.Random(seed)
    every = {file: sites(file, text) for file, text in sorted(texts.items())}
    files = {f: [x for x in every if x.startswith(f + "/") and every[x]] for f in folders}
    size = {x: sum(map(len, every[x].values())) for x in every}
    weights = [sum(size[x] for x in files[f]) ** 0.5 for f in folders]
    seen = set()
    while len(seen) < sum(size.values()):
        folder = rng.choices(folders, weights)[0]
        file = rng.choices(files[folder], [size[x] for x in files[folder]])[0]
        mutation = rng.choice(every[file][rng.choice(sorted(every[file]))])
        if mutation not in seen:
            seen.add(mutation)
            yield mutation
