#!/usr/bin/env python3
"""tools/handbook.py INTO - writes the source of the HTML manual, which Sphinx then builds: the pages of docs/manual, a
page for every family of routines, and what is listed from the description: chapters, messages, names

A page of routines shows what the headers say, a call in each language, and the example of docs/examples with what it
prints."""
import re
import shutil
import sys
from pathlib import Path

import examples
import interface
from synopsis import Synopsis

def plain(text):
    """Text in Markdown that stands for itself, double blanks included."""
    return re.sub(r"([\\`*_<>|\[\]#$~^])", r"\\\1", text).replace("  ", "\u00a0 ")


def code(language, lines):
    return ["", f"```{language}", *lines, "```", ""]


def table(head, rows):
    yield ""
    yield "| " + " | ".join(head) + " |"
    yield "|" + "---|" * len(head)
    for row in rows:
        yield "| " + " | ".join(row) + " |"
    yield ""


def file_of(family):
    return "routines/" + family["name"].lower()


def shape_of(row):
    if not row["shape"]:
        return ""
    text = f"({', '.join(row['shape'])})"
    if row["step"]:
        return f"{text}, {row['step']} apart"
    return f"{text}, {row['rows']} rows" if row["rows"] and row["rows"] != row["shape"][-1] else text


class Handbook:
    def __init__(self, description):
        self.description = description
        self.synopsis = Synopsis(description, 100)
        self.families = {m["name"]: f for h in description["headers"] for f in h["families"] for m in f["members"]}
        self.examples = examples.read(Path("docs/examples"))

    # ---- a page

    def page(self, header, family):
        names = [m["name"] for m in family["members"]]
        yield from (f"# {names[0]}", "", plain(family["purpose"]), "")
        yield "```{index} " + "; ".join(f"single: {name}" for name in names) + "\n```"
        yield ""
        yield f"Chapter: {{doc}}`/chapters/{header['name'].removesuffix('.h')}`. Members: " + \
            ", ".join(f"`{name}`" for name in names) + "."
        yield from ("", "## Synopsis")
        for title, language, lines in self.synopsis.all(header, family):
            yield from ("", f"````{{tab}} {title}", f"```{language}", *lines, "```", "````", "")
        if family["text"]:
            yield from ("", "## Description", "")
            for text in family["text"]:
                if isinstance(text, dict):
                    yield from code("text", text["verbatim"])
                else:
                    text = re.sub(r" ?Passes up the errors of [^.]+\.", "", text)  # the section of errors says it
                    yield from (self.linked(plain(text), family), "")
        yield from self.arguments(family)
        yield from self.errors(family)
        for label, text in family["labels"].items():
            if label != "After an error":
                yield from ("", f"## {label}", "", self.linked(plain(text[0].upper() + text[1:]), family))
        yield from self.example(family)

    def arguments(self, family):
        if not family["arguments"]:
            return
        yield from ("", "## Arguments", "")
        rows = [(f"`{r['name']}`", plain(shape_of(r)), r["role"], plain(r["meaning"] or "scratch storage"))
                for r in family["arguments"].values()]
        rows += [(f"`{name}`", "", "length", plain(value)) for name, value in family["lengths"].items()]
        yield from table(("argument", "shape", "role", "meaning"), rows)

    def errors(self, family):
        yield from ("", "## Errors", "")
        worker = self.families.get(family["passes_up"][0]) if len(family["passes_up"]) == 1 else None
        posted = [(e, "") for e in family["errors"]]
        if worker:
            posted += [(e, f" (from {worker['name']})") for e in worker["errors"]]
        if posted:
            rows = [(f"{e['severity']} {e['code']}", plain(e["cause"] + source), plain(e["text"].strip()),
                     plain(e["remedy"] or "")) for e, source in posted]
            yield from table(("severity, code", "cause", "text", "remedy"), rows)
        for passed in family["passes_up"]:
            yield from (f"Passes up the errors of {self.linked(passed)}.", "")
        if not family["errors"] and not family["passes_up"]:
            yield from ("Posts no error.", "")
        if after := family["labels"].get("After an error"):
            yield from (f"After an error: {plain(after)}", "")

    def linked(self, text, family=None):
        """Text in which the names of other routines lead to their pages."""
        def link(found):
            target = self.families.get(found[1])
            if target is None or target is family:
                return found[0]
            return f"{{doc}}`{found[1]} </{file_of(target)}>`"
        return re.sub(r"\b([A-Z][A-Z0-9]{2,})\b", link, text)

    def linked_code(self, text):
        """The same for names in code style; those of kernels may lack the letter of the precision."""
        def link(found):
            name = found[1] if found[1] in self.families else next(
                (p + found[1] for p in "SDCZI" if p + found[1] in self.families), None)
            return f"{{doc}}`{found[1]} </{file_of(self.families[name])}>`" if name else found[0]
        return re.sub(r"`([A-Za-z_][A-Za-z_0-9]+)`", link, text)

    def example(self, family):
        name = next((m["name"] for m in family["members"] if m["name"] in self.examples), None)
        if name:
            yield from ("", "## Example", "", *self.shown(name))

    def shown(self, name):
        example = self.examples[name]
        yield from code(example.language, example.code)
        yield "prints"
        yield from code("text", example.output)

    def hand_written(self, source):
        """A page of docs/manual, where a line "@example NAME" stands for an example."""
        for line in source.read_text().split("\n"):
            yield from self.shown(line.removeprefix("@example ")) if line.startswith("@example ") else [
                self.linked_code(line) if line.startswith("| ") else line]

    # ---- what is listed

    def chapter(self, header, into):
        source = Path("docs/manual/chapters") / (header["name"].removesuffix(".h") + ".md")
        lines = [self.linked_code(source.read_text()).rstrip(), "", "## Routines"]
        sections = list(dict.fromkeys(f["section"] for f in header["families"]))
        for section in sections:
            families = [f for f in header["families"] if f["section"] == section]
            if section and len(sections) > 1:
                lines += ["", f"### {section[0].upper() + section[1:]}"]
            lines += table(("", ""), [(f"{{doc}}`{f['name']} </{file_of(f)}>`", plain(f["purpose"])) for f in families])
        lines += ["```{toctree}", ":hidden:", "", *(f"/{file_of(f)}" for f in header["families"]), "```"]
        (into / "chapters" / source.name).write_text("\n".join(lines) + "\n")

    def messages(self):
        yield from ("# All messages", "", "Every text that the library prints, with the routines that post it. On the "
                    "command line `orvel explain \"a pasted message\"` finds the entry.", "")
        texts = {}
        for header in self.description["headers"]:
            for family in header["families"]:
                for e in family["errors"]:
                    texts.setdefault(e["text"].strip(), []).append((family, e))
        rows = []
        for text in sorted(texts, key=str.lower):
            posts = dict.fromkeys(f"{{doc}}`{f['name']} </{file_of(f)}>` {e['severity']} {e['code']}" for f, e in texts[text])
            rows.append((plain(text), ", ".join(posts), plain(texts[text][0][1]["remedy"] or texts[text][0][1]["cause"])))
        yield from table(("text", "posted by", "remedy or cause"), rows)

    def names(self):
        yield from ("# All names", "")
        rows = sorted((m["name"], f) for h in self.description["headers"] for f in h["families"] for m in f["members"])
        yield from table(("name", "purpose"), [(f"{{doc}}`{name} </{file_of(f)}>`", plain(f["purpose"])) for name, f in rows])

    @staticmethod
    def start():
        """What the README says about first programs, linking and errors, with its links as they are here."""
        text = Path("README.md").read_text()
        parts = [re.search(rf"(?ms)^## {title}$.*?(?=^## )", text)[0]
                 for title in ("A first program", "Linking a program", "When something goes wrong")]
        return "# First steps\n\n" + re.sub(r"\]\(docs/(manual/)?", "](", "".join(parts))

    def write(self, into):
        for folder in ("routines", "chapters"):
            (into / folder).mkdir(parents=True, exist_ok=True)
        for source in Path("docs/manual").glob("*"):
            if source.suffix == ".md":
                (into / source.name).write_text("\n".join(self.hand_written(source)))
            elif source.is_file():
                shutil.copy(source, into / source.name)
        shutil.copytree(Path("docs/pictures"), into / "pictures", dirs_exist_ok=True)
        for header in self.description["headers"]:
            self.chapter(header, into)
            for family in header["families"]:
                (into / (file_of(family) + ".md")).write_text("\n".join(self.page(header, family)) + "\n")
        (into / "start.md").write_text(self.start())
        (into / "messages.md").write_text("\n".join(self.messages()) + "\n")
        (into / "names.md").write_text("\n".join(self.names()) + "\n")
        (into / "accuracy.md").write_text(Path("docs/accuracy.md").read_text())
        (into / "evaluations.md").write_text(Path("docs/evaluations.md").read_text())


def main():
    into = Path(sys.argv[1])
    shutil.rmtree(into, ignore_errors=True)
    into.mkdir(parents=True)
    Handbook(interface.read("include/orvel")).write(into)


if __name__ == "__main__":
    main()
