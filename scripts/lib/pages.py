#!/usr/bin/env python3
"""What scripts/docs does before and after Doxygen has run.

    pages.py header FILE    prints a header as Doxygen is to see it
    pages.py prepare        makes Doxygen's pages of ours, and the data of the search
    pages.py help           makes the project of the Qt help file of them
    pages.py finish         completes the pages that Doxygen made, and checks them

Doxygen reads Markdown in its own way and changes code: blanks and % vanish, and an apostrophe ends a span. So cmark-gfm
reads the pages, as the forges do, and Doxygen gets HTML in which it changes nothing. It does the blocks of C++ itself,
because it knows the names in them.
"""

import html
import html.parser
import json
import pathlib
import posixpath
import re
import sys
import urllib.parse
import xml.etree.ElementTree as ET

import markdown

root = pathlib.Path(__file__).resolve().parents[2]
made = root / "build/docs"
site = made / "html"
HEADERS = [
    "core/appruntime.h",
    "files/textchannels.h",
    "files/csvrecord.h",
    "files/versioninfo.h",
    "fields/scancursor.h",
    "fields/inputmode.h",
]
# In the order of the contents; a page that is not named here stands behind these.
GUIDE = (
    "getting-started recipes errors files-and-records text-widths checking-input running-programs settings windows "
    "compatibility"
)

# What Doxygen changes in a span of code goes through it as private characters.
HIDDEN = {ord(" "): "\ue020", ord("%"): "\ue025", ord("'"): "\ue027", ord("\\"): "\ue05c"}
SHOWN = {ord(hidden): chr(character) for character, hidden in HIDDEN.items()}


# Headers


def hide_code(line):
    return re.sub(r"(?<!`)`([^`]+)`(?!`)", lambda span: f"`{span[1].translate(HIDDEN)}`", line)


def spare_fields(text):
    """The fields of the table that have no comment, each line as it stands."""
    lines = text.partition("\\name Fields")[2].splitlines()
    return [
        line
        for before, line in zip([""] + lines, lines)
        if re.fullmatch(r"    [A-Za-z][^({]*\{.*\};", line) and not before.lstrip().startswith("///")
    ]


def header(path):
    """Says to Doxygen what a reader of the header sees.

    A comment above several functions is for all of them, up to the next blank line; of overloads, the first has the
    whole of it. The fields without a comment are spare, and one list holds them all. The names of source files are of
    no use to a reader of the pages.
    """
    text = pathlib.Path(path).read_text(encoding="utf-8")
    text = re.sub(r"(/// \\name .*\n *///) [a-z]+/\w+\*?\.cpp(?s:.*?)\.(?=\s)", r"\1", text)
    spares = spare_fields(text)
    if spares:
        names = sum(len(re.findall(r"\w+\{", line)) for line in spares)
        listed = "<br/>".join(f"<code>{html.escape(line.strip(), quote=False)}</code>" for line in spares)
        fold = f"<details><summary>{names} spare fields</summary><p>{listed}</p></details>"
        text = re.sub(
            r"(\\name Fields\n(?: *///.*\n)*?)( */// @\{)",
            lambda found: f"{found[1]}    ///\n    /// \\htmlonly[block]{fold}\\endhtmlonly\n{found[2]}",
            text,
        )
    result, comment, fresh, shared, declaring = [], [], False, None, False
    for line in text.splitlines():
        if line in spares or line.startswith("    friend "):
            continue
        if re.match(r" *///(?!<)", line):
            line = hide_code(line)
            comment = comment + [line] if fresh else [line]
            fresh, shared = True, None
        elif not line.strip():
            comment, fresh, shared, declaring = [], False, None, False
        elif declaring:
            declaring = not re.search(r";( *//.*)?$", line)
        elif re.match(r"    [A-Za-z[]", line) and not re.match(r"    (struct|class|using|template|requires)", line):
            if re.match(r"[^{]*\(", line):
                name = re.match(r"[^(]*?(\S+)\(", line)[1]
                if comment and shared == name:
                    first = [part.strip() for part in comment]
                    first = first[: first.index("///")] if "///" in first else first
                    result += [first[0].replace("///", r"/// \brief")] + first[1:]
                elif shared:
                    result += comment
                shared = name
            fresh = False
            declaring = not re.search(r";( *//.*)?$", line)
            line = hide_code(line)
        result.append(line)
    return "\n".join(result) + "\n"


