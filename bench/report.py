#!/usr/bin/env python3
"""Turns what the benchmark measured into tables.

report.py page   writes the generated parts of docs/performance.md, and its picture, from docs/performance/*.tsv
report.py rows   shortens the table on standard input for the eye
"""
import collections
import csv
import math
import pathlib
import re
import statistics
import subprocess
import sys

PAGE = pathlib.Path(__file__).parent.parent / "docs" / "performance.md"
DATA = PAGE.with_suffix("")
PROCESSORS = {"intel": "Intel", "amd": "AMD"}
ARM = "Arm"
NOISE = 0.05
# Families of the table of functions that share a line.
SHARED_LINES = {
    "Copies and fills": ("Copy", "Move", "Set", "Zero"),
    "Bit logic and shifts": ("Bitwise", "Shift"),
    "Counts, searches, NaN": ("CountInRange", "FindNearest", "ZeroCrossing", "ReplaceNan"),
    "Order of elements and bytes": ("Flip", "SwapBytes"),
    "Integer arithmetic": ("IntegerArithmetic", "AbsoluteValue"),
    "Sorts without a handle": ("Sort", "SortIndex"),
    "Radix sorts": ("SortRadix", "SortRadixIndex"),
    "Extremes and their positions": ("Extremes", "ExtremePositions"),
}

Figure = collections.namedtuple("Figure", "value required is_met")


def read(source):
    """The comment lines of a table, and its rows as dictionaries with numbers where there are some."""
    lines = source.read().splitlines()
    comments = [line[2:] for line in lines if line.startswith("# ")]
    table = csv.DictReader((line for line in lines if not line.startswith("#")), delimiter="\t")
    return comments, [{key: number(value) for key, value in row.items()} for row in table]


def number(text):
    try:
        return float(text)
    except ValueError:
        return text


def read_file(name):
    path = DATA / (name + ".tsv")
    if not path.exists():
        return [], []
    with path.open() as file:
        return read(file)


def name(row):
    return (row["function"].removeprefix("ZIVKS_") + " " + row["variant"]).strip()


def at_least(value, required):
    return Figure(value, required, value >= required * (1 - NOISE))


def at_most(value, required, noise=NOISE):
    return Figure(value, required, value <= required * (1 + noise))


def speedup(row):
    """The worse of the two: with aligned arrays, and with all arrays at +16."""
    return min(row["other_ns"] / row["library_ns"], row["other_at_16_ns"] / row["library_at_16_ns"])


def timed_figures(row):
    figures = {"speed-up": at_least(speedup(row), row["required_speedup"])}
    if row["memory_len"]:
        share = row["memory_library_ns"] / min(row["memory_other_ns"], row["memory_copy_ns"])
        figures["memory"] = at_most(share, row["required_memory"])
    if row["short_len"]:
        figures["short call, ns"] = at_most(row["short_ns"], row["required_short_ns"])
    return figures


def counted_figures(row):
    figures = {"instructions": at_most(row["library"] / row["other"], row["required_share"], noise=0)}
    if row["short_len"]:
        figures["short call, instructions"] = at_most(row["short"], row["required_short"], noise=0)
    return figures


def worst_median_best(values, digits=2):
    if not values:
        return ["", "", ""]
    return [f"{value:.{digits}f}" for value in (values[0], statistics.median(values), values[-1])]


def table(heads, rows):
    """Of Markdown. Columns of figures are flushed to the right."""
    figures = [all(re.fullmatch(r"[-+.0-9]*( \(.*\))?", str(row[i])) for row in rows) for i in range(len(heads))]
    align = ["--:" if is_figure else "---" for is_figure in figures]
    return ["| " + " | ".join(map(str, row)) + " |" for row in [heads, align, *rows]]


def line_of(family):
    for line, families_of_line in SHARED_LINES.items():
        if family in families_of_line:
            return line
    return re.sub(r"(?<=[a-z])(?=[A-Z])", " ", family).capitalize()


def families(measured):
    """Speed-ups of each family by processor, in the order of the table of functions."""
    result = collections.defaultdict(lambda: collections.defaultdict(list))
    for processor, rows in measured.items():
        for row in rows:
            value = row["library"] / row["other"] if processor == ARM else speedup(row)
            result[line_of(row["family"])][processor].append(value)
    for by_processor in result.values():
        for processor, values in by_processor.items():
            values.sort(reverse=processor == ARM)
    return result


