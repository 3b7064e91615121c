"""examples/page.py - the page of the demo: one file of HTML without scripts, with the pictures inside it

Purposes of routines and meanings of errors come from the description of the interface, the public headers.
"""
import html
import re
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
sys.path.insert(0, str(ROOT / "tools"))
import interface

SEVERITIES = ("", "NOTE", "ALERT", "WARNING", "FATAL", "TERMINAL")
LANGUAGES = {".c": "C", ".cpp": "C++", ".f90": "Fortran", ".py": "Python"}
COMMENTS = {".c": r"(?s)/\*.*?\*/", ".cpp": r"//.*", ".f90": r"!.*", ".py": r'(?s)""".*?"""|#.*'}
# "GAMMA( -3.0): type 5, code 6" in what a program prints.
MET = re.compile(r"\b([A-Z][A-Z0-9]+)(?:\([^()]*\))?: type (\d), code (\d+)")

STYLE = """
:root { color-scheme: light dark; --ink: #1b1f24; --paper: #fff; --soft: #f3f4f6; --line: #d0d5db; --faint: #57606a;
  --good: #00704f; --bad: #b34700 }
@media (prefers-color-scheme: dark) { :root { --ink: #e4e7eb; --paper: #15181c; --soft: #20252b; --line: #3b434c;
  --faint: #a3adb8; --good: #35c497; --bad: #ff9650 } }
* { box-sizing: border-box }
body { margin: 0 auto; padding: 1rem; max-width: 56rem; font: 1rem/1.55 system-ui, sans-serif; color: var(--ink);
  background: var(--paper) }
h1, h2, h3 { line-height: 1.25 }
h2 { margin-top: 3rem; padding-top: .8rem; border-top: 2px solid var(--line) }
h3 { font-size: 1rem; margin: 1.4rem 0 .3rem }
p { margin: .5rem 0 }
a { color: inherit }
figure { margin: 1rem 0 }
svg { display: block; width: 100%; height: auto; max-width: 40rem; margin: auto }
pre { margin: .4rem 0; padding: .6rem .8rem; background: var(--soft); overflow-x: auto;
  font: .75rem/1.4 ui-monospace, monospace }
table { border-collapse: collapse; width: 100%; font-size: .9rem }
td, th { padding: .25rem .6rem .25rem 0; text-align: left; vertical-align: top; border-bottom: 1px solid var(--line) }
th { font-weight: 600; color: var(--faint) }
code { font: .9em ui-monospace, monospace }
.question { font-size: 1.1rem }
.faint { color: var(--faint) }
.agrees { color: var(--good); white-space: nowrap }
.differs { color: var(--bad); font-weight: 700 }
.verdict { padding: .6rem 1rem; border: 2px solid var(--good) }
.verdict.failed { border-color: var(--bad) }
@media (max-width: 36rem) {
  .wide tr { display: block; padding: .4rem 0; border-bottom: 1px solid var(--line) }
  .wide tr:first-child { display: none }
  .wide td { display: block; border: 0; padding: 0 }
  .wide td[data-head]::before { content: attr(data-head) ": "; color: var(--faint) }
}
summary { cursor: pointer; color: var(--faint) }
@media print {
  :root { color-scheme: light; --ink: #000; --paper: #fff; --soft: #f5f5f5; --line: #bbb; --faint: #444 }
  body { max-width: none; font-size: 10pt }
  h2 { break-after: avoid }
  h3 { break-after: avoid }
  figure, tr { break-inside: avoid }
  svg { max-width: 12cm }
  pre { white-space: pre-wrap; font-size: 7pt }
  .programs { display: none }
}
"""


def escape(text):
    return html.escape(text, quote=False)


# ---- what the description says ---------------------------------------------------------------------------


class Description:
    def __init__(self):
        self.families = {}
        for header in interface.read(ROOT / "include/orvel")["headers"]:
            for family in header["families"]:
                for member in family["members"]:
                    self.families[member["name"].upper()] = family

    def meanings(self, name, severity, code):
        """Text, cause and remedy of an error; it may come from a routine below."""
        family = self.families[name]
        found = [e for e in family["errors"] if e["severity"] == severity and e["code"] == code]
        for below in family["passes_up"] if not found else ():
            found += self.meanings(below, severity, code)
        return found


