#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Turns a page as it is written, GitHub's Markdown, into what Doxygen understands: `doxygen_page.py FILE` prints it.

Headings get labels, links to pages and headings lead to labels, and links to other files of the repository become their
names, since the site does not have them. Code between backquotes becomes <code>, in which Doxygen takes no quote for its
end and no character for a command.

If the site has the playground, which QUXML_PLAYGROUND then says, queries that the documentation shows get a link that opens it.
"""

import os
import re
import sys
import urllib.parse

# The page that names all others; they stand below it in the navigation.
OVERVIEW = "guide.md"


def label_of(page, anchor=""):
    name = os.path.splitext(os.path.basename(page))[0]
    return f"page_{name}" + (f"_{anchor.replace('-', '_')}" if anchor else "")


def anchor_of(heading):
    return re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")


def make_link(text, target, page):
    path, _, anchor = target.partition("#")
    if path and not path.endswith(".md"):
        return text
    label = label_of(path or page, anchor)
    word = "subpage" if os.path.basename(page) == OVERVIEW and not anchor else "ref"
    plain = re.sub("</?code>", "", text)  # the text of a link knows no tags
    return f'\\{word} {label} "{plain}"'


def escape(code):
    """Code that Doxygen shows as it is; of several blanks it would leave one."""
    escaped = re.sub(r"([\\@#$%\"&<>|]|--+)", r"\\\1", code)
    return re.sub(" {2,}", lambda blanks: "&nbsp;" * len(blanks[0]), escaped)


LINK = re.compile(r"(?<!!)\[((?:<code>(?:(?!</code>).)*</code>|(?!<code>)[^][])+)\]\(([^)\s]+)\)")


def convert_prose(text, page):
    pieces = re.split(r"(`[^`]+`)", text)
    for number, piece in enumerate(pieces):
        if number % 2:
            pieces[number] = "<code>" + escape(piece[1:-1].replace("\\|", "|")) + "</code>"
    return LINK.sub(lambda link: make_link(link[1].replace("\n", " "), link[2], page), "".join(pieces))


def convert_heading(line, page):
    marks, text = re.fullmatch(r"(#+) (.*)", line).groups()
    label = label_of(page) if marks == "#" else label_of(page, anchor_of(text))
    return f"{marks} {convert_prose(text, page)} {{#{label}}}"


# ---- Links to the playground ----

HAS_PLAYGROUND = "QUXML_PLAYGROUND" in os.environ
TABLE_OF_QUERIES = re.compile(r"<!-- (prefix )?queries on examples/(\w+)\.xml -->")
TEXT_OF_CODE = re.compile(r'(?:read|from_string)\("((?:[^"\\]|\\.)*)"(, true)?')
QUERY_OF_CODE = re.compile(r'find(_prefix)?\(\w+, "([^"]*)"\)')


def link_to_playground(words, **state):
    chosen = urllib.parse.urlencode({name: value for name, value in state.items() if value})
    return f'<a class="try" href="playground/index.html#{chosen.replace("&", "&amp;")}">{words}</a>'


def try_row(line, table):
    """The row of a table of queries, with a link after its first path."""
    path = re.match(r"\| `([^`]*)`", line)
    if not path:
        return line
    link = link_to_playground("try it", example=table[2], path=path[1], names="prefix" if table[1] else "")
    return f"{path[0]} {link}{line[path.end():]}"


def try_code(code):
    """A link for a piece of code that reads a text, with its first query if it has one."""
    text, query = TEXT_OF_CODE.search(code), QUERY_OF_CODE.search(code)
    if not text:
        return ""
    prefix, path = query.groups() if query else ("", "//*")
    names = "prefix" if prefix else ""
    return link_to_playground("Try it", xml=text[1], path=path, names=names, sorted="1" if text[2] else "")


# ---- The page ----


def convert(lines, page):
    in_block = False
    table = None
    code = None  # of a block that can be tried
    prose = []  # the lines since the last that were anything else, because links go on from line to line
    for line in lines + ["#"]:
        is_fence = line.startswith("```")
        if HAS_PLAYGROUND:
            table = TABLE_OF_QUERIES.match(line) or (table if line.startswith("|") or not line else None)
            if table and not in_block and line.startswith("|"):
                line = try_row(line, table)
        if not (in_block or is_fence or line.startswith(("    ", "<!-- ", "#"))):
            prose.append(line)
            continue
        if prose:
            yield convert_prose("\n".join(prose), page)
            prose = []
        if is_fence:
            in_block = not in_block
            if HAS_PLAYGROUND and line == "```cpp" and os.path.basename(page) == "surprises.md":
                code = []
            yield line if line == "```" else "```{" + LANGUAGES.get(line[3:], "." + line[3:]) + "}"
            if code and not in_block:
                yield "\n" + try_code("\n".join(code))
                code = None
        elif line == THE_PAGE_ITSELF:
            yield link_to_playground("<b>Open the playground</b>", example="catalog") if HAS_PLAYGROUND else ""
        elif in_block or line.startswith("    "):
            if code is not None:
                code.append(line)
            yield line
        elif line.startswith("# ") or line.startswith("##"):
            yield convert_heading(line, page)
        else:
            yield ""


THE_PAGE_ITSELF = "<!-- the page itself -->"
LANGUAGES = {"console": ".sh", "gdb": ".txt", "text": ".txt", "cmake": ".txt", "sh": ".sh"}

if __name__ == "__main__":
    with open(sys.argv[1], encoding="utf-8") as file:
        print("\n".join(convert(file.read().split("\n"), sys.argv[1])))
