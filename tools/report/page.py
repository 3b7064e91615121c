"""The report as text and as one page with pictures, without anything from elsewhere."""
import html
import math

COLORS = {"Orvel": "#c0392b", "limit": "#888", "copy": "#888",
          "OpenBLAS": "#2471a3", "BLIS": "#1e8449", "FFTW": "#7d3c98"}
STYLE = """body{font:16px/1.45 sans-serif;max-width:52em;margin:2em auto;padding:0 1em;color:#222}
h1{font-size:1.6em}h2{font-size:1.2em;margin-top:2em}table{border-collapse:collapse;margin:1em 0}
td,th{padding:.15em .8em .15em 0;text-align:left;border-bottom:1px solid #ddd}td.n,th.n{text-align:right}
svg{max-width:100%;height:auto}"""


def shown(value):
    return f"{value:.3g}" if isinstance(value, float) else str(value)


def text_table(head, rows):
    lines = [head, *([shown(v) for v in row] for row in rows)]
    widths = [max(len(line[k]) for line in lines) for k in range(len(head))]

    def aligned(line):
        cells = [cell.rjust(w) if k else cell.ljust(w) for k, (cell, w) in enumerate(zip(line, widths))]
        return "  ".join(cells).rstrip()

    return "\n".join(map(aligned, lines))


def html_table(head, rows):
    def row(cells, tag):
        marks = ["" if k == 0 else ' class="n"' for k in range(len(cells))]
        return "<tr>" + "".join(f"<{tag}{m}>{html.escape(shown(c))}</{tag}>" for m, c in zip(marks, cells)) + "</tr>"

    return "<table>" + row(head, "th") + "".join(row(r, "td") for r in rows) + "</table>"


def steps(top):
    """Round numbers for the axis."""
    step = 10 ** math.floor(math.log10(top / 2))
    step *= next(f for f in (1, 2, 5, 10) if top / (f * step) <= 6)
    return [k * step for k in range(int(top / step) + 2) if k * step <= top * 1.001]


def picture(curves):
    """Lines over the logarithm of the size."""
    width, height, left, right, top, bottom = 640, 300, 60, 130, 12, 44
    sizes = sorted({s for points in curves.series.values() for s, _ in points})
    most = 1.08 * max(v for points in curves.series.values() for _, v in points)
    span = math.log(sizes[-1] / sizes[0]) or 1.0

    def x(size):
        return left + (width - left - right) * math.log(size / sizes[0]) / span

    def y(value):
        return height - bottom - (height - top - bottom) * value / most

    parts = [f'<svg viewBox="0 0 {width} {height}" width="{width}" role="img" font-size="12" font-family="sans-serif">',
             f"<title>{html.escape(curves.title)}</title>"]
    for value in steps(most):
        parts.append(f'<path d="M{left} {y(value):.1f}H{width - right}" stroke="#e4e4e4"/>'
                     f'<text x="{left - 6}" y="{y(value) + 4:.1f}" text-anchor="end">{value:g}</text>')
    for size in sizes:
        parts.append(f'<text x="{x(size):.1f}" y="{height - bottom + 16}" text-anchor="middle">{size}</text>')
    parts.append(f'<text x="{(left + width - right) / 2}" y="{height - 8}" text-anchor="middle">{curves.size_name}</text>'
                 f'<text transform="translate(12 {height / 2 - 10}) rotate(-90)" text-anchor="middle">'
                 f"{html.escape(curves.unit)}</text>")
    last = []
    for name, points in sorted(curves.series.items(), key=lambda item: -item[1][-1][1]):
        color = COLORS[name]
        line = " ".join(f"{x(s):.1f},{y(v):.1f}" for s, v in points)
        dash = ' stroke-dasharray="5 4"' if name in ("limit", "copy") else ""
        at = max(y(points[-1][1]) + 4, last[-1] + 14 if last else 0)  # names do not lie on each other
        last.append(at)
        parts.append(f'<polyline points="{line}" fill="none" stroke="{color}" stroke-width="2"{dash}/>'
                     f'<text x="{width - right + 8}" y="{at:.1f}" fill="{color}">{html.escape(name)}</text>')
    return "".join([*parts, "</svg>"])


def curve_rows(curves):
    names = list(curves.series)
    sizes = [s for s, _ in curves.series[names[0]]]
    values = [dict(curves.series[n]) for n in names]
    return [f"{curves.size_name}", *names], [[s, *(v.get(s, float("nan")) for v in values)] for s in sizes]


class Report:
    """Sections, each with its words, a table and perhaps a picture."""

    def __init__(self, title):
        self.title, self.text, self.page = title, [title, "=" * len(title)], []

    def section(self, title, words, head=None, rows=None, curves=None):
        self.text += ["", title, "-" * len(title), words]
        self.page.append(f"<h2>{html.escape(title)}</h2><p>{html.escape(words)}</p>")
        if curves is not None:
            head, rows = curve_rows(curves)
            self.page.append(picture(curves))
        if rows is not None:
            self.text += ["", text_table(head, rows)]
            self.page.append(html_table(head, rows))

    def as_text(self):
        return "\n".join(self.text) + "\n"

    def as_page(self):
        title = html.escape(self.title)
        return (f'<!DOCTYPE html>\n<html lang="en"><head><meta charset="utf-8"/><title>{title}</title>'
                f"<style>{STYLE}</style></head><body><h1>{title}</h1>{''.join(self.page)}</body></html>\n")