def family_table(measured):
    heads = ["family", "rows"]
    for processor in measured:
        heads += [f"{processor}: worst", "median", "best"]
    rows = []
    for family, by_processor in families(measured).items():
        cells = [family, max(map(len, by_processor.values()))]
        for processor in measured:
            cells += worst_median_best(by_processor[processor])
        rows.append(cells)
    return table(heads, rows)


def class_table(measured):
    columns = ("speed-up", "memory", "short call, ns", "instructions", "short call, instructions")
    required = collections.defaultdict(dict)
    misses = collections.defaultdict(collections.Counter)
    sizes = collections.defaultdict(collections.Counter)
    for processor, rows in measured.items():
        for row in rows:
            sizes[row["class"]][processor] += 1
            for what, figure in (counted_figures if processor == ARM else timed_figures)(row).items():
                required[row["class"]][what] = figure.required
                misses[row["class"]][what] += not figure.is_met
    rows = []
    for kind, limits in required.items():
        cells = [kind, max(sizes[kind].values())]
        for what in columns:
            missed = misses[kind][what]
            cells.append(f"{limits[what]:g}" + (f" ({missed})" if missed else "") if what in limits else "")
        rows.append(cells)
    return table(["class", "rows", *columns], rows)


def miss_table(measured):
    """A line for each reason; where there is none, for each kind of figure."""
    _, reasons = read_file("reasons")
    grouped = collections.defaultdict(lambda: collections.defaultdict(list))
    for processor, rows in measured.items():
        for row in rows:
            for what, figure in (counted_figures if processor == ARM else timed_figures)(row).items():
                if not figure.is_met:
                    kind = f"{processor}: {what}"
                    reason = reason_of(reasons, name(row), what)
                    grouped[reason or f"**no reason found yet** ({kind})"][kind].append((figure, name(row)))
    rows = []
    for reason, by_kind in grouped.items():
        worst = {kind: max((figure for figure, _ in misses), key=lambda f: abs(math.log(f.value / f.required)))
                 for kind, misses in by_kind.items()}
        shown = "; ".join(f"{kind} {figure.value:.3g} ({figure.required:g})" for kind, figure in worst.items())
        names = dict.fromkeys(row for misses in by_kind.values() for _, row in misses)
        rows.append([shown, shortened(names), reason])
    return table(["worst figure (required)", "rows", "reason"], rows)


def reason_of(reasons, row, what):
    for entry in reasons:
        if re.fullmatch(entry["rows"], row) and re.match(entry["figure"], what):
            return entry["reason"]
    return ""


def shortened(names):
    """Add_8u_S, Add_16s_S scale 2, Sub_8u_S: `Add` 8u_S, 16s_S scale 2; `Sub` 8u_S"""
    stems = collections.defaultdict(list)
    for full in names:
        stem, _, rest = full.partition("_")
        stems[stem].append(rest)
    return "; ".join(f"`{stem}` " + ", ".join(rest) for stem, rest in stems.items())


LIBRARIES = (("volk_", "VOLK"), ("cv::", "OpenCV"), ("Eigen", "Eigen"), ("boost::", "Boost"), ("hwy::", "Highway"),
             ("", "C and C++ libraries"))


def library_of(routine):
    return next(library for prefix, library in LIBRARIES if routine.startswith(prefix))


def peer_table(measured):
    """With the functions that take longer than this peer. A star: the peer does not keep the library's rules."""
    by_library = collections.defaultdict(lambda: collections.defaultdict(list))
    for processor, rows in measured.items():
        for row in rows:
            by_library[library_of(row["variant"])][processor].append(row)
    rows = []
    for library, by_processor in by_library.items():
        cells = [library, max(map(len, by_processor.values()))]
        behind = []
        for processor in measured:
            cells += worst_median_best(sorted(map(speedup, by_processor[processor])))
            slower = {}
            for row in sorted(by_processor[processor], key=speedup, reverse=True):
                if not at_least(speedup(row), 1).is_met:
                    slower[row["function"].removeprefix("ZIVKS_")] = f"{speedup(row):.2f}" + "*" * bool(row["remark"])
            if slower:
                behind.append(processor + ": " + ", ".join(f"{key} {value}" for key, value in slower.items()))
        rows.append([*cells, "; ".join(behind)])
    heads = ["library", "routines"]
    for processor in measured:
        heads += [f"{processor}: worst", "median", "best"]
    return table([*heads, "this library is slower in"], rows)