# Pages


class Page:
    def __init__(self, source, language, name):
        self.source = source
        self.language = language
        self.name = name  # of the file on the site, without .html
        self.text = (root / source).read_text(encoding="utf-8")
        self.tree = markdown.tree(self.text)
        headings = ["".join(heading.itertext()) for heading in self.tree.iter("heading")]
        self.title = headings[0]
        self.ids = []
        for heading in headings:
            slug = re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
            repeated = sum(re.fullmatch(re.escape(slug) + r"(-\d+)?", known) is not None for known in self.ids)
            self.ids.append(f"{slug}-{repeated}" if repeated else slug)
        self.anchors = self.ids  # on the site

    def url(self, language):
        folder = {("en", "ja"): "ja/", ("ja", "en"): "../"}.get((language, self.language), "")
        return f"{folder}{self.name}.html"


def all_pages():
    """The pages of the site, in the order of its contents."""
    guide = GUIDE.split()
    docs = sorted((root / "docs").glob("*.md"), key=lambda page: guide.index(page.stem) if page.stem in guide else 99)
    english = [Page("README.md", "en", "index")]
    english += [Page(f"docs/{page.name}", "en", page.stem) for page in docs]
    english += [Page("examples/README.md", "en", "examples")]
    english += [Page(f"{name}.md", "en", name.lower()) for name in ("BUILDING", "CONTRIBUTING", "CHANGELOG")]
    pages = {page.source: page for page in english}
    for page in english:
        translated = "README.ja.md" if page.name == "index" else f"docs/ja/{page.name}.md"
        if (root / translated).exists():
            other = Page(translated, "ja", page.name)
            # The sections correspond: a switch of language stays at its place.
            other.anchors = page.ids
            pages[translated] = other
    return pages


def link_target(target, page, pages, failures):
    if re.match(r"[a-z]+:", target):
        return target
    path, _, fragment = urllib.parse.unquote(target).partition("#")
    source = (root / page.source).parent / path if path else root / page.source
    source = source.resolve()
    name = source.relative_to(root).as_posix() if source.is_relative_to(root) else path
    up = "../" if page.language == "ja" else ""
    if name in pages:
        found = pages[name]
        url = found.url(page.language)
        if not fragment:
            return url
        if fragment in found.ids:
            return f"{url if path else ''}#{found.anchors[found.ids.index(fragment)]}"
    elif source.is_file():
        if name == "runtime/core/appruntime.h":
            return f"{up}classAppRuntime.html"
        copy = site / source.name
        copy.parent.mkdir(parents=True, exist_ok=True)
        copy.write_bytes(source.read_bytes())
        return up + source.name
    failures.append(f"{page.source}: the link to {target} leads nowhere")
    return target


def link_members(element, page, members, failures):
    """Makes links of the members that the text names as call(), and of the smaller classes."""
    up = "../" if page.language == "ja" else ""

    def linked(text):
        parts, last = [], 0
        for found in re.finditer(r"(?:[A-Z]\w+::)?[a-z]\w+\(\)|[A-Z]\w+", text or "", re.ASCII):
            name = found[0].removesuffix("()")
            if name not in members:
                if name == found[0]:
                    continue
                failures.append(f"{page.source}: there is no {name}()")
                continue
            parts.append((text[last : found.start()], found[0], up + members[name]))
            last = found.end()
        return parts, (text or "")[last:]

    def anchors(parts, rest):
        made_links = []
        for index, (_, name, url) in enumerate(parts):
            link = ET.Element("a", {"class": "el", "href": url})
            link.text = name
            link.tail = parts[index + 1][0] if index + 1 < len(parts) else rest
            made_links.append(link)
        return made_links

    for index, child in reversed(list(enumerate(element))):
        if child.tag not in ("code", "pre", "a", "h1", "h2", "h3", "h4"):
            link_members(child, page, members, failures)
        parts, rest = linked(child.tail)
        if parts:
            child.tail = parts[0][0]
            element[index + 1 : index + 1] = anchors(parts, rest)
    parts, rest = linked(element.text)
    if parts:
        element.text = parts[0][0]
        element[0:0] = anchors(parts, rest)


