#!/usr/bin/env python3
"""Runs the measuring programs of a build tree and prints one table: each figure beside its peer and its aim.

usage: report.py TREE [FIGURE]...   (TREE as in build/bench; figures: query plain dense startup growth memory load
       lookup sqltext dates guard csv intern dimensions)

Times are processor times, medians of seven runs in turns; for growth the least of five runs or more; for startup the
time on the clock, median of forty-one. An aim that is missed is told in the table and is no failure. The exit status is
1 when a program fails, above all when outputs differ.
"""
import json
import math
import os
import platform
import shutil
import statistics
import subprocess
import sys
import time

INPUTS = os.path.join(os.path.dirname(os.path.abspath(__file__)), "Inputs")
REPETITIONS = 7
STARTS = 41

GROWTH_AIM = 2.2
NO_BLOCKS_EXTRA = 256 * 1024
CSV_BYTES = 64 << 20

# The allocator gives large blocks back to the system, and whoever needs them next pays for fresh pages, which may cost
# more than the work. In this environment it keeps them.
MEMORY_KEPT = {"GLIBC_TUNABLES": "glibc.malloc.mmap_threshold=4294967296:glibc.malloc.trim_threshold=8589934592"}

rows = []


def row(figure, ours, peer, ratio, aim=None, note=""):
    """`aim` is the greatest ratio that meets it; without one the row only informs."""
    met = "" if aim is None else "yes" if ratio <= aim else "NO"
    rows.append((figure, ours, peer, f"{ratio:.2f}", "" if aim is None else f"<= {aim:.2f}", met, note))


def run(arguments, environment=None):
    result = subprocess.run(arguments, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False,
                            env=os.environ | (environment or {}))
    if result.returncode != 0:
        sys.stderr.write(result.stderr)
        raise SystemExit(f"report.py: {' '.join(arguments)} failed with status {result.returncode}")
    return result.stdout


def duration(nanoseconds):
    for unit, size in (("s", 1e9), ("ms", 1e6), ("us", 1e3)):
        if nanoseconds >= size:
            return f"{nanoseconds / size:.3g} {unit}"
    return f"{nanoseconds:.3g} ns"


def throughput(byte_count, nanoseconds):
    return f"{byte_count / nanoseconds:.2f} GB/s"


def run_benchmark(programs, command, pattern, *options, environment=None):
    """`command` is a program with the arguments that come first."""
    report = json.loads(run([os.path.join(programs, command[0]), *command[1:], f"--benchmark_filter=^{pattern}$",
                             "--benchmark_min_time=0.1", "--benchmark_format=json", *options], environment))
    return [entry for entry in report["benchmarks"] if entry["run_type"] == "iteration"]


def run_expander(programs, pattern, *options, environment=None):
    return run_benchmark(programs, ["benchmark-expander"], pattern, *options, environment=environment)


def medians(entries):
    """By name of the run: (nanoseconds, sites if the run counts them)."""
    by_name = {}
    for entry in entries:
        assert entry["time_unit"] == "ns"
        by_name.setdefault(entry["run_name"], []).append(entry)
    return {name: (statistics.median(entry["cpu_time"] for entry in runs), runs[0].get("sites"))
            for name, runs in by_name.items()}


def measure_together(programs, figure, command=("benchmark-expander",)):
    """All runs of a figure in one process, their repetitions in random order."""
    return medians(run_benchmark(programs, command, f"{figure}/.*", f"--benchmark_repetitions={REPETITIONS}",
                                 "--benchmark_enable_random_interleaving=true"))


def measure_apart(programs, names, environment):
    """Each repetition of each run in a process of its own: what its large blocks cost depends on no other run."""
    return medians([entry for _ in range(REPETITIONS) for name in names
                    for entry in run_expander(programs, name, environment=environment)])


