"""Makes one edit of each kind in every well-formed XML file of some folders, each folder a package.

usage: edits.py QUXML FOLDER

Which element is edited is chosen at random, but the same in every run. What has been done is judged without the program:
by its output's lines, which may differ only where the edited element stands, and by what expat reads in it, which must be
what it read before but for that element. Refusals are listed by their reasons. Fails if less than 99 % of the edits of a kind
change only the lines concerned.
"""

import collections
import pathlib
import random
import re
import subprocess
import sys
import xml.parsers.expat

LARGEST_FILE = 3_000_000
WANTED_SHARE = 0.99


class Element:
    def __init__(self, name, attributes, line, parent):
        self.name = name
        self.attributes = attributes
        self.line = line
        self.last_line = line
        self.parent = parent
        self.children = 0
        self.has_text = False


def read(text):
    """The elements of a document and all that expat reports, as a list of elements and a list of what it has read."""
    parser = xml.parsers.expat.ParserCreate()
    parser.buffer_text = True
    parser.ordered_attributes = True
    parser.specified_attributes = True
    elements, open_elements, events = [], [], []

    def start(name, attributes):
        written = attributes[: parser.specified_attributes and len(attributes)]
        parent = open_elements[-1] if open_elements else None
        element = Element(name, attributes[::2], parser.CurrentLineNumber, parent)
        if parent:
            parent.children += 1
        elements.append(element)
        open_elements.append(element)
        events.append(("start", element, name, tuple(attributes)))

    def end(name):
        open_elements.pop().last_line = parser.CurrentLineNumber
        events.append(("end", name))

    def characters(text):
        if open_elements and text.strip():
            open_elements[-1].has_text = True
        events.append(("text", text))

    parser.StartElementHandler = start
    parser.EndElementHandler = end
    parser.CharacterDataHandler = characters
    parser.CommentHandler = lambda comment: events.append(("comment", comment))
    parser.ProcessingInstructionHandler = lambda target, data: events.append(("instruction", target, data))
    parser.StartCdataSectionHandler = lambda: events.append(("section",))
    parser.EndCdataSectionHandler = lambda: events.append(("section end",))
    parser.SkippedEntityHandler = lambda name, _: events.append(("entity", name))
    parser.Parse(text, True)
    return elements, events


def get_changed_lines(before, after):
    """The first and the last of the lines that are not common to both, counted from 1; the last is before the first if
    lines were only added."""
    before, after = before.split(b"\n"), after.split(b"\n")
    shorter = min(len(before), len(after))
    first = next((i for i in range(shorter) if before[i] != after[i]), shorter)
    rest = next((i for i in range(shorter - first) if before[-1 - i] != after[-1 - i]), shorter - first)
    return first + 1, len(before) - rest, len(before) - len(after)


def is_where_it_belongs(before, after, element):
    first, last, fewer = get_changed_lines(before, after)
    lines = element.last_line - element.line + 1
    if first > last:
        return element.line <= first <= element.last_line + 1
    # Where lines are repeated, a removal can be seen one or more of them later.
    return first >= element.line and (last <= element.last_line or (fewer == lines and last - first < lines))


def without_white_space(events):
    """What was read, with the names and values of attributes sorted and without white space between elements."""
    kept = []
    for event in events:
        if event[0] == "start":
            pairs = sorted(zip(event[3][::2], event[3][1::2]))
            kept.append(("start", event[2], tuple(pairs)))
        elif event[0] != "text" or event[1].strip():
            kept.append(event)
    return kept


def differ_only_as_meant(command, before, after):
    """Whether what was read differs in one place only, and by no more than the edit makes of it."""
    one, other = without_white_space(before), without_white_space(after)
    shorter = min(len(one), len(other))
    first = next((i for i in range(shorter) if one[i] != other[i]), shorter)
    rest = next((i for i in range(shorter - first) if one[-1 - i] != other[-1 - i]), shorter - first)
    gone, new = one[first : len(one) - rest], other[first : len(other) - rest]
    if command in ("set", "unset"):
        return len(gone) == len(new) == 1 and gone[0][:2] == new[0][:2]
    if command == "text":
        return all(event[0] in ("text", "section", "section end") for event in gone + new)
    if command == "add":
        return not gone and [event[0] for event in new] in (["start", "end"], ["end", "start"])
    return not new


