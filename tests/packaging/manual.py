#!/usr/bin/env python3
"""tests/packaging/manual.py HTML - looks at the built manual

Every link between pages leads to a page and a place, every picture is there, every routine has its page, and every family
an example. In a headless browser, where one is installed, pages are drawn without a complaint and the search finds
names and words of messages.
"""
import functools
import http.server
import re
import shutil
import subprocess
import sys
import threading
from html.parser import HTMLParser
from pathlib import Path
from urllib.parse import unquote, urldefrag

sys.path.insert(0, "tools")
import examples
import interface

BROWSERS = ("chromium", "chromium-headless-shell", "google-chrome")
PAGES = ("index.html", "routines/lsarg.html", "chapters/fft.html", "messages.html", "start.html")
# What is typed, and the page that must be among those found.
SEARCHES = {"dlsarg": "routines/lsarg.html", "negative integer": "routines/gamma.html", "spline": "chapters/interp.html"}


class Page(HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.links, self.places = [], set()
        self.feed(path.read_text())

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name in ("href", "src") and value and not re.match(r"\w+:|//", value):
                self.links.append(unquote(value))
            elif name == "id":
                self.places.add(value)


def broken_links(root):
    pages = {path: Page(path) for path in root.rglob("*.html")}
    for path, page in pages.items():
        for link in page.links:
            file, place = urldefrag(link)
            target = (path.parent / file.partition("?")[0]).resolve() if file else path
            if not target.exists():
                yield f"{path.relative_to(root)} leads to {link}, which is not there"
            elif place and target in pages and place not in pages[target].places:
                yield f"{path.relative_to(root)} leads to {link}, a place that is not there"


class Quiet(http.server.SimpleHTTPRequestHandler):
    def log_message(self, *arguments):
        pass


def drawn(browser, address, *options):
    """What the page has become, and what the browser complains of."""
    command = [browser, "--headless", "--no-sandbox", "--disable-gpu", "--enable-logging=stderr",
               "--virtual-time-budget=8000", *options, address]
    done = subprocess.run(command, capture_output=True, text=True, timeout=120)
    complaints = [line for line in done.stderr.split("\n") if "CONSOLE" in line or "ERR_" in line]
    return done.stdout, complaints


def browse(browser, root, pictures):
    server = http.server.ThreadingHTTPServer(("127.0.0.1", 0), functools.partial(Quiet, directory=root))
    threading.Thread(target=server.serve_forever, daemon=True).start()
    base = f"http://127.0.0.1:{server.server_port}/"
    pictures.mkdir(parents=True, exist_ok=True)
    for page in PAGES:
        shot = pictures / (page.replace("/", "-").removesuffix("html") + "png")
        _, complaints = drawn(browser, base + page, "--window-size=1200,1600", f"--screenshot={shot}")
        yield from (f"{page}: {line}" for line in complaints)
        if not shot.exists() or shot.stat().st_size < 20000:
            yield f"{page}: no picture of it, or an empty one"
    for words, wanted in SEARCHES.items():
        text, complaints = drawn(browser, f"{base}search.html?q={words.replace(' ', '+')}", "--dump-dom")
        yield from (f"search of {words}: {line}" for line in complaints)
        if f'href="{wanted}' not in text:
            yield f"the search of {words!r} does not find {wanted}"


def main():
    root = Path(sys.argv[1]).resolve()
    faults = list(broken_links(root))
    for header in interface.read("include/orvel")["headers"]:
        for family in header["families"]:
            if not (root / "routines" / (family["name"].lower() + ".html")).exists():
                faults.append(f"{family['name']} has no page")
    faults += [f"{name} has no example" for name in examples.missing(Path("docs/examples"))]
    browser = next(filter(None, map(shutil.which, BROWSERS)), None)
    if browser:
        faults += browse(browser, root, root.parent / "pictures")
    if faults:
        sys.exit("\n".join(faults))
    pages = len(list(root.rglob("*.html")))
    print(f"{pages} pages of the manual hold together{'' if browser else '; no browser is installed'}")


if __name__ == "__main__":
    main()
