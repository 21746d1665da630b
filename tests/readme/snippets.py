#!/usr/bin/env python3
"""Makes C++ of the examples of a page or header: snippets.py PAGE PROMISED SOURCE OUTPUT

A block ```cpp with a main is a program of its own. Any other stands in the first program of the page PROMISED,
in place of what follows the line that makes the runtime. Each becomes a function in SOURCE, which frame.cpp calls.
OUTPUT is what all of them print: the block ```text behind each.
"""

import pathlib
import re
import sys
import textwrap

root = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(root / "scripts/lib"))
import markdown  # noqa: E402


def examples(page):
    blocks = markdown.code_blocks(markdown.tree(markdown.source(page)))
    return [(text, output) for kind, text, output in blocks if kind == "cpp"]


def main():
    page, promised, source, output = sys.argv[1:]
    program = next(text for text, _ in examples(promised) if "int main(" in text)
    promise = re.match(r"(?s)(.*\n)(int main\(.*\n *AppRuntime runtime\(.*?\n)", program)
    if not promise:
        sys.exit(f"{promised} has no program that makes a runtime")
    includes, opening = promise.groups()

    snippets, programs, calls, printed = [], [], [], []
    for number, (text, expected) in enumerate(examples(page), 1):
        own = "int main(" in text
        if not own:
            text = opening + textwrap.indent(text, "    ") + "}\n"
        text = text.replace("int main(", f"int example{number}(")
        # Only main may end without a return.
        text = text.rstrip().removesuffix("}") + "    return 0;\n}\n"
        (programs if own else snippets).append(text)
        calls.append(f"example{number}, ")
        printed.append(f"example {number}\n{expected}")
    if not calls:
        sys.exit(f"{page} has no example: take it off the list of pages")

    # A program's own headers come last, so that no snippet can use them.
    calls = f"extern int (*const examples[])(int, char **);\nint (*const examples[])(int, char **) = {{{''.join(calls)}nullptr}};\n"
    pathlib.Path(source).write_text(includes + "\n".join(snippets + programs) + "\n" + calls, encoding="utf-8")
    pathlib.Path(output).write_text("".join(printed), encoding="utf-8")


main()
