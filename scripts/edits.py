# SPDX-License-Identifier: MIT
"""Edits, formats and sorts every well-formed XML file of some folders, each folder a package.

usage: edits.py QUXML FOLDER

Each file gets one edit of each kind. Which element is edited is chosen at random among those that a user would choose for
it, but the same in every run: for `set` and `unset` among those with attributes, for `text` among those with no elements in
them, for `add` among those with elements or with nothing in them, for `remove` among all but the root element.

What has been done is judged without the program. Its output may differ from the file only in lines of the edited element,
and in no more of them than the edit takes; and expat has to read in it what it read in the file, changed as the edit is meant.
What `format` and `sort` write has to have the same tags, texts and remarks, and doing it again must change nothing.

Fails if less than 99 % of one kind turn out so, or if there are files of less than ten packages.
"""

import collections
import multiprocessing
import pathlib
import random
import re
import subprocess
import sys
import xml.parsers.expat

LARGEST_FILE = 3_000_000
WANTED_SHARE = 0.99
WANTED_PACKAGES = 10

# How many lines there are at most in the place of those that an edit has changed. What closes a start tag often stands on the
# line of its last attribute; it goes to that of a new one.
NEW_LINES = {"set": 1, "set new": 2, "unset": 1, "text": 1, "add": 3, "remove": 1}

BEGIN_OF_XML = re.compile(rb"(\xef\xbb\xbf)?\s*<|\xff\xfe<|\xfe\xff")

VALUE = 'new & "value"'
TEXT = "new & text"


class Element:
    """Where an element is in the file and among what expat reads of it."""

    def __init__(self, parent, line, event):
        self.parent = parent
        self.line = self.last_line = line
        self.event = self.last_event = event
        self.children = 0
        self.has_text = False


class Document:
    """What expat reads: events that are tuples, with attributes as they are written."""

    def __init__(self, text):
        self.events, self.elements = [], []
        self.open_elements = []
        self.parser = parser = xml.parsers.expat.ParserCreate()
        parser.ordered_attributes = parser.specified_attributes = True
        parser.StartElementHandler = self.start
        parser.EndElementHandler = self.end
        parser.CharacterDataHandler = self.add_text
        parser.CommentHandler = lambda comment: self.events.append(("comment", comment))
        parser.ProcessingInstructionHandler = lambda *words: self.events.append(("instruction", *words))
        parser.StartCdataSectionHandler = lambda: self.events.append(("section",))
        parser.EndCdataSectionHandler = lambda: self.events.append(("end of section",))
        parser.ExternalEntityRefHandler = self.add_reference
        parser.SkippedEntityHandler = self.add_reference
        parser.Parse(text, True)

    def start(self, name, attributes):
        parent = self.open_elements[-1] if self.open_elements else None
        if parent:
            parent.children += 1
        element = Element(parent, self.parser.CurrentLineNumber, len(self.events))
        self.elements.append(element)
        self.open_elements.append(element)
        self.events.append(("start", name, tuple(zip(attributes[::2], attributes[1::2]))))

    def end(self, name):
        element = self.open_elements.pop()
        element.last_line = self.parser.CurrentLineNumber
        element.last_event = len(self.events)
        self.events.append(("end", name))

    def add_text(self, text):
        self.open_elements[-1].has_text |= bool(text.strip())
        self.events.append(("text", text))

    def add_reference(self, name, *_):
        for element in self.open_elements[-1:]:
            element.has_text = True
        self.events.append(("entity", name))
        return 1

    def get_attributes(self, element):
        return self.events[element.event][2]

    def get_name(self, element):
        return self.events[element.event][1]

    def has_mixed_content(self):
        return any(element.children and element.has_text for element in self.elements)


def join_texts(events, change):
    """Makes one text of what stands together, changes it, and leaves it out if nothing is left."""
    joined, text = [], ""
    for event in [*events, ("end of events",)]:
        if event[0] == "text":
            text += event[1]
            continue
        text = change(text)
        joined += [("text", text)] if text else []
        joined.append(event)
        text = ""
    return joined


def without_blank_texts(events):
    return join_texts(events, lambda text: text if text.strip() else "")


def without_white_space(events):
    return join_texts(events, lambda text: "".join(text.split()))


def get_local(name):
    return name.split(":")[-1]