def report_query(programs):
    times = measure_together(programs, "query")
    ours = times["query/brindle"][0]
    for peer, aim in (("ctemplate sections", 0.4), ("ctemplate modifiers", None), ("plain code", None)):
        theirs = times["query/" + peer][0]
        row("query, to " + peer, duration(ours), duration(theirs), ours / theirs, aim)


def report_plain(programs):
    size = 16 << 20
    figures, ours, peers = ("plain", "sparse"), ("brindle", "brindle from bytes"), ("ctemplate", "table scan")
    for environment, suffix in ((None, ""), (MEMORY_KEPT, ", memory kept")):
        times = measure_apart(programs, [f"{figure}/{who}" for figure in figures for who in ours + peers], environment)
        for figure in figures:
            for who in ours:
                for peer in peers:
                    own, theirs = times[f"{figure}/{who}"][0], times[f"{figure}/{peer}"][0]
                    has_aim = figure == "plain" and who == "brindle" and not environment
                    row(f"{figure}{who.removeprefix('brindle')}, to {peer}{suffix}", throughput(size, own),
                        throughput(size, theirs), own / theirs, 1.0 if has_aim else None)


def report_dense(programs):
    times = measure_together(programs, "dense")
    ours, sites = times["dense/brindle"]
    for peer, aim, note in (("ctemplate", 0.5, ""), ("fmt", 1.0, "the aim beyond")):
        theirs = times["dense/" + peer][0]
        row(f"dense, a site, to {peer}", duration(ours / sites), duration(theirs / sites), ours / theirs, aim, note)


def report_load(programs):
    command = ["benchmark-catalogue", "--figure", "load"]
    runs = [entry for _ in range(REPETITIONS) for name in ("load/brindle", "load/expat")
            for entry in run_benchmark(programs, command, name + ".*")]
    times = {name.split("/iterations")[0]: time[0] for name, time in medians(runs).items()}
    memory = {entry["run_name"].split("/iterations")[0]: entry["memory"] for entry in runs}
    ours, theirs = times["load/brindle"], times["load/expat"]
    row("load, to expat", duration(ours), duration(theirs), ours / theirs, 1.6)
    ours, theirs = memory["load/brindle"], memory["load/expat"]
    row("load, memory afterwards", f"{ours / 1048576:.1f} MiB", f"{theirs / 1048576:.1f} MiB", ours / theirs)


def report_lookup(programs):
    command = ["benchmark-catalogue", "--figure", "lookup"]
    for figure, aim in (("lookup-id", 2.0), ("lookup-name", 3.0)):
        times = measure_together(programs, figure, command)
        (ours, sites), (theirs, _) = times[figure + "/brindle"], times[figure + "/map"]
        row(f"{figure}, one, to std::map", duration(ours / sites), duration(theirs / sites), ours / theirs, aim)


def report_sqltext(programs):
    sizes = (500_000, 1_000_000, 2_000_000)
    times = measure_together(programs, "sqltext", ["benchmark-sqltext"])
    ours = {size: times[f"sqltext/brindle/{size}"][0] for size in sizes}
    theirs = times["sqltext/std string/1000000"][0]
    row("sqltext, 1 M fragments, to std string", duration(ours[1_000_000]), duration(theirs), ours[1_000_000] / theirs,
        2.0)
    ratios = [ours[large] / ours[small] for small, large in zip(sizes, sizes[1:])]
    row("growth, sqltext, 2 M fragments", duration(ours[sizes[-1]]), duration(ours[sizes[-2]]), max(ratios), GROWTH_AIM,
        " ".join(f"{ratio:.2f}" for ratio in ratios))


def report_dates(programs):
    times = measure_together(programs, "dates", ["benchmark-values"])
    ours, sites = times["dates/brindle"]
    for peer in ("chrono", "chrono date and time"):
        theirs = times["dates/" + peer][0]
        row(f"dates, one, to {peer}", duration(ours / sites), duration(theirs / sites), ours / theirs, 1.5)


