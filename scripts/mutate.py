#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Breaks the library in many small ways, one at a time, and checks that the unit tests notice.

Each mutant is one small change in one line of src/: an operator, a constant, a condition, a removed statement. The
source file is compiled with it, linked with the other objects into a shared library, and the tests are run against
that, the quick ones first, those of failing memory, hostile text and costs last. A mutant that fails a test, crashes or
does not end is killed; one that does not compile does not count. Mutants that these tests cannot notice, because they
change nothing that can be seen here, are listed with the reason in scripts/equivalent_mutants.txt; every other survivor is a
gap in the tests.

Ends with the figures and exits with 1 if a survivor is not listed, if a listed mutant does not survive, or if fewer than
90 of 100 are killed: paths that only save time have many mutants that change nothing else.
"""

import argparse
import concurrent.futures
import json
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "mutate"
EQUIVALENT = ROOT / "scripts" / "equivalent_mutants.txt"
COMMANDS = ROOT / "build" / "dev" / "compile_commands.json"
FLAGS = ["-std=c++17", "-O1", "-fPIC", "-w"]
# Tests that take long, such as those of very deep trees, run only on mutants that pass all others.
SLOW = ("*Deep*:*_deep_*:*stack*:*levels*:*thousand*:*million*:*Random*:*random*:*_every_*:*_all*:*Large*:*Thread*:"
        "*linear*:*quadratic*")
# Which program runs which tests, in this order.
STAGES = (("quxml_tests", f"--gtest_filter=-{SLOW}"), ("quxml_tests", f"--gtest_filter={SLOW}"),
          ("quxml_robustness_tests", "--gtest_filter=*"), ("quxml_complexity_tests", "--gtest_filter=*"))

# What is replaced by what. Strings, characters, comments and preprocessor lines are left alone.
OPERATORS = [
    (r"==", ["!="]), (r"!=", ["=="]),
    (r"(?<![<>=!-])<=(?!>)", ["<", ">"]), (r"(?<![<>=!-])>=", [">", "<"]),
    (r"(?<=\s)<(?=\s)", ["<=", ">="]), (r"(?<=\s)>(?=\s)", [">=", "<="]),
    (r"&&", ["||"]), (r"\|\|", ["&&"]),
    (r"(?<=\s)\+(?=\s)", ["-"]), (r"(?<=\s)-(?=\s)", ["+"]),
    (r"\+\+", ["--"]), (r"--", ["++"]), (r"\+=", ["-="]), (r"-=", ["+="]),
    (r"(?<![\w&])!(?=[\w(])", [""]),
    (r"\brbegin\b", ["begin"]), (r"\brend\b", ["end"]), (r"\bfront\b", ["back"]), (r"\bback\b", ["front"]),
]
CONSTANTS = [
    (r"(?<![\w.])0(?![\w.])", ["1"]), (r"(?<![\w.])1(?![\w.])", ["0", "2"]), (r"(?<![\w.])2(?![\w.])", ["1", "3"]),
    (r"\btrue\b", ["false"]), (r"\bfalse\b", ["true"]),
]
CONDITION = re.compile(r"^(\s*(?:\} else )?(?:if|while) \()(.*)(\)(?: \{)?)$")
TERNARY = re.compile(r"^(.*?\b(?:return|=) )([^?;]+?)( \? .*)$")
# A call, an assignment, or a jump that ends where it begins.
STATEMENT = re.compile(r"^\s*(?!return|using|static|const |auto |template|friend|#|typedef|struct|class|enum|throw)"
                       r"(?:delete )?[\w:.>*\[\]()-]+(?:\.|->|\(| [-+|&]?= |\+\+|--).*;$|^\s*(?:break|continue);$|^\s*return;$")
# Lines that are left alone. Asking for memory in advance changes nothing that a test can see.
FILE_WITHOUT_EFFECT = "prefetch.h"
NO_CODE = ("//", "#", "namespace", "using", "template", "friend", "prefetch_")
DECLARATION = re.compile(r"^\s*(?:[\w:]+(?:<.*>)?[&*]? )+\w+(?:\(.*\)|\{.*\})?(?: = .*)?;$")


def code_spans(line):
    """Yields the parts of a line that are code, as (begin, end)."""
    begin = 0
    for match in re.finditer(r'"(?:\\.|[^"\\])*"|\'(?:\\.|[^\'\\])+\'|//.*$|/\*.*?\*/', line):
        yield begin, match.start()
        begin = match.end()
    yield begin, len(line)


def replacements(line):
    """Yields (description, new line) for each mutant of one line."""
    spans = list(code_spans(line))
    for pattern, choices in OPERATORS + CONSTANTS:
        for match in re.finditer(pattern, line):
            if not any(b <= match.start() and match.end() <= e for b, e in spans):
                continue
            for choice in choices:
                shown = choice or "nothing"
                yield (f"'{match.group()}' at column {match.start() + 1} becomes {shown}",
                       line[:match.start()] + choice + line[match.end():])
    condition = CONDITION.match(line)
    if condition and is_worth_negating(condition.group(2)):
        yield "condition negated", f"{condition.group(1)}!({condition.group(2)}){condition.group(3)}"
    ternary = TERNARY.match(line)
    if ternary:
        yield "choice negated", f"{ternary.group(1)}!({ternary.group(2)}){ternary.group(3)}"
    if STATEMENT.match(line) and not DECLARATION.match(line):
        yield "statement removed", re.sub(r"\S.*", ";", line, count=1)


def is_worth_negating(condition):
    """A lone comparison or negation is turned round by its operator already, and a declaration cannot be negated."""
    if ";" in condition or re.match(r"(const )?\w+[&*]* \*?\w+ =", condition):
        return False
    return "&&" in condition or "||" in condition or not re.search(r"==|!=|!|[<>]=? ", condition)


def mutants_of(path):
    if path.name == FILE_WITHOUT_EFFECT:
        return
    in_comment = False
    for number, line in enumerate(path.read_text().splitlines()):
        stripped = line.strip()
        in_comment = in_comment and "*/" not in stripped
        if in_comment or not stripped or stripped.startswith(NO_CODE):
            continue
        seen = {line}
        for description, mutated in replacements(line):
            if mutated not in seen:
                seen.add(mutated)
                yield number, description, mutated


class Mutant:
    def __init__(self, path, number, description, mutated):
        self.path, self.number, self.description, self.mutated = path, number, description, mutated
        self.original = path.read_text().splitlines()[number]
        self.place = ""  # among those that read the same

    def text(self):
        return f"{self.path.relative_to(ROOT)}: {self.original.strip()} => {self.mutated.strip()}"

    def key(self):
        return self.text() + self.place

    def __str__(self):
        return f"{self.path.relative_to(ROOT)}:{self.number + 1}: {self.description}\n    {self.key()}"


def tell_apart(mutants):
    """Numbers the mutants that read the same, such as those of two equal lines."""
    namesakes = {}
    for mutant in mutants:
        namesakes.setdefault(mutant.text(), []).append(mutant)
    for alike in namesakes.values():
        for number, mutant in enumerate(alike, 1):
            mutant.place = f" ({number} of {len(alike)})" if len(alike) > 1 else ""


def run(command, **options):
    return subprocess.run(command, capture_output=True, **options)


class Target:
    """A library or program of the everyday build: its sources, and the flags that they need to be compiled at all."""

    def __init__(self, name):
        self.name = name
        commands = [entry for entry in json.loads(COMMANDS.read_text()) if f"CMakeFiles/{name}.dir/" in entry["command"]]
        self.sources = sorted(pathlib.Path(entry["file"]) for entry in commands)
        words = shlex.split(commands[0]["command"])
        self.flags = FLAGS + [word for before, word in zip(words, words[1:])
                              if word.startswith(("-I", "-D", "-isystem")) or before == "-isystem"]


def compile_all(target):
    """Compiles the sources of a target and returns their objects."""
    sources, folder = target.sources, BUILD / "objects" / target.name
    folder.mkdir(parents=True, exist_ok=True)
    objects = {source: folder / (str(source.relative_to(ROOT)).replace("/", "_") + ".o") for source in sources}

    def compile_one(source):
        if objects[source].exists() and objects[source].stat().st_mtime > newest_change():
            return
        done = run(["g++", *target.flags, "-c", str(source), "-o", str(objects[source])])
        if done.returncode != 0:
            sys.exit(done.stderr.decode())

    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        list(pool.map(compile_one, sources))
    return objects


def newest_change():
    return max(f.stat().st_mtime for folder in ("src", "include", "tests") for f in (ROOT / folder).rglob("*.*"))


def users_of(header, sources):
    """The sources that are compiled again when a private header changes: all that include it, directly or not."""
    names, grown = {header.name}, True
    while grown:
        grown = False
        for other in (ROOT / "src").rglob("*.h"):
            if other.name not in names and includes_any(other, names):
                names.add(other.name)
                grown = True
    return [source for source in sources if includes_any(source, names)]


def includes_any(path, names):
    return any(pathlib.PurePath(found).name in names for found in re.findall(r'#include "(.*?)"', path.read_text()))


def link(objects, target):
    return run(["g++", "-shared", *map(str, objects), "-o", str(target), "-lxml2"]).returncode == 0


def build_program(name, folder):
    """Builds a test program that is linked with the library in `folder`, and with the extras, which some tests call."""
    objects = [*compile_all(Target(name)).values(), *compile_all(Target("quxml_extras")).values()]
    linked = run(["g++", *map(str, objects), "-o", str(BUILD / name), f"-L{folder}", "-lquxml", "-lgtest",
                  "-lgtest_main", "-lxml2", "-lpthread"])
    if linked.returncode != 0:
        sys.exit(linked.stderr.decode())


def is_noticed(folder, limits):
    """Runs the tests against the library in `folder`; whether any fails, crashes or does not end in time."""
    return any(not passes(folder, stage, limit) for stage, limit in zip(STAGES, limits))


def passes(folder, stage, seconds):
    program, selection = stage
    command = [str(BUILD / program), selection, "--gtest_fail_fast", "--gtest_brief=1"]
    limited = ["bash", "-c", f"ulimit -v 8000000; exec {shlex.join(command)}"]
    environment = dict(os.environ, LD_LIBRARY_PATH=str(folder))
    try:
        return run(limited, env=environment, timeout=seconds, cwd=folder).returncode == 0
    except subprocess.TimeoutExpired:
        return False


def time_limits(folder):
    """How long each stage may take: several times what it takes without a mutant."""
    limits = []
    for stage in STAGES:
        begin = time.monotonic()
        if not passes(folder, stage, 600):
            sys.exit("the tests fail without any mutant")
        limits.append(5 + 5 * (time.monotonic() - begin))
    return limits


def judge(mutant, library, objects, limits):
    """Returns 'killed', 'survived' or 'invalid'."""
    folder = BUILD / f"mutant-{os.getpid()}-{id(mutant)}"
    tree = folder / "src"
    shutil.copytree(ROOT / "src", tree)
    try:
        copy = tree / mutant.path.relative_to(ROOT / "src")
        lines = copy.read_text().splitlines()
        lines[mutant.number] = mutant.mutated
        copy.write_text("\n".join(lines) + "\n")
        changed = [mutant.path] if mutant.path.suffix == ".cpp" else users_of(mutant.path, library.sources)
        own = dict(objects)
        flags = [flag.replace(f"{ROOT}/src", str(tree)) for flag in library.flags]
        for source in changed:
            own[source] = folder / (source.name + ".o")
            source_copy = tree / source.relative_to(ROOT / "src")
            if run(["g++", *flags, "-c", str(source_copy), "-o", str(own[source])]).returncode != 0:
                return "invalid"
        if not link(own.values(), folder / "libquxml.so"):
            return "invalid"
        return "killed" if is_noticed(folder, limits) else "survived"
    finally:
        shutil.rmtree(folder, ignore_errors=True)


def read_equivalent():
    """The listed mutants that change nothing that can be seen: their keys. Lines with reasons begin with '#'."""
    if not EQUIVALENT.exists():
        return set()
    return {line for line in EQUIVALENT.read_text().splitlines() if line and not line.startswith("#")}


def find_outdated(equivalent, files, survivors):
    """The keys that are listed for these files and that no survivor has."""
    names = {str(f.relative_to(ROOT)) for f in files}
    listed = {key for key in equivalent if key.split(":")[0] in names}
    return sorted(listed - {m.key() for m in survivors})


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--list", action="store_true", help="only list the mutants")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("files", nargs="*", type=pathlib.Path, help="sources to mutate (default: all of src/)")
    arguments = parser.parse_args()

    library = Target("quxml")
    files = [f.resolve() for f in arguments.files] or sorted([*library.sources, *(ROOT / "src").rglob("*.h")])
    mutants = [Mutant(f, *found) for f in files for found in mutants_of(f)]
    tell_apart(mutants)
    if arguments.list:
        print(*mutants, sep="\n")
        print(len(mutants), "mutants")
        return 0

    objects = compile_all(library)
    healthy = BUILD / "healthy"
    healthy.mkdir(exist_ok=True)
    if not link(objects.values(), healthy / "libquxml.so"):
        sys.exit("the library does not link")
    for name in dict.fromkeys(program for program, _ in STAGES):
        build_program(name, healthy)
    limits = time_limits(healthy)
    print(f"{len(mutants)} mutants; a stage of the tests may take " + ", ".join(f"{limit:.0f} s" for limit in limits),
          flush=True)

    counts = {"killed": 0, "survived": 0, "invalid": 0}
    survivors = []
    with concurrent.futures.ThreadPoolExecutor(arguments.jobs) as pool:
        jobs = {pool.submit(judge, m, library, objects, limits): m for m in mutants}
        for done, job in enumerate(concurrent.futures.as_completed(jobs), 1):
            result = job.result()
            counts[result] += 1
            if result == "survived":
                survivors.append(jobs[job])
                print("survived:", jobs[job], flush=True)
            if done % 50 == 0:
                print(f"... {done} of {len(mutants)} done", flush=True)

    equivalent = read_equivalent()
    unlisted = [m for m in survivors if m.key() not in equivalent]
    outdated = find_outdated(equivalent, files, survivors)
    print(*[f"listed, but did not survive: {key}\n" for key in outdated], sep="", end="")
    judged = counts["killed"] + counts["survived"]
    rate = 100 * counts["killed"] / max(judged, 1)
    print(f"{judged} mutants ran ({counts['invalid']} do not compile): {counts['killed']} killed, {rate:.1f} %; "
          f"{len(survivors)} survived, {len(unlisted)} of them not listed as equivalent")
    return 0 if rate >= 90 and not unlisted and not outdated else 1


if __name__ == "__main__":
    sys.exit(main())