def has_section_alone(content):
    is_inside = has_section = False
    for event in content:
        has_section |= event[0] == "section"
        is_inside = event[0] == "section" or (is_inside and event[0] != "end of section")
        if event[0] == "text" and event[1].strip() and not is_inside:
            return False
    return has_section


def get_changed_events(command, name, document, element):
    """What should be read once the element is edited; of attributes with the same name, the last one is set."""
    events = document.events
    before, start = events[: element.event], events[element.event]
    content = events[element.event + 1 : element.last_event]
    end, after = events[element.last_event], events[element.last_event + 1 :]
    attributes = list(start[2])
    if command == "set":
        last = max(i for i, (written, _) in enumerate(attributes) if get_local(written) == name)
        attributes[last] = (attributes[last][0], VALUE)
    elif command == "set new":
        attributes.append((name, VALUE))
    elif command == "unset":
        attributes = [one for one in attributes if get_local(one[0]) != name]
    elif command == "text":
        stays_section = has_section_alone(content)
        content = [("text", TEXT)]
        if stays_section:
            content = [("section",), *content, ("end of section",)]
    elif command == "add":
        prefix = start[1][: -len(get_local(start[1]))]
        content = [*content, ("start", prefix + name, ()), ("end", prefix + name)]
    else:
        return before + after
    return [*before, ("start", start[1], tuple(attributes)), *content, end, *after]


def get_changed_lines(before, after):
    """The first and the last of the lines that are not common to both, counted from 1, and how many there are instead of
    them; the last is before the first if lines were only added."""
    before, after = before.split(b"\n"), after.split(b"\n")
    shorter = min(len(before), len(after))
    first = next((i for i in range(shorter) if before[i] != after[i]), shorter)
    rest = next((i for i in range(shorter - first) if before[-1 - i] != after[-1 - i]), shorter - first)
    return first + 1, len(before) - rest, len(after) - rest - first


def changes_only_lines_of(element, command, before, after):
    first, last, new = get_changed_lines(before, after)
    lines = element.last_line - element.line + 1
    if new > NEW_LINES[command]:
        return False
    if first > last:
        return element.line <= first <= element.last_line + 1
    # Where lines are repeated, a removal can be seen one or more of them later.
    return first >= element.line and (last <= element.last_line or (new == 0 and last - first < lines))


def choose_edits(document, name_of_file):
    choose = random.Random(name_of_file)

    def get_names(element):
        names = [name for name, _ in document.get_attributes(element)]
        return [get_local(name) for name in names if not re.match(r"xmlns($|:)", name)]

    def choose_one(condition):
        elements = [element for element in document.elements if condition(element)]
        return choose.choice(elements) if elements else None

    for command in ("set", "unset"):
        element = choose_one(get_names)
        if element:
            yield command, element, choose.choice(get_names(element))
    yield "set new", choose_one(lambda _: True), "new"
    yield "text", choose_one(lambda element: not element.children), None
    yield "add", choose_one(lambda element: element.children or not element.has_text), "added"
    yield "remove", choose_one(lambda element: element.parent), None


def get_arguments(command, name):
    setting = [f"{name}={VALUE}"]
    return {"set": setting, "set new": setting, "unset": [name], "text": [TEXT], "add": [name], "remove": []}[command]


class Refusal(Exception):
    pass