def report_guard(programs):
    times = {name.removeprefix("guard/"): time for name, (time, _) in
             measure_together(programs, "guard", ["benchmark-performance"]).items()}
    for guard, aim in (("enabled", 1.5), ("enabled by pool", None)):
        row(f"guard, {guard}, to two readings of its clock", duration(times[guard]), duration(times["clock twice"]),
            times[guard] / times["clock twice"], aim)
    for guard in ("null data", "null pool", "indication off"):
        extra = times[guard] - times["empty step"]
        row(f"guard, {guard}, beyond an empty step, to 2 ns", duration(extra), "2 ns", extra / 2, 1.0,
            f"the step itself {duration(times['empty step'])}")


def time_process(arguments):
    """Nanoseconds from the start of the process to its end."""
    start = time.perf_counter_ns()
    child = os.posix_spawn(arguments[0], arguments, os.environ,
                           file_actions=[(os.POSIX_SPAWN_OPEN, 1, os.devnull, os.O_WRONLY, 0)])
    status = os.waitpid(child, 0)[1]
    elapsed = time.perf_counter_ns() - start
    if status != 0:
        raise SystemExit(f"report.py: {' '.join(arguments)} failed")
    return elapsed


def report_startup(programs):
    expand = [os.path.join(programs, "brindle"), "expand", os.path.join(INPUTS, "query.sql"),
              "--params", os.path.join(INPUTS, "query.json")]
    with open(os.path.join(INPUTS, "query.expected.sql"), encoding="utf-8") as expected:
        if run(expand) != expected.read():
            raise SystemExit("report.py: brindle expand gives another text than query.expected.sql")
    commands = {"brindle": expand, "true": [shutil.which("true")], "python3": [shutil.which("python3"), "-c", "pass"]}
    times = {name: [] for name in commands}
    for _ in range(STARTS):
        for name, command in commands.items():
            times[name].append(time_process(command))
    ours, bare, python = (statistics.median(times[name]) for name in ("brindle", "true", "python3"))
    row("startup, to true", duration(ours), duration(bare), ours / bare)
    row("startup, to python3 -c pass", duration(ours), duration(python), ours / python)


def doublings(entry):
    return [large / small for small, large in zip(entry["seconds"], entry["seconds"][1:])]


def report_growth(programs):
    entries, kept = ([json.loads(line) for line in run([os.path.join(programs, "benchmark-growth")], environment)
                      .splitlines()] for environment in (None, MEMORY_KEPT))
    for entry, entry_kept in zip(entries, kept):
        sizes, seconds, ratios = entry["sizes"], entry["seconds"], doublings(entry)
        # A sort has its logarithm beyond the doubling.
        allowance = [math.log2(large) / math.log2(small) if entry["name"].startswith("sort ") else 1.0
                     for small, large in zip(sizes, sizes[1:])]
        worst = max(range(len(ratios)), key=lambda step: ratios[step] / allowance[step])
        unit = f"{sizes[-1] / 1e6:g} M{'B' if entry['unit'] == 'bytes' else ''}"
        steps, steps_kept = (" ".join(f"{ratio:.2f}" for ratio in values) for values in (ratios, doublings(entry_kept)))
        row(f"growth, {entry['name']}, {unit}", duration(seconds[-1] * 1e9), duration(seconds[-2] * 1e9),
            ratios[worst], GROWTH_AIM * allowance[worst], f"{steps}; memory kept {steps_kept}")


def report_memory(programs):
    entries = [json.loads(line) for line in run([os.path.join(programs, "benchmark-memory")]).splitlines()]
    for entry in entries:
        size, peak = entry["size"], entry["peak"]
        if entry["name"] != "terms":
            row(f"memory, {entry['name']}, {size / 1048576:.0f} MiB", f"{peak / 1024:.0f} KiB",
                f"{size / 1024:.0f} KiB", peak / size,
                (2 * size + NO_BLOCKS_EXTRA) / size if entry["name"].startswith("no blocks") else None)
    terms = [entry for entry in entries if entry["name"] == "terms"]
    for small, large in zip(terms, terms[1:]):
        row(f"memory, {large['size']} terms to {small['size']}", f"{large['peak'] / 1024:.0f} KiB",
            f"{small['peak'] / 1024:.0f} KiB", large["peak"] / small["peak"], GROWTH_AIM,
            f"{large['peak'] / large['size']:.0f} bytes a term")