def fragment(text):
    """A block as Doxygen makes it."""
    lines = "".join(f'<div class="line">{html.escape(line) or " "}</div>\n' for line in text.splitlines())
    return f'<div class="fragment">{lines}</div>'


def rendered(page, pages, members, failures):
    """The page for Doxygen."""
    body = ET.fromstring(f"<div>{markdown.cmark(page.text, 'html')}</div>")
    anchors = iter(page.anchors)
    for element in list(body.iter()):
        if re.fullmatch("h[1-6]", element.tag):
            element.set("id", next(anchors))
        elif element.tag == "a":
            element.set("href", link_target(element.get("href"), page, pages, failures))
        elif element.tag == "img":
            element.set("src", link_target(element.get("src"), page, pages, failures))
        elif element.tag == "th":
            element.set("class", "markdownTableHeadNone")
        elif element.tag == "table":
            element.set("class", "markdownTable")
            element[:] = list(element.iter("tr"))  # the theme knows no other parts
    link_members(body, page, members, failures)
    label = "mainpage" if page.name == "index" else page.name
    parts = [f"# {page.title.replace('AppRuntime', '%AppRuntime')} {{#{label}}}\n"]
    for element in body:
        if element.tag == "h1":
            continue
        code = element.find("code") if element.tag == "pre" else None
        if code is not None and code.get("class") == "language-cpp":
            parts.append(f"```cpp\n{code.text}```\n")
        else:
            if code is not None:
                text = fragment(code.text or "")
            else:
                element.tail = None
                text = ET.tostring(element, encoding="unicode", method="html")
            parts.append(f"\\htmlonly[block]\n{text}\n\\endhtmlonly\n")
    return "\n".join(parts)


# Members, from Doxygen's XML


def plain(element):
    text = "" if element is None else " ".join("".join(element.itertext()).split())
    return re.sub(r"</?code>", "", text.translate(SHOWN))


def classes():
    for compound in sorted((made / "xml").glob("*.xml")):
        for definition in ET.parse(compound).getroot().iter("compounddef"):
            if definition.get("kind") in ("class", "struct"):
                yield definition


def member_url(element):
    page, _, anchor = element.get("id").rpartition("_1")
    return f"{page}.html#{anchor}"


def members_of_classes():
    """The address of each class and member, which is named with its class and without; of overloads, the first."""
    members = {}
    for definition in sorted(classes(), key=lambda found: found.findtext("compoundname") != "AppRuntime"):
        if members:
            members[definition.findtext("compoundname")] = f"{definition.get('id')}.html"
        for member in definition.iter("memberdef"):
            name = member.findtext("name")
            members.setdefault(f"{definition.findtext('compoundname')}::{name}", member_url(member))
            members.setdefault(name, member_url(member))
    return members