class FileCheck:
    """Results are pairs of a kind and what came of it; what is not "exact" has a reason."""

    def __init__(self, program, file):
        self.program = program
        self.file = file
        self.results = []

    def run(self, *arguments, text=None):
        source = ["-"] if text is not None else [str(self.file)]
        done = subprocess.run([self.program, *arguments, *source], input=text, capture_output=True, check=False)
        if done.returncode > 1:
            message = done.stderr.decode(errors="replace").strip()
            raise Refusal(re.sub(r"^quxml: \S+ ", "", message))
        return done.stdout

    def check(self):
        text = self.file.read_bytes()
        if len(text) > LARGEST_FILE:
            return "larger than 3 MB"
        try:
            document = Document(text)
        except (xml.parsers.expat.ExpatError, ValueError, LookupError):
            return "not well-formed for expat"
        try:
            paths = self.run("query", "--quiet", "--path", "//*").decode().splitlines()
        except Refusal:
            return "not well-formed for libxml2"
        paths = [path for path in paths if not path.endswith("/")]
        if len(paths) != len(document.elements):
            return "with elements in entities"
        paths = dict(zip(document.elements, paths))
        for command, element, name in choose_edits(document, self.file.name):
            if element:
                self.note(command, lambda: self.edit(command, element, name, paths[element], text, document))
        self.note("format", lambda: self.format(text, document))
        self.note("sort", lambda: self.sort(document))
        return None

    def note(self, kind, work):
        try:
            fault = work()
            self.results.append((kind, "exact" if fault is None else "fault", fault))
        except Refusal as refusal:
            self.results.append((kind, "refused", str(refusal)))

    def edit(self, command, element, name, path, text, document):
        result = self.run(command.split()[0], "--quiet", path, *get_arguments(command, name))
        expected = get_changed_events(command, name, document, element)
        if not changes_only_lines_of(element, command, text, result):
            return f"{path}: other lines"
        if without_white_space(Document(result).events) != without_white_space(expected):
            return f"{path}: other content"
        return None

    def canonical(self, text):
        return self.run("format", "--canonical", "--quiet", text=text)

    def format(self, text, document):
        result = self.run("format", "--quiet")
        if self.run("format", "--quiet", text=result) != result:
            return "changes something the second time"
        if without_blank_texts(Document(result).events) != without_blank_texts(document.events):
            return "other content"
        canonical = self.canonical(text)
        if self.canonical(result) != canonical:
            return "another tree"
        for form, formatted in ((text, result), (canonical, self.run("format", "--quiet", text=canonical))):
            if not self.run("loss", text=form) and formatted != canonical:
                return "not the canonical form, though nothing would be lost"
        return None

    def sort(self, document):
        result = self.run("sort", "--quiet")
        if self.run("sort", "--quiet", text=result) != result:
            return "changes something the second time"
        if collections.Counter(without_blank_texts(Document(result).events)) != collections.Counter(
            without_blank_texts(document.events)
        ):
            return "other content"
        if self.canonical(result) != self.run("sort", "--canonical", "--quiet") and not document.has_mixed_content():
            return "another order than the canonical one"
        return None


def check_file(arguments):
    program, package, file = arguments
    check = FileCheck(program, file)
    return package, file, check.check(), check.results


def find_files(folder):
    for package in sorted(pathlib.Path(folder).iterdir()):
        for file in sorted(package.rglob("*")):
            if file.is_file() and not file.is_symlink() and BEGIN_OF_XML.match(file.read_bytes()[:100]):
                yield package.name, file


def report(checked):
    packages, left_out, counts, reasons, faults = (collections.Counter() for _ in range(5))
    for package, file, reason, results in checked:
        if reason is not None:
            left_out[reason] += 1
            continue
        packages[package] += 1
        for kind, outcome, details in results:
            counts[kind, outcome] += 1
            if outcome == "refused":
                reasons[kind, details] += 1
            elif outcome == "fault":
                faults[f"{kind} {file}: {details}"] += 1
    print(f"{sum(packages.values())} files of {len(packages)} packages:", *(f"{name} {n}" for name, n in packages.items()))
    print("left out:", *(f"{count} {reason};" for reason, count in left_out.items()))
    print(f"{'':8} {'exact':>6} {'refused':>8} {'faults':>7} {'share':>8}")
    is_enough = len(packages) >= WANTED_PACKAGES
    for kind in (*NEW_LINES, "format", "sort"):
        exact, refused, fault = (counts[kind, outcome] for outcome in ("exact", "refused", "fault"))
        share = exact / max(exact + refused + fault, 1)
        is_enough = is_enough and share >= WANTED_SHARE
        print(f"{kind:8} {exact:6} {refused:8} {fault:7} {share:8.2%}")
    for (kind, reason), count in reasons.most_common():
        print(f"{count:6} {kind}: {reason}")
    for fault in faults:
        print(fault)
    return is_enough


def main():
    work = [(sys.argv[1], package, file) for package, file in find_files(sys.argv[2])]
    with multiprocessing.Pool() as pool:
        checked = pool.map(check_file, work, chunksize=8)
    sys.exit(0 if report(checked) else 1)


if __name__ == "__main__":
    main()
