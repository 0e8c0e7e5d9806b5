# SPDX-License-Identifier: MIT
"""Turns what the benchmarks measured into one JSON file, tables in Markdown and a plot.

    report.py ARCH MEASURED PLACE [DOCS]

reads the files in the folder MEASURED (some may be missing), which were measured by programs for ARCH, writes into the
folder PLACE and prints the tables. With DOCS, it also puts the tables into DOCS/performance.md, between the two marks of
ARCH there, and the plot into DOCS/plots."""

import json
import pathlib
import platform
import re
import subprocess
import sys
from statistics import geometric_mean

import matplotlib

matplotlib.use("svg")
from matplotlib import pyplot

TICKS = (0.2, 0.5, 1, 2, 5, 10, 20)
# The name of the plot, where times are measured, and the marks of the figures.
PLOTS = {"amd64": "comparisons.svg", "i386": "comparisons-i386.svg"}
RIVALS = ("libxml2", "pugixml", "tinyxml2")
BEGIN, END = "<!-- figures for {0}: made by ./dev bench --arch {0} --write -->\n", "<!-- end of figures for {0} -->\n"

# What is compared, with whom, the ratio that is aimed at, and the one that no single input should exceed.
COMPARISONS = (
    ("Read and destroy", "read", "libxml2", 1.50, None),
    ("Read and destroy", "read", "pugixml", None, None),
    ("Read and destroy", "read", "tinyxml2", None, None),
    ("Read sorted", "read_sorted", "unsorted", 1.08, 1.2),
    ("Read 10,000 attributes of one element", "read_attributes", "libxml2", 1.1, None),
    ("Write compact", "write_compact", "pugixml", 0.70, None),
    ("Write compact", "write_compact", "libxml2", 0.22, None),
    ("Write compact", "write_compact", "tinyxml2", None, None),
    ("Write formatted", "write_formatted", "pugixml", 0.62, None),
    ("Write formatted", "write_formatted", "libxml2", 0.22, None),
    ("Write formatted", "write_formatted", "tinyxml2", None, None),
    ("Copy", "copy", "libxml2", 0.58, None),
    ("Copy", "copy", "tinyxml2", 0.75, None),
    ("Copy", "copy", "pugixml", None, None),
    ("Destroy", "destroy", "libxml2", 0.70, None),
    ("Destroy", "destroy", "tinyxml2", None, None),
    ("Build 100,000 elements", "build", "libxml2", 0.73, None),
    ("Build 100,000 elements", "build", "pugixml", None, None),
    ("Build 100,000 elements with attribute and text", "build_filled", "libxml2", 0.76, None),
    ("Build 100,000 elements with attribute and text", "build_filled", "pugixml", None, None),
    ("Query 100,000 elements, 21 paths", "find", "libxml2", 0.35, 1.6),
    ("Query 100,000 elements, 21 paths", "find", "pugixml", 1.7, 3.6),
    ("Query `//*`", "find_everything", "node set", 1.6, None),
    ("Query 2 KB", "find_in_small", "libxml2", None, None),
    ("Query 2 KB", "find_in_small", "pugixml", None, None),
    ("Read, query and write 2 KB", "read_find_write_small", "libxml2", 0.97, None),
    ("Read, query and write 2 KB", "read_find_write_small", "pugixml", None, None),
    ("Sort 100,000 children by items", "sort", "pugixml", 2.5, None),
    ("Get one of 10,000 children", "get_child", "pugixml", 1.0, None),
    ("Find one of 10,000 children", "find_child", "pugixml", 1.0, None),
    ("Find one of 10,000 children", "find_child", "libxml2", None, None),
    ("Get one of 10,000 attributes", "get_attribute", "pugixml", 1.0, None),
    ("Walk over all elements with `descendants`", "walk", "libxml2", 1.6, None),
    ("Walk over all elements with `descendants`", "walk", "pugixml", 1.0, None),
    ("Add 16,000 random items with `SortedChildren`", "add_sorted", "sort_children", 3.0, None),
    ("Write 25 MB with `write_file`", "write_file", "string", 1.1, None),
)
INSTRUCTIONS_AIM = 1.38
SMALL_QUERY_AIM = 0.8  # microseconds

# What a 64-bit system is to take at most.
MEMORY_AIMS = {
    "bytes of an element": 160,
    "bytes of an attribute": 176,
    "bytes of a text": 176,
    "allocations of a copy, per node": 2,
    "allocations of //entry, per result": 1,
    "allocations of list/entry, per result": 1,
    "allocations of //none, per node": 0,
}