def query_table(measured):
    """A line for each question, with the figures of every table that was measured. A required speed-up that is missed
    stands behind."""
    heads, lines = ["question"], collections.defaultdict(list)
    for processor, rows in measured.items():
        for length in sorted({row["rows"] for row in rows}):
            heads += [f"{processor}, {length:,.0f} rows: ns a row", "sqlite3", "times as fast"]
        for row in sorted(rows, key=lambda row: row["rows"]):
            lines[row["question"]] += query_cells(row)
    return table(heads, [[question, *cells] for question, cells in lines.items()])


def query_cells(row):
    times = at_least(row["sqlite_ns"] / row["library_ns"], row["required_speedup"])
    return [f"{row['library_ns']:.1f}", f"{row['sqlite_ns']:.0f}",
            f"{times.value:.1f}" + ("" if times.is_met else f" ({times.required:g})")]


def draw(measured):
    """Each family is a line from the worst to the best row with a mark at the median."""
    timed = {processor: rows for processor, rows in measured.items() if processor != ARM and rows}
    data, labels = collections.defaultdict(list), []
    for place, (family, by_processor) in enumerate(reversed(families(timed).items())):
        labels.append(f'"{family}" {place}')
        for shift, processor in enumerate(timed):
            values = by_processor[processor]
            if values:
                y = place + (shift - (len(timed) - 1) / 2) * 0.3
                data[processor].append(f"{statistics.median(values)} {y} {values[0]} {values[-1]}")
    script = [
        f"set terminal svg size 860,{22 * len(labels) + 90} font 'sans,12' background 'white'",
        f"set output '{DATA / 'speedup.svg'}'",
        "set logscale x 2; set xlabel 'times as fast as the plain loop (worst, median and best row)'",
        "set grid xtics lc 'gray'; set key top right; set xrange [0.5:*]",
        f"set yrange [-0.7:{len(labels) - 0.3}]; set ytics ({', '.join(labels)})",
        "set arrow from 1, graph 0 to 1, graph 1 nohead lw 2 lc 'gray'",
    ]
    plots = []
    for index, (processor, points) in enumerate(data.items(), 1):
        script += [f"$data{index} << END", *points, "END"]
        plots.append(f"$data{index} using 1:2:3:4 with xerrorbars pt 7 ps 0.6 lw 2 title '{processor}'")
    script.append("plot " + ", ".join(plots))
    subprocess.run(["gnuplot"], input="\n".join(script), text=True, check=True)


def machines():
    parts = []
    for kind, processor in {**PROCESSORS, "arm64": ARM}.items():
        comments, _ = read_file(kind)
        if comments:
            parts.append(f"{processor}, [{kind}.tsv](performance/{kind}.tsv): {comments[0].split('. ')[0]}.")
        else:
            parts.append(f"{processor}: a run on such a processor is awaited, so its columns are empty.")
    return parts


def write_page():
    timed = {processor: read_file(kind)[1] for kind, processor in PROCESSORS.items()}
    peers = {processor: read_file("peers-" + kind)[1] for kind, processor in PROCESSORS.items()}
    queries = {processor: read_file("query-" + kind)[1] for kind, processor in PROCESSORS.items()}
    measured = {**timed, ARM: read_file("arm64")[1]}
    draw(measured)
    page = PAGE.read_text()
    for section, lines in {"machines": machines(), "families": family_table(measured),
                           "classes": class_table(measured), "misses": miss_table(measured),
                           "peers": peer_table(peers),
                           "query": query_table(queries)}.items():
        begin, end = f"<!-- {section}: written by scripts/benchmark -->\n", f"<!-- end of {section} -->\n"
        before, _, rest = page.partition(begin)
        _, found, after = rest.partition(end)
        if not found:
            sys.exit(f"{PAGE} has no place for {section}")
        page = before + begin + "\n".join(lines) + "\n" + end + after
    PAGE.write_text(page)
    print(f"{PAGE}: {len(page.splitlines())} lines")


def print_rows():
    comments, rows = read(sys.stdin)
    print(*comments, sep="\n")
    for row in rows:
        figures = counted_figures(row) if "library" in row else timed_figures(row)
        shown = [f"{what} {figure.value:.3g}" + ("" if figure.is_met else f" (required: {figure.required:g})")
                 for what, figure in figures.items()]
        if "library" in row:
            times = f"{row['library'] / row['len']:.3f} instructions an element"
        else:
            times = f"{row['library_ns']:.4f} ns, at +16 {row['library_at_16_ns']:.4f} ns"
        print(f"{name(row)}: {times}; " + ", ".join(shown))


if __name__ == "__main__":
    {"page": write_page, "rows": print_rows}[sys.argv[1]]()