def routines_of(source, description):
    """The names of the library's routines in a program, in the order in which they come."""
    text = re.sub(COMMENTS[source.suffix], " ", (ROOT / source).read_text())
    words = re.findall(r"\borvel(?:::|\.)(\w+)", text)
    if source.suffix == ".f90":
        words += re.findall(r"\b(\w+) *(?=\()", re.sub(r"'[^']*'|\"[^\"]*\"", "", text))
    else:
        words += re.findall(r"\b[A-Z][A-Z0-9]+\b", text)
    return list(dict.fromkeys(word.upper() for word in words if word.upper() in description.families))


# ---- parts of a chapter ----------------------------------------------------------------------------------


def language(source):
    name = LANGUAGES[source.suffix]
    return name + " with orvel.hpp" if "orvel/orvel.hpp" in (ROOT / source).read_text() else name


def drawing(picture, prefix, title):
    """A picture of gnuplot as a part of the page: as wide as the page allows, in the page's colours, names of its own."""
    body = picture[picture.index("<svg"):]
    body = re.sub(r"<title>.*?</title>|<desc>.*?</desc>|(?s:<filter.*?</filter>)", "", body)
    role = rf'\1 role="img" aria-label="{html.escape(title)}"'
    body = re.sub(r'(<svg[^>]*?) *\n? width="\d+" height="\d+"', role, body)
    body = re.sub(r'<rect x="0" y="0" [^>]*fill="#ffffff"/>', "", body, count=1)
    body = re.sub(r'( )color="black"', "", body)
    body = re.sub(r"""((?:fill|stroke) ?= ?['"])(?:black|rgb\( *0, *0, *0\))""", r"\1currentColor", body)
    body = re.sub(r"""(id=['"])""", rf"\g<1>{prefix}-", body)
    return re.sub(r"(href='#)", rf"\g<1>{prefix}-", body)


def comparison(what):
    name, rest = what.split(": ", 1)
    ours, known, within, source = re.fullmatch(r"(\S+), known (\S+) within (\S+) \((.*)\)", rest).groups()
    return name, ours, known, within, source


def table(head, rows):
    """On a narrow screen the cells of a wide row stand below each other, each after its head."""
    lines = ["<tr>" + "".join(f"<th>{cell}</th>" for cell in head) + "</tr>"]
    for row in rows:
        cells = (f"<td data-head='{name}'>{cell}</td>" if name else f"<td>{cell}</td>" for name, cell in zip(head, row))
        lines.append("<tr>" + "".join(cells) + "</tr>")
    return f"<table{' class=wide' if len(head) > 2 else ''}>" + "\n".join(lines) + "</table>"


def comparisons(chapters, with_chapter=False):
    rows = []
    for k, chapter in chapters:
        for what, how in chapter.checks:
            name, ours, known, within, source = map(escape, comparison(what))
            rows.append(([f"<a href='#{chapter.name}'>{k}</a>"] if with_chapter else []) + [
                name, ours, known, within, source, f"<span class='{how.lower()}'>{how}</span>"])
    head = ["number", "found", "known", "may differ by", "known from", ""]
    return table((["chapter"] if with_chapter else []) + head, rows)


def errors_met(chapter, description):
    rows = []
    for name, kind, code in dict.fromkeys(MET.findall(chapter.output)):
        severity = SEVERITIES[int(kind)]
        meanings = description.meanings(name, severity, int(code))
        if not meanings:
            chapter.faults.append(f"{name} has no {severity} error {code}")
        texts = [re.sub(r"%\(\w\d\)", "&hellip;", escape(re.sub(r"\s+", " ", e["text"]))) for e in meanings]
        causes = [escape(e["cause"] + "." + (f" Remedy: {e['remedy']}." if e["remedy"] else "")) for e in meanings]
        rows.append([f"<code>{name}</code>", f"{severity} {code}", "<br>or: ".join(texts), "<br>or: ".join(causes)])
    return "<h3>Errors that it meets</h3>" + table(("routine", "error", "message", "cause"), rows) if rows else ""


def routine_table(sources, description):
    """A row for each purpose, with the members that serve it."""
    names = {}
    for source in sources:
        for name in routines_of(source, description):
            names.setdefault(description.families[name]["purpose"], {})[name] = None
    return table(("routine", "does"), [[" ".join(f"<code>{name}</code>" for name in members), escape(purpose)]
                                       for purpose, members in names.items()])


