#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Turns a page as it is written, GitHub's Markdown, into what Doxygen understands: `doxygen_page.py FILE` prints it.

Headings get labels, links to pages and headings lead to labels, and links to other files of the repository become their
names, since the site does not have them. Code between backquotes becomes <code>, in which Doxygen takes no quote for its
end and no character for a command.
"""

import os
import re
import sys

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


def convert(lines, page):
    in_block = False
    prose = []  # the lines since the last that were anything else, because links go on from line to line
    for line in lines + ["#"]:
        is_fence = line.startswith("```")
        if not (in_block or is_fence or line.startswith(("    ", "<!-- ", "#"))):
            prose.append(line)
            continue
        if prose:
            yield convert_prose("\n".join(prose), page)
            prose = []
        if is_fence:
            in_block = not in_block
            yield line if line == "```" else "```{" + LANGUAGES.get(line[3:], "." + line[3:]) + "}"
        elif in_block or line.startswith("    "):
            yield line
        elif line.startswith("# ") or line.startswith("##"):
            yield convert_heading(line, page)
        else:
            yield ""


LANGUAGES = {"console": ".sh", "gdb": ".txt", "text": ".txt", "cmake": ".txt", "sh": ".sh"}

if __name__ == "__main__":
    with open(sys.argv[1], encoding="utf-8") as file:
        print("\n".join(convert(file.read().split("\n"), sys.argv[1])))