def choose_edits(elements, name):
    choose = random.Random(name)

    def choose_one(condition):
        numbers = [i for i, element in enumerate(elements) if condition(element)]
        return choose.choice(numbers) if numbers else None

    def get_names(element):
        return [one for one in element.attributes if not re.match(r"xmlns($|:)", one)]

    def get_local(element):
        return get_names(element)[0].split(":")[-1]

    yield "set", choose_one(get_names), lambda element: [get_local(element) + '=new & "value"']
    yield "unset", choose_one(get_names), lambda element: [get_local(element)]
    yield "text", choose_one(lambda element: not element.children), lambda _: ["new & text"]
    yield "add", choose_one(lambda element: element.children or not element.has_text), lambda _: ["added"]
    yield "remove", choose_one(lambda element: element.parent), lambda _: []


class Count:
    def __init__(self, program):
        self.program = program
        self.files = collections.Counter()
        self.edits = collections.Counter()
        self.reasons = collections.Counter()
        self.faults = []

    def run(self, *arguments):
        return subprocess.run([self.program, *arguments], capture_output=True, check=False)

    def take(self, package, file):
        text = file.read_bytes() if file.is_file() and not file.is_symlink() else b""
        if not text or len(text) > LARGEST_FILE or b"<" not in text[:200]:
            return
        try:
            elements, events = read(text)
        except (xml.parsers.expat.ExpatError, ValueError, LookupError):
            return
        paths = self.run("query", "--quiet", "--path", "//*", file).stdout.decode().splitlines()
        paths = [path for path in paths if not path.endswith("/")]
        if len(paths) != len(elements):
            return
        self.files[package] += 1
        for command, number, get_arguments in choose_edits(elements, file.name):
            if number is not None:
                self.edit(command, paths[number], get_arguments(elements[number]), file, text,
                          elements[number], events)

    def edit(self, command, path, arguments, file, text, element, events):
        result = self.run(command, "--quiet", path, *arguments, file)
        if result.returncode != 0:
            message = result.stderr.decode(errors="replace").strip()
            self.edits[command, "refused"] += 1
            self.reasons[command, re.sub(r"^quxml: \S+ ", "", message)] += 1
        elif not is_where_it_belongs(text, result.stdout, element):
            self.fault(command, path, file, "other lines")
        elif not differ_only_as_meant(command, events, read(result.stdout)[1]):
            self.fault(command, path, file, "other content")
        else:
            self.edits[command, "exact"] += 1

    def fault(self, command, path, file, what):
        self.edits[command, what] += 1
        self.faults.append(f"{command} {path} {file}: {what}")

    def report(self):
        print(f"{sum(self.files.values())} files of {len(self.files)} packages:", dict(self.files))
        is_enough = len(self.files) >= 10
        for command in ("set", "unset", "text", "add", "remove"):
            counts = {what: count for (one, what), count in sorted(self.edits.items()) if one == command}
            share = counts.get("exact", 0) / max(sum(counts.values()), 1)
            is_enough = is_enough and share >= WANTED_SHARE
            print(f"{command:8}{share:8.2%}  {counts}")
        for (command, reason), count in self.reasons.most_common():
            print(f"  {count:5}  {command}: {reason}")
        for fault in self.faults:
            print(f"  {fault}")
        return is_enough


def main():
    count = Count(sys.argv[1])
    for package in sorted(pathlib.Path(sys.argv[2]).iterdir()):
        for file in sorted(package.rglob("*")):
            count.take(package.name, file)
    sys.exit(0 if count.report() else 1)


main()