def read_json(file):
    return json.loads(file.read_text()) if file.exists() else None


def read_counts(file):
    """Instructions, by (kind, what, which)."""
    lines = file.read_text().split("\n") if file.exists() else []
    fields = [line.split() for line in lines]
    return {tuple(line[:3]): int(line[3]) for line in fields if len(line) == 4}


WORKS_ON_AMD64 = read_counts(pathlib.Path(__file__).with_name("instructions.txt"))


def output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def packages_for(arch):
    """What the others come from: packages of this machine, with versions, or those in the sysroot of another."""
    if arch != "amd64":
        return [f"Debian's packages for {arch}"]
    packages = ("libxml2-dev", "libpugixml-dev", "libtinyxml2-dev", "libc6")
    return output_of("dpkg-query", "-W", "-f", "${Package} ${Version}\\n", *packages).strip().split("\n")


def compiler_of(place):
    """The first line of what the compiler says that the programs in the folder were built with."""
    found = next(place.glob("CMakeFiles/*/CMakeCXXCompiler.cmake")).read_text()
    compiler = re.search('^set\\(CMAKE_CXX_COMPILER "(.*)"', found, re.MULTILINE)[1]
    return output_of(compiler, "--version").split("\n")[0] + ", -O2"


def machine(arch, place):
    processor = [line.split(":")[1].strip() for line in pathlib.Path("/proc/cpuinfo").read_text().split("\n")
                 if line.startswith("model name")]
    return {
        "processor": processor[0] if processor else platform.machine(),
        "cores": len(processor),
        "compiler": compiler_of(place),
        "packages": packages_for(arch),
    }


def table(head, rows):
    lines = [head, ["---"] + ["---:"] * (len(head) - 1)] + rows
    return "".join("| " + " | ".join(line) + " |\n" for line in lines) + "\n"


def number(value, digits=2):
    return "" if value is None else f"{value:,.{digits}f}"


def comparison_rows(records, counts):
    rows = []
    for title, work, rival, aim, worst_aim in COMPARISONS:
        ours = [record for record in records if (record["work"], record["rival"]) == (work, rival)]
        if not ours:
            continue
        worst = max(ours, key=lambda record: record["ratio"])
        rows.append([title, rival, number(geometric_mean(record["ratio"] for record in ours)), number(aim),
                     number(worst["ratio"]), number(worst_aim), f"`{worst['input']}`" if len(ours) > 1 else ""])
    ratios = {which: counts[("read", which, "quxml")] / count for (kind, which, library), count in counts.items()
              if (kind, library) == ("read", "libxml2")}
    if ratios:
        worst = max(ratios, key=ratios.get)
        rows.insert(1, ["The same in instructions", "libxml2", number(geometric_mean(ratios.values())),
                        number(INSTRUCTIONS_AIM), number(ratios[worst]), "", f"`{worst}`"])
    return rows


def paths_rows(records):
    rows = {}
    for record in records:
        if record["work"] == "find":
            row = rows.setdefault(record["input"], [f"`{record['input']}`", number(record["ours"] / 1e6)])
            row.append(number(record["ratio"]))
    return list(rows.values())


def inputs_rows(records):
    """Reading, writing, copying and destroying beside libxml2, input by input."""
    rows = {}
    for work in ("read", "write_compact", "write_formatted", "copy", "destroy"):
        for record in records:
            if (record["work"], record["rival"]) == (work, "libxml2"):
                rows.setdefault(record["input"], [record["input"]]).append(number(record["ratio"]))
    return [row for row in rows.values() if len(row) == 6]


def tables(measured):
    records, counts = measured["side_by_side"], measured["counts"]
    text = ""
    rows = comparison_rows(records, counts)
    if rows:
        text += table(["Work", "beside", "ratio", "aim", "worst", "aim", "of input"], rows)
    small = [record["ours"] / 1e3 for record in records if record["work"] == "find_in_small"]
    if small:
        text += f"One query on 2 KB takes {small[0]:.2f} µs; the aim is {SMALL_QUERY_AIM} µs.\n\n"
    rows = inputs_rows(records)
    if rows:
        text += table(["Input, beside libxml2", "read", "write compact", "write formatted", "copy", "destroy"], rows)
    rows = paths_rows(records)
    if rows:
        text += table(["Path", "ms", "beside libxml2", "beside pugixml"], rows)
    if measured["memory"]:
        aims = MEMORY_AIMS if measured["arch"] == "amd64" else {}
        rows = [[what, number(value), number(aims.get(what), 0)] for what, value in measured["memory"].items()]
        peaks = measured["peaks"] or {}
        rows += [[f"MB at most while reading {number(peaks['text'] / 1e6, 1)} MB (`siblings`), {name}",
                  number(peak / 1e6, 1), ""] for name, peak in peaks.items() if name != "text"]
        text += table(["Heap", "measured", "aim"], rows)
    return text


