"""Pages and the comments of headers as cmark-gfm reads them."""

import pathlib
import re
import subprocess
import xml.etree.ElementTree as ET

NAMESPACE = "{http://commonmark.org/xml/1.0}"


def cmark(text, kind):
    command = ["cmark-gfm", "--unsafe", "-e", "table", "-e", "autolink", "-t", kind]
    return subprocess.run(command, input=text, stdout=subprocess.PIPE, check=True, encoding="utf-8").stdout


def source(path):
    """The text of a page; of a header, its comments with their \\code sections as blocks."""
    text = pathlib.Path(path).read_text(encoding="utf-8")
    if not str(path).endswith(".h"):
        return text
    lines = [re.match(r" */// ?(?!<)(.*)|", line)[1] or "" for line in text.splitlines()]
    opened = re.sub(r"^\\code$", "```cpp", "\n".join(lines), flags=re.MULTILINE)
    return re.sub(r"^\\endcode$", "```", opened, flags=re.MULTILINE)


def tree(text):
    """The document's elements in order, without the namespace in their names and the indentation between them."""
    root = ET.fromstring(cmark(text, "xml"))
    for element in root.iter():
        element.tag = element.tag.replace(NAMESPACE, "")
        element.tail = None
        if element.tag in ("softbreak", "linebreak"):
            element.text = " "
        elif element.get("{http://www.w3.org/XML/1998/namespace}space") != "preserve":
            element.text = None
    return root


def code_blocks(root):
    """Every block of code as its kind, its text and the text of the output behind it ("" where there is none)."""
    blocks = []
    for parent in root.iter():
        children = list(parent)
        for child, following in zip(children, children[1:] + [None]):
            if child.tag == "code_block":
                shows = following is not None and following.tag == "code_block" and following.get("info") == "text"
                blocks.append((child.get("info", ""), child.text or "", (following.text or "") if shows else ""))
    return blocks