def report_csv(programs):
    times = {name.removeprefix("csv/"): time for name, (time, _) in
             measure_together(programs, "csv", ["benchmark-services", "--figure", "csv"]).items()}
    for work, peer, aim in (("read", "libcsv", 1 / 1.3), ("write", "libcsv", 1.0), ("write", "libcsv buffer", None)):
        ours, theirs = times[f"{work} brindle"], times[f"{work} {peer}"]
        row(f"csv, {work}, to {peer}", throughput(CSV_BYTES, ours), throughput(CSV_BYTES, theirs), ours / theirs, aim)


def report_intern(programs):
    times = measure_together(programs, "intern", ["benchmark-services", "--figure", "intern"])
    ours = times["intern/brindle"][0]
    for peer, note in (("ordered map", ""), ("hash map", "the aim beyond")):
        theirs = times["intern/" + peer][0]
        row(f"intern, a million strings, to {peer}", duration(ours), duration(theirs), ours / theirs, 1.0, note)


def report_dimensions(programs):
    sizes = (1000, 2000, 4000, 8000)
    times = {name: time for name, (time, _) in
             measure_together(programs, "dimensions", ["benchmark-services", "--figure", "dimensions"]).items()}
    ours = [times[f"dimensions/brindle/{size}"] for size in sizes]
    row("dimensions, 1,000 groups, to a second", duration(ours[0]), "1 s", ours[0] / 1e9, 1.0)
    row("dimensions, 500 groups, to by the letter", duration(times["dimensions/brindle/500"]),
        duration(times["dimensions/by the letter/500"]),
        times["dimensions/brindle/500"] / times["dimensions/by the letter/500"])
    ratios = [large / small for small, large in zip(ours, ours[1:])]
    row("growth, dimensions, 8,000 groups", duration(ours[-1]), duration(ours[-2]), max(ratios), None,
        " ".join(f"{ratio:.2f}" for ratio in ratios))


def processor():
    try:
        with open("/proc/cpuinfo", encoding="utf-8") as info:
            return next(line.split(":")[1].strip() for line in info if line.startswith("model name"))
    except (OSError, StopIteration):
        return platform.machine()


def print_table():
    table = [("figure", "ours", "peer", "ratio", "aim", "met", "")] + rows
    widths = [max(len(cells[column]) for cells in table) for column in range(len(table[0]))]
    for cells in table:
        print("  ".join(cell.ljust(width) if column in (0, 6) else cell.rjust(width)
                        for column, (cell, width) in enumerate(zip(cells, widths))).rstrip())
    missed = sum(cells[5] == "NO" for cells in rows)
    aimed = sum(cells[5] != "" for cells in rows)
    print(f"\n{aimed - missed} of {aimed} aims met; {processor()}, {os.cpu_count()} processors, "
          f"load {os.getloadavg()[0]:.1f}, {time.strftime('%Y-%m-%d')}")


def main():
    parts = {"query": report_query, "plain": report_plain, "dense": report_dense, "startup": report_startup,
             "growth": report_growth, "memory": report_memory, "load": report_load, "lookup": report_lookup,
             "sqltext": report_sqltext, "dates": report_dates, "guard": report_guard, "csv": report_csv,
             "intern": report_intern, "dimensions": report_dimensions}
    if len(sys.argv) < 2 or not set(sys.argv[2:]) <= parts.keys():
        raise SystemExit(__doc__.split("\n\n")[1])
    programs = os.path.join(sys.argv[1], "bin")
    for name in sys.argv[2:] or parts:
        print(f"-- {name}", file=sys.stderr, flush=True)
        parts[name](programs)
    print_table()


main()