def works_rows(counts):
    """The fixed works in an emulator, beside those on amd64 and beside the other libraries."""
    rows = []
    for (work, what, which), on_amd64 in WORKS_ON_AMD64.items():
        if which in RIVALS:
            continue
        count = counts[work, what, which]
        rivals = [counts.get((work, what, rival)) for rival in RIVALS]
        rows.append([work.replace("_", " "), f"`{what}`", number(count / 1e6), number(count / on_amd64)])
        rows[-1] += [number(rival and count / rival) for rival in rivals]
    return rows


def save(figure, file):
    figure.tight_layout()
    figure.savefig(file, metadata={"Date": None})
    pyplot.close(figure)


def plot_comparisons(rows, file):
    """Bars to the left of 1 are where the library is faster."""
    figure, axes = pyplot.subplots(figsize=(8, 0.24 * len(rows) + 1))
    names = [f"{title.replace('`', '')}, {rival}" for title, rival, *_ in rows]
    ratios = [float(row[2]) for row in rows]
    axes.barh(names, [ratio - 1 for ratio in ratios], left=1,
              color=["#3a7d44" if ratio <= 1 else "#b5651d" for ratio in ratios])
    aims = [(float(row[3]), name) for row, name in zip(rows, names) if row[3]]
    axes.plot([aim for aim, _ in aims], [name for _, name in aims], "k|", label="aim")
    axes.set_xscale("log")
    axes.set_xticks(TICKS, [str(tick) for tick in TICKS])
    axes.minorticks_off()
    axes.axvline(1, color="black", linewidth=0.8)
    axes.invert_yaxis()
    axes.set_xlabel("time of quxml / time of the other")
    axes.legend()
    save(figure, file)


def plot_all(measured, place):
    if measured["arch"] not in PLOTS:
        return
    place.mkdir(parents=True, exist_ok=True)
    matplotlib.rcParams.update({"svg.fonttype": "none", "svg.hashsalt": "quxml", "font.size": 9})
    rows = comparison_rows(measured["side_by_side"], measured["counts"])
    if rows:
        plot_comparisons(rows, place / PLOTS[measured["arch"]])


def describe(found, arch):
    packages = ", ".join(found["packages"])
    if arch not in PLOTS:
        return (f"Programs for `{arch}` in {output_of('qemu-arm', '--version').splitlines()[0]}; {found['compiler']}; "
                f"{packages}.\n\n")
    return (f"Programs for `{arch}`, measured on {found['processor']}, {found['cores']} cores; {found['compiler']}; "
            f"{packages}.\n\n")


def write_page(page, arch, text):
    begin, end = BEGIN.format(arch), END.format(arch)
    before, _, rest = page.read_text().partition(begin)
    page.write_text(before + begin + "\n" + text + end + rest.partition(end)[2])


def main(arch, source, place, docs=None):
    source, place = pathlib.Path(source), pathlib.Path(place)
    measured = {name: read_json(source / f"{name}.json") for name in ("side_by_side", "memory", "peaks")}
    measured["arch"] = arch
    measured["counts"] = read_counts(source / "instructions.txt")
    measured["machine"] = machine(arch, place)
    text = describe(measured["machine"], arch)
    if arch in PLOTS:
        text += tables(measured) + f"\n![Time beside others, {arch}](plots/{PLOTS[arch]})\n"
    else:
        text += table(["Work", "of input", "millions", "beside amd64", *(f"beside {rival}" for rival in RIVALS)],
                      works_rows(measured["counts"]))
    print(text, end="")
    (place / "results.md").write_text(text)
    plot_all(measured, place / "plots")
    if docs:
        write_page(pathlib.Path(docs) / "performance.md", arch, text)
        plot_all(measured, pathlib.Path(docs) / "plots")
    measured["counts"] = {" ".join(what): count for what, count in measured["counts"].items()}
    (place / "results.json").write_text(json.dumps(measured, indent=1))


main(*sys.argv[1:])