def data_source(chapter):
    files = chapter.data_files()
    if not files:
        return f"<p>{escape(chapter.told['data'])}</p>"
    parts = []
    for file in files:
        lines = [line.lstrip("#% ") for line in (ROOT / file).read_text().split("\n")
                 if line[:1] in "#%" and line.strip() and not line.startswith("%%")]
        parts.append(f"<p><code>{file}</code>: {escape(' '.join(lines))}</p>")
    return "\n".join(parts)


def outputs(chapter):
    parts = []
    for command, text in chapter.printed:
        parts.append(f"<p class='faint'><code>{escape(chapter.source(command).name)}</code>, in "
                     f"{language(chapter.source(command))}:</p><pre>{escape(text.strip(chr(10)))}</pre>")
    if chapter.same:
        sources = map(chapter.source, chapter.same)
        names = " and ".join(f"<code>{source.name}</code>, in {language(source)}," for source in sources)
        parts.append(f"<p>{names} {'print' if len(chapter.same) > 1 else 'prints'} the same, letter by letter.</p>")
    for command in chapter.left_out:
        source = chapter.source(command)
        need = "numpy" if source.suffix == ".py" else f"a {LANGUAGES[source.suffix]} compiler"
        parts.append(f"<p>Left out: <code>{source.name}</code>, because {need} is not there.</p>")
    return "\n".join(parts)


def section(number, chapter, description):
    sources = [chapter.source(command) for command in chapter.told["run"] + chapter.told["same"]]
    languages = ", ".join(dict.fromkeys(map(language, sources)))
    listing = "\n".join(f"<details><summary>{source.name}</summary><pre>{escape((ROOT / source).read_text())}</pre>"
                        "</details>" for source in sources)
    figure = ""
    if chapter.picture:
        figure = f"<figure>{drawing(chapter.picture, chapter.name, chapter.title)}</figure>"
    faults = "".join(f"<p class='differs'>{escape(fault)}</p>" for fault in chapter.faults)
    return f"""<section id="{chapter.name}">
<h2>{number}. {escape(chapter.title)}</h2>
<p class="question">{escape(chapter.told['question'])}</p>
<p class="faint">In {languages}.</p>
{figure}
<p><strong>Look at:</strong> {escape(chapter.told['look'])}</p>
{faults}
<h3>What the programs print</h3>
{outputs(chapter)}
<h3>Compared</h3>
{comparisons([(number, chapter)]) if chapter.checks else "<p>Nothing.</p>"}
{errors_met(chapter, description)}
<h3>Routines that it shows</h3>
{routine_table(sources, description)}
<h3>Source of the data</h3>
{data_source(chapter)}
<div class="programs">
<h3>The programs</h3>
{listing}
</div>
</section>"""


# ---- the whole -------------------------------------------------------------------------------------------


def verdict(chapter):
    agreeing = sum(how == "agrees" for _, how in chapter.checks)
    if chapter.faults:
        return "FAILED: " + "; ".join(chapter.faults)
    if not chapter.printed:
        return "left out, its language is not there"
    return f"{agreeing} of {len(chapter.checks)} {'number agrees' if len(chapter.checks) == 1 else 'numbers agree'}"


def closing(chapters):
    checks = [how for chapter in chapters for _, how in chapter.checks]
    failed = [chapter.name for chapter in chapters if chapter.faults]
    text = f"{checks.count('agrees')} of {len(checks)} numbers agree with what is known"
    return text + ("; failed: " + ", ".join(failed) if failed else "")


def write(chapters):
    description = Description()
    sections = "\n".join(section(k, chapter, description) for k, chapter in enumerate(chapters, 1))
    contents = "\n".join(f"<li><a href='#{c.name}'>{escape(c.title)}</a></li>" for c in chapters)
    failed = " failed" if any(chapter.faults for chapter in chapters) else ""
    return f"""<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>A tour through Orvel</title>
<style>{STYLE}</style>
</head>
<body>
<h1>A tour through Orvel</h1>
<p>{len(chapters)} questions, answered by programs that call the library in Fortran, C, C++ and Python. All that
follows was computed on this machine just now. Every chapter compares a number of its own with one that is known from
elsewhere, or found in a second way.</p>
<p class="verdict{failed}"><a href="#verdict">Verdict</a>: {escape(closing(chapters))}.</p>
<ol>
{contents}
</ol>
{sections}
<section id="verdict">
<h2>Verdict</h2>
<p class="verdict{failed}">{escape(closing(chapters))}.</p>
{comparisons(enumerate(chapters, 1), with_chapter=True)}
</section>
</body>
</html>
"""
