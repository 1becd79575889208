#!/usr/bin/env python3
"""Every relative link of the Markdown pages leads to a file.

    links_test.py SOURCE_DIR
"""

import pathlib
import re
import sys

PAGES = ("*.md", "docs/*.md", "*/README.md")
LINK = re.compile(r"\]\(([^)#\s]+)[^)]*\)")


def links(text):
    """The targets of the links in a page, without those that begin with a scheme and those within the page."""
    return [target for target in LINK.findall(text) if not re.match(r"[a-z]+:", target)]


def main(source):
    assert links("[a](b.md) [c](d/e.md#f) [g](#h) [i](https://j) ![k](l.png)") == ["b.md", "d/e.md", "l.png"]
    pages = sorted({page for pattern in PAGES for page in pathlib.Path(source).glob(pattern)})
    found = [(page, target) for page in pages for target in links(page.read_text())]
    assert len(found) > 20, "where are the links?"
    broken = [f"{page}: {target} does not exist" for page, target in found if not (page.parent / target).exists()]
    print("\n".join([*broken, f"{len(found)} links on {len(pages)} pages, {len(broken)} broken"]))
    return 1 if broken else 0


sys.exit(main(*sys.argv[1:]))