def search_entries(pages):
    """[language, title, first sentence, text, address] of every section and every member."""
    entries = []
    for page in pages.values():
        anchors = iter(page.anchors)
        for element in page.tree:
            if element.tag == "heading":
                heading = "".join(element.itertext())
                title = page.title if heading == page.title else f"{page.title}: {heading}"
                entries.append([page.language, title, "", "", f"{page.url('en')}#{next(anchors)}"])
            elif element.tag != "html_block":
                text = " ".join(" ".join(element.itertext()).split())
                if not entries[-1][2]:
                    first = re.match(r".*?(?:[.:](?= |$)|。|$)", text)[0]
                    entries[-1][2], text = first, text[len(first) :]
                entries[-1][3] += " " + text
    for definition in classes():
        name = definition.findtext("compoundname")
        url = f"{definition.get('id')}.html"
        entries.append(["", name, plain(definition.find("briefdescription")), plain(definition.find("detaileddescription")), url])
        for group in definition.iter("sectiondef"):
            for member in group.iter("memberdef"):
                call = "()" if member.get("kind") == "function" else ""
                title = f"{name}::{member.findtext('name')}{call}"
                brief = plain(member.find("briefdescription"))
                text = f"{plain(member.find('detaileddescription'))} {group.findtext('header', '')}"
                entries.append(["", title, brief, text, member_url(member)])
    # Overloads share a comment, and the first of them stands for all.
    unique = {}
    for entry in entries:
        unique.setdefault((entry[1], entry[2], entry[0]), entry)
    return list(unique.values())


def prepare():
    failures = []
    pages = all_pages()
    members = members_of_classes()
    inputs = {"en": [], "ja": []}
    for page in pages.values():
        target = made / "pages" / page.language / f"{page.name}.md"
        target.parent.mkdir(parents=True, exist_ok=True)
        target.write_text(rendered(page, pages, members, failures), encoding="utf-8")
        inputs[page.language].append(target.relative_to(root).as_posix())
    for language, names in inputs.items():
        (made / f"inputs.{language}").write_text(" ".join(names), encoding="utf-8")
    data = json.dumps(search_entries(pages), ensure_ascii=False, separators=(",", ":"))
    (made / "search-data.js").write_text(f"const searchData = {data}\n", encoding="utf-8")

    settings = (root / "docs/settings.md").read_text(encoding="utf-8")
    appruntime = (root / "runtime" / HEADERS[0]).read_text(encoding="utf-8")
    fields = re.findall(r"\b(\w+)\{", "\n".join(spare_fields(appruntime)))
    for definition in classes():
        if definition.findtext("compoundname") == "AppRuntime":
            fields += [m.findtext("name") for m in definition.iter("memberdef") if m.get("kind") == "variable"]
    for field in fields:
        if f"`{field}`" not in settings:
            failures.append(f"docs/settings.md does not name {field}")
    return failures


# The site


class Codes(html.parser.HTMLParser):
    """The text of every span of code in a page, and the page's language."""

    def __init__(self, text):
        super().__init__()
        self.spans, self.open, self.language = [], [], ""
        self.feed(text)

    def handle_starttag(self, tag, attributes):
        if tag in ("code", "span"):
            # Doxygen 1.17 writes <span class="tt">, older ones <code>.
            self.open.append(tag == "code" or ("class", "tt") in attributes)
            if self.open[-1]:
                self.spans.append("")
        elif tag == "html":
            self.language = dict(attributes).get("lang", "")

    def handle_endtag(self, tag):
        if tag in ("code", "span"):
            self.open.pop()

    def handle_data(self, data):
        if any(self.open):
            self.spans[-1] += data


def topics(text):
    """Begins a class with a list of its groups, and folds the descriptions of each under its heading."""
    groups = []

    def named(found):
        groups.append(found[1])
        return f'<div class="groupHeader" id="topic-{len(groups)}">{found[1]}</div>'

    text = re.sub(r'<div class="groupHeader">(.*?)</div>', named, text)
    if len(groups) < 3:
        return text
    parts = re.split(r'(?=<div class="groupHeader")', text)
    for name, part in zip(groups, parts[1:]):
        for anchor in re.findall(r'<tr class="memitem:(\w+)"', part):
            described = f'<a id="{anchor}" name="{anchor}"></a>\n<h2 class="memtitle">'
            if described in text:
                text = text.replace(described, f'<h2 class="topic">{name}</h2>\n{described}', 1)
                break

    def folded(found):
        members = dict.fromkeys(re.findall(r'<h2 class="memtitle">.*?</span>([^<]*[^< ])', found[2]))
        return f'<details class="topic"><summary><b>{found[1]}</b> {", ".join(members)}</summary>\n{found[2]}</details>\n'

    end = r'(?=<h2 class="(?:topic|groupheader)|<hr/>The documentation|</div><!-- contents -->)'
    text = re.sub(rf'(?s)<h2 class="topic">(.*?)</h2>\n(.*?){end}', folded, text)
    links = "".join(f'<a href="#topic-{index}">{name}</a>' for index, name in enumerate(groups, 1))
    return text.replace('<table class="memberdecls">', f'<nav class="topics">{links}</nav>\n<table class="memberdecls">', 1)


