#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Turns the runs of some processes into tables: the wanted figures first, then each suite.

Usage: figures.py FOLDER [PAGE]
Reads FOLDER/run-*.json, one file of Google Benchmark for each process. Prints Markdown; with PAGE, also puts it between
the two marks there. Writes FOLDER/load.dat for bench/plot.gp, and FOLDER/results.json, all runs in one for Google
Benchmark's compare script. A figure is the median of a process's repetitions; shown is the median of the processes'
figures and, in brackets, the least and the greatest of them.
"""

import glob
import json
import math
import re
import statistics
import sys

LOOKUP = "lookup/%s path, 2 siblings/libfyaml"

# Bytes beyond record and text for each node, rounded up, before maps kept the index of their load.
MEMORY_BEFORE = {
    "long texts, 3 kB": 189, "long texts, 30 kB": 11, "long texts, 300 kB": 8, "long texts, 1 MB": 6,
    "sequences of maps, 3 kB": 27, "sequences of maps, 30 kB": 6, "sequences of maps, 300 kB": 3,
    "sequences of maps, 1 MB": 3,
    "deep maps, 3 kB": 17, "deep maps, 30 kB": 6, "deep maps, 300 kB": 4, "deep maps, 1 MB": 4,
    "short scalars, 3 kB": 18, "short scalars, 30 kB": 7, "short scalars, 300 kB": 6, "short scalars, 1 MB": 6,
    "flat map, 10k keys": 8, "flat map, 100k keys": 8, "flat map, 1M keys": 7,
}


def ratios(run, start, end=""):
    """The ratios of a run whose names begin and end so, at least one."""
    found = [row["ratio"] for name, row in run.items() if name.startswith(start) and name.endswith(end)]
    if not found:
        raise KeyError(start)
    return found


def slowest_against_loaders(run):
    return max(ratio for peer in ("yaml_parser_load", "libfyaml", "yaml-cpp") for ratio in ratios(run, "load/", peer))


def memory_over(run):
    """The most that a document takes for a node beyond what it took before and 30 bytes for each indexed key."""
    return max(run["memory/" + name]["beyond_record_and_text"] - before - 30 * run["memory/" + name]["indexed_per_node"]
               for name, before in MEMORY_BEFORE.items())


def ratio(name):
    return lambda run: run[name]["ratio"]


def nanoseconds(name):
    return lambda run: run[name]["real_time"]


def second_thread(run):
    """The time that two threads take for a piece of work, against the time of one."""
    work = "watch/acquire, ten values, release/real_time/threads:%u"
    return run[work % 1]["items_per_second"] / run[work % 2]["items_per_second"]


WANTED = [  # what, at most, how a run gives it
    ("load, against the event loop: geometric mean", 1.05,
     lambda run: math.exp(statistics.fmean(map(math.log, ratios(run, "load/", "/event loop"))))),
    ("load, against the event loop: worst file", 1.15, lambda run: max(ratios(run, "load/", "/event loop"))),
    ("load, against any other loader: worst file", 1.00, slowest_against_loaders),
    ("flat map of 10k keys, against the event loop", 1.25, ratio("load hard/flat map, 10k keys/event loop")),
    ("flat map of 100k keys", 1.30, ratio("load hard/flat map, 100k keys/event loop")),
    ("flat map of 1M keys", 1.35, ratio("load hard/flat map, 1M keys/event loop")),
    ("seven components, plain path: ns", 70, nanoseconds(LOOKUP % "plain")),
    ("seven components, formatted path: ns", 85, nanoseconds(LOOKUP % "formatted")),
    ("seven components, plain path: against libfyaml", 1 / 7, ratio(LOOKUP % "plain")),
    ("seven components, formatted path: against libfyaml", 1 / 5.5, ratio(LOOKUP % "formatted")),
    ("last key of 100, against the last of ten", 2, ratio("last key/of 100/of ten")),
    ("last key of 10k", 6, ratio("last key/of 10000/of ten")),
    ("last key of 1M", 400, ratio("last key/of 1000000/of ten")),
    ("layers, three copies against loading the three: worst file", 1.15,
     lambda run: max(ratios(run, "layers/", "/loading the three"))),
    ("a lookup in a layered document, against a plain one", 1.05, ratio("layers/a lookup of a key/plain document")),
    ("memory of a node over what is allowed: bytes, worst document", 0, memory_over),
    ("loading and reading 10,000 records in C, against loading", 1.25, ratio("bind/load and read 10,000 records in C/load")),
    ("reading 10,000 records in C++, against loading", 0.25, ratio("bind/read 10,000 records in C++/load")),
    ("checking 1 MB against 100 definitions, against loading", 1, ratio("schema/check of 1 MB, 100 definitions/loading it")),
    ("acquire and release: ns", 50, nanoseconds("watch/acquire and release")),
    ("acquire, ten values, release: two threads against one", 1 / 1.5, second_thread),
    ("from a rename to the new document, beside 10 ms to settle: ms", 1,
     lambda run: run["watch/rename to new document"]["real_time"] / 1e6 - 10),
]


def run_read(path):
    """The file of one process, and its rows by name in the order of the suites, each the median of its repetitions."""
    with open(path, encoding="utf-8") as file:
        whole = json.load(file)
    repetitions = {}
    for row in sorted(whole["benchmarks"], key=lambda row: row["family_index"]):
        if row["run_type"] == "iteration":
            name = re.sub(r"/iterations:.*", "", row["name"])
            repetitions.setdefault(name, []).append({k: v for k, v in row.items() if isinstance(v, (int, float))})
    return whole, {name: {key: statistics.median(row[key] for row in rows) for key in rows[0]}
                   for name, rows in repetitions.items()}


def number(value):
    return f"{value:.0f}" if abs(value) >= 1000 else f"{value:.1f}" if abs(value) >= 20 else f"{value:.3f}"


def duration(ns):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("us", 1e3)):
        if ns >= size:
            return f"{ns / size:.1f} {unit}"
    return f"{ns:.1f} ns"


def spread(values, text=number):
    shown = text(statistics.median(values))
    return shown if len(values) == 1 else f"{shown} [{text(min(values))}, {text(max(values))}]"


def table(title, head, rows):
    rows = [head] + rows
    widths = [max(len(row[i]) for row in rows) for i in range(len(head))]
    lines = ["| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |" for row in rows]
    rule = "|" + "|".join("-" * (width + 1) + ("-" if i == 0 else ":") for i, width in enumerate(widths)) + "|"
    return "\n".join([f"### {title}", "", lines[0], rule] + lines[1:]) + "\n"


def wanted_table(runs):
    rows = []
    for what, most, figure in WANTED:
        try:
            values = [figure(run) for run in runs]
        except KeyError:
            continue  # not part of this run
        held = statistics.median(values) <= most
        rows.append([what, number(most), spread(values), "yes" if held else "**no**"])
    return table("Wanted and measured", ["what", "at most", "measured", "held"], rows) if rows else ""


def pair_table(suite, rows, runs):
    peers = list(dict.fromkeys(peer for _, peer in rows))
    whats = list(dict.fromkeys(what for what, _ in rows))
    cells = []
    for what in whats:
        times = [run[f"{suite}/{what}/{peer}"]["real_time"] for run in runs for peer in peers if (what, peer) in rows]
        cells.append([what, duration(statistics.median(times))] +
                     [spread([run[f"{suite}/{what}/{peer}"]["ratio"] for run in runs]) if (what, peer) in rows else "-"
                      for peer in peers])
    return table(f"{suite.capitalize()}: time as a ratio to a peer's", ["what", "library"] + peers, cells)


def time_table(suite, names, runs):
    return table(suite.capitalize(), ["what", "time"],
                 [[name.split("/", 1)[1], spread([run[name]["real_time"] for run in runs], duration)] for name in names])


def counter_table(suite, names, runs):
    standard = {"family_index", "per_family_instance_index", "repetitions", "repetition_index", "threads", "iterations",
                "real_time", "cpu_time"}
    counters = [key for key in runs[0][names[0]] if key not in standard]
    return table(suite.capitalize(), ["what"] + [counter.replace("_", " ") for counter in counters],
                 [[name.split("/", 1)[1]] + [spread([run[name][counter] for run in runs]) for counter in counters]
                  for name in names])


def suite_tables(runs):
    suites = {}
    for name in runs[0]:
        suites.setdefault(name.split("/")[0], []).append(name)
    for suite, names in suites.items():
        if "ratio" in runs[0][names[0]]:
            # what is done may itself have slashes, as the path of a file does
            yield pair_table(suite, [tuple(name.split("/", 1)[1].rsplit("/", 1)) for name in names], runs)
        elif suite == "watch":
            yield time_table(suite, names, runs)
        else:
            yield counter_table(suite, names, runs)


def setting(whole, processes):
    context = whole["context"]
    versions = [f"{key} {context[key]}" for key in ("libyaml", "libfyaml", "yaml-cpp", "compiler")]
    return (f"{context['num_cpus']} cores at {context['mhz_per_cpu']} MHz, load {context['load_avg'][0]:.1f} at first; "
            f"{', '.join(versions)}; {processes} process{'es' if processes > 1 else ''}.\n")


def load_data(runs):
    """What the chart shows: a line for each file, a column for each peer."""
    peers = ("event loop", "yaml_parser_load", "libfyaml", "yaml-cpp")
    files = dict.fromkeys(name.split("/", 1)[1].rsplit("/", 1)[0] for name in runs[0] if name.startswith("load/"))
    lines = ["\t".join(["file", *peers])]
    for file in files:
        medians = [statistics.median(run[f"load/{file}/{peer}"]["ratio"] for run in runs)
                   if f"load/{file}/{peer}" in runs[0] else math.nan for peer in peers]
        lines.append("\t".join([file] + [f"{median:.3f}" for median in medians]))
    return "\n".join(lines) + "\n"


def page_update(path, figures):
    with open(path, encoding="utf-8") as file:
        before, rest = file.read().split("<!-- figures: begin -->\n")
    _, after = rest.split("<!-- figures: end -->\n")
    with open(path, "w", encoding="utf-8") as file:
        file.write(f"{before}<!-- figures: begin -->\n\n{figures}\n<!-- figures: end -->\n{after}")


def main(folder, page=None):
    wholes, runs = zip(*(run_read(path) for path in sorted(glob.glob(f"{folder}/run-*.json"))))
    figures = "\n".join(filter(None, [setting(wholes[0], len(runs)), wanted_table(runs), *suite_tables(runs)]))
    print(figures)
    with open(f"{folder}/load.dat", "w", encoding="utf-8") as file:
        file.write(load_data(runs))
    wholes[0]["benchmarks"] = [row for whole in wholes for row in whole["benchmarks"] if row["run_type"] == "iteration"]
    with open(f"{folder}/results.json", "w", encoding="utf-8") as file:
        json.dump(wholes[0], file, indent=1)
    if page is not None:
        page_update(page, figures)


if __name__ == "__main__":
    main(*sys.argv[1:])
