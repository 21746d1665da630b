#!/usr/bin/env python3
"""Fails where a page in Japanese has other headings or code blocks than the English one."""

import itertools
import pathlib
import sys

root = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(root / "scripts/lib"))
import markdown  # noqa: E402


def outline(page):
    """Headings by their level, code blocks by kind and text, in order."""
    parts = []
    for element in markdown.tree(markdown.source(page)).iter():
        if element.tag == "heading":
            parts.append(f"heading of level {element.get('level')}")
        elif element.tag == "code_block":
            parts.append(f"```{element.get('info', '')}\n{element.text or ''}```")
    return parts


def main():
    pages = [(root / "README.md", root / "README.ja.md")]
    elsewhere = {"examples.md": root / "examples/README.md"}
    for page in sorted((root / "docs/ja").glob("*.md")):
        pages.append((elsewhere.get(page.name, root / "docs" / page.name), page))
    differing = 0
    for english, japanese in pages:
        if not english.exists():
            print(f"{japanese} has no English page")
            differing += 1
            continue
        for ours, theirs in itertools.zip_longest(outline(english), outline(japanese), fillvalue="nothing more"):
            if ours != theirs:
                print(f"{japanese} differs. In English:\n{ours}\nIn Japanese:\n{theirs}\n")
                differing += 1
                break
    print(f"{len(pages)} pages in two languages, {differing} differ")
    sys.exit(differing != 0)


main()