def finish():
    failures = []
    pages = all_pages()
    by_url = {page.url("en"): page for page in pages.values()}
    seen = set()
    for path in sorted([*site.glob("*.html"), *site.glob("ja/*.html")]):
        url = path.relative_to(site).as_posix()
        page = by_url.get(url)
        japanese = url.startswith("ja/")
        other = path.name if japanese else f"ja/{path.name}"
        if other not in by_url:
            other = "index.html" if japanese else "ja/index.html"
        text = path.read_text(encoding="utf-8").translate(SHOWN)
        text = text.replace("OTHER_LANGUAGE", f"../{other}" if japanese else other)
        if path.name.startswith("class"):
            text = topics(text)
        path.write_text(text, encoding="utf-8")

        found = Codes(text)
        if found.language != ("ja" if japanese else "en"):
            failures.append(f"{url}: the language is {found.language}")
        if page:
            seen.add(url)
            expected = [span.text for span in page.tree.iter("code") if span.text]
            if found.spans != expected:
                wrong = [pair for pair in zip(expected, found.spans) if pair[0] != pair[1]]
                failures.append(f"{page.source}: code is changed on the site: {wrong[:1] or 'a span more or less'}")
    for url in by_url.keys() - seen:
        failures.append(f"{url} was not made")

    shown = set()
    for path in [*site.glob("class*.html"), *site.glob("struct*.html")]:
        shown.update(Codes(path.read_text(encoding="utf-8")).spans)
    for name in HEADERS:
        text = (root / "runtime" / name).read_text(encoding="utf-8")
        spans = {span.text for span in markdown.tree(markdown.source(root / "runtime" / name)).iter("code")}
        for line in re.findall(r"///< (.*)", text):
            spans.update(span.text for span in markdown.tree(line).iter("code"))
        for span in sorted(spans - shown):
            failures.append(f"{name}: `{span}` is changed on the site")
    return failures


def help_project():
    """Completes the pages for Qt Assistant, and makes one project of the two languages'."""
    for path in [*site.glob("*.html"), *site.glob("ja/*.html")]:
        path.write_text(path.read_text(encoding="utf-8").translate(SHOWN), encoding="utf-8")
    english, japanese = ET.parse(site / "index.qhp"), ET.parse(site / "ja/index.qhp")
    for section in japanese.iter("section"):
        section.set("ref", posixpath.normpath(f"ja/{section.get('ref')}"))
    contents = japanese.find(".//toc/section")
    contents.set("title", "日本語")
    english.find(".//toc/section").append(contents)
    files = english.find(".//files")
    files.clear()
    for path in sorted(site.rglob("*")):
        if path.suffix in (".html", ".css", ".png", ".svg", ".cpp") or path.name == "LICENSE":
            ET.SubElement(files, "file").text = path.relative_to(site).as_posix()
    english.write(site / "index.qhp", encoding="utf-8", xml_declaration=True)
    return []


if sys.argv[1] == "header":
    sys.stdout.reconfigure(encoding="utf-8")
    sys.stdout.write(header(sys.argv[2]))
else:
    found = {"prepare": prepare, "help": help_project, "finish": finish}[sys.argv[1]]()
    for failure in found:
        print(failure, file=sys.stderr)
    sys.exit(len(found) > 0)
