#!/usr/bin/env python3
"""Turns a page as it is written, GitHub's Markdown, into what Doxygen understands: `doxygen_page.py FILE` prints it.

Headings get labels, links to pages and headings lead to labels, and links to other files of the repository become their
names, since the site does not have them. Code between backquotes becomes <code>, in which Doxygen takes no quote for its
end and no character for a command.
"""

import html
import os
import re
import sys

# The page that names all others; they stand below it in the navigation.
OVERVIEW = "guide.md"


def label_of(page, anchor=""):
    name = os.path.splitext(os.path.basename(page))[0].lower()
    return f"page_{name}" + (f"_{anchor.replace('-', '_')}" if anchor else "")


def anchor_of(heading):
    return re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-")


def make_link(text, target, page):
    path, _, anchor = target.partition("#")
    if path and not path.endswith(".md"):
        return text
    label = label_of(path or page, anchor)
    word = "subpage" if os.path.basename(page) == OVERVIEW and not anchor else "ref"
    return f'\\{word} {label} "{text}"'


def escape(code):
    """Code that Doxygen shows as it is."""
    return re.sub(r"([\\@#$%\"&<>|]|--+)", r"\\\1", code)


def convert_prose(line, page):
    pieces = re.split(r"(`[^`]+`)", line)
    for number, piece in enumerate(pieces):
        if number % 2:
            pieces[number] = "<code>" + escape(piece[1:-1].replace("\\|", "|")) + "</code>"
    line = "".join(pieces)
    return re.sub(r"(?<!!)\[([^][]+)\]\(([^)\s]+)\)", lambda link: make_link(link[1], link[2], page), line)


def convert_heading(line, page):
    marks, text = re.fullmatch(r"(#+) (.*)", line).groups()
    label = label_of(page) if marks == "#" else label_of(page, anchor_of(text))
    return f"{marks} {convert_prose(text, page)} {{#{label}}}"


def convert(lines, page):
    in_block = False
    for line in lines:
        if line.startswith("```"):
            in_block = not in_block
            yield line if line == "```" else "```{" + LANGUAGES.get(line[3:], "." + line[3:]) + "}"
        elif in_block or line.startswith("    "):
            yield line
        elif line.startswith("<!-- "):
            yield ""
        elif line.startswith("#"):
            yield convert_heading(line, page)
        else:
            yield convert_prose(line, page)


LANGUAGES = {"console": ".sh", "gdb": ".txt", "text": ".txt", "cmake": ".txt", "sh": ".sh"}

if __name__ == "__main__":
    with open(sys.argv[1], encoding="utf-8") as file:
        print("\n".join(convert(file.read().split("\n"), sys.argv[1])))
