"""Tables of figures: how they are printed, read again and compared."""
import math
import re
import textwrap
from dataclasses import dataclass, field
from typing import Callable


def wrapped(text, indent=""):
    """Lines of a document, none of which begins with a minus sign."""
    return textwrap.fill(text.replace(" - ", "\0-\0"), 120, subsequent_indent=indent, break_long_words=False,
                         break_on_hyphens=False).replace("\0", " ")


@dataclass
class Column:
    """A column of figures. In a repeat a figure may be FACTOR times the recorded one and MORE; a column without a factor
    is not compared."""
    name: str
    form: str = ".2f"
    factor: float = 0.0
    more: float = 0.0

    def holds(self, measured, recorded):
        return measured <= recorded * self.factor + self.more


@dataclass
class Table:
    """ROWS yields, for each row, its names and then its figures, None for what was not measured. RECORD is what was printed
    before, in a repeat."""
    title: str
    about: str
    names: list
    columns: list
    rows: Callable
    record: dict = field(default_factory=dict)

    def written(self, cell, column):
        if cell is None or isinstance(cell, float) and math.isnan(cell):
            return "-"
        return cell if isinstance(cell, str) else format(cell, column.form)

    def print(self):
        print(f"### {self.title}\n\n{wrapped(self.about)}\n")
        print("| " + " | ".join(self.names + [c.name for c in self.columns]) + " |")
        print("|" + "---|" * len(self.names) + "---:|" * len(self.columns))
        for row in self.rows():
            figures = row[len(self.names):]
            cells = list(row[:len(self.names)]) + [self.written(f, c) for f, c in zip(figures, self.columns)]
            print("| " + " | ".join(cells) + " |", flush=True)
        print()

    def worse(self):
        """Compares rows with those of the record: how many figures were compared, and what exceeds them, in words."""
        compared, complaints = 0, []
        for row in self.rows():
            names = tuple(row[:len(self.names)])
            where = f"{self.title}: {', '.join(names)}"
            recorded = self.record.get((self.title, *names))
            if recorded is None or len(recorded) != len(self.columns):
                complaints.append(f"{where}: not recorded")
                continue
            for column, measured, cell in zip(self.columns, row[len(self.names):], recorded):
                if not column.factor or measured is None:
                    continue
                compared += 1
                before = float(cell)
                if not column.holds(measured, before):  # NaN, too
                    complaints.append(f"{where}: {column.name} {measured:{column.form}}, recorded {before:{column.form}}")
        return compared, complaints


def read(path, tables):
    """The figures of a printed record by title of the table and names of the row."""
    names_of = {table.title: len(table.names) for table in tables}
    record, title = {}, None
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            if found := re.match(r"### (.*)\n", line):
                title = found[1]
            elif line.startswith("| ") and title in names_of:
                cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
                names = names_of[title]
                record[(title, *cells[:names])] = cells[names:]
    return record


class Errors:
    """The largest and the root mean square of errors, and where the largest was."""

    def __init__(self):
        self.worst, self.where, self.squares, self.count = 0.0, None, 0.0, 0

    def add(self, error, where=None):
        self.squares += error * error
        self.count += 1
        if not error <= self.worst and not math.isnan(self.worst):  # a NaN is the worst
            self.worst, self.where = error, where

    @property
    def rms(self):
        return math.sqrt(self.squares / self.count) if self.count else math.nan


def best(peers):
    """Worst, root mean square and name of the peer whose largest error is the smallest; peers that fail do not count."""
    finite = [(e.worst, e.rms, name) for name, e in peers.items() if e.count and math.isfinite(e.worst)]
    return min(finite) if finite else (None, None, "-")
