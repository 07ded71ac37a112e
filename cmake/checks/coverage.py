#!/usr/bin/env python3
"""Merges the profiles of a tree's test run and prints the coverage by folder: coverage.py TREE

Counted are lines and branches of Include, Source and each folder of Platform, by clang's source-based figures; every
program and library of the tree is read, so that a header's inline code counts wherever it is compiled. The raw profiles
are those below TREE/profiles. Beside the merged profile, TREE/coverage.profdata, there are TREE/files.txt with the
figures of each file and the marked sources below TREE/html. The exit status is 1 when a row on which an aim lies falls
short of it.
"""
import json
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
AIMS = {"lines": 93, "branches": 80}
WITH_AIM = ("Include", "Source", "Platform", "total")
NO_COUNTS = {kind: (0, 0) for kind in AIMS}

tree = pathlib.Path(sys.argv[1]).resolve()
profile = tree / "coverage.profdata"


def run(*arguments):
    result = subprocess.run(arguments, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, check=False)
    # llvm-cov calls it a mismatch when one program leaves out an inline function that another one has.
    stderr = re.sub(r"\x1b\[[\d;]*m", "", result.stderr)
    told = "".join(line for line in stderr.splitlines(True) if "functions have mismatched data" not in line)
    if result.returncode != 0:
        raise SystemExit(f"coverage.py: {arguments[0]} failed with status {result.returncode}\n{told}")
    sys.stderr.write(told)
    return result.stdout


def programs():
    """The tree's programs and libraries, each once: the links to a library are left out."""
    found = [p for folder in ("lib", "bin") for p in sorted((tree / folder).iterdir()) if p.is_file() and not p.is_symlink()]
    return [str(p) for p in found if p.open("rb").read(4) == b"\x7fELF"]


def llvm_cov(command, *options):
    first, *others = programs()
    return run("llvm-cov", command, first, *(f"-object={other}" for other in others), f"-instr-profile={profile}", *options,
               *(str(ROOT / folder) for folder in ("Include", "Source", "Platform")))


def rows_of(path):
    """The rows of the table into which a file counts."""
    folder = path.parts[0]
    return [folder, "total"] if folder != "Platform" else [f"{path.parent}", folder, "total"]


raw = sorted(map(str, (tree / "profiles").glob("*.profraw")))
if not raw:
    raise SystemExit(f"coverage.py: no profiles below {tree / 'profiles'}")
run("llvm-profdata", "merge", "-sparse", f"-output={profile}", *raw)

rows = {}
for file in json.loads(llvm_cov("export", "-summary-only", "-skip-functions"))["data"][0]["files"]:
    for name in rows_of(pathlib.Path(os.path.relpath(file["filename"], ROOT))):
        counts = rows.setdefault(name, dict(NO_COUNTS))
        for kind in AIMS:
            counts[kind] = tuple(a + file["summary"][kind][part] for a, part in zip(counts[kind], ("covered", "count")))

(tree / "files.txt").write_text(llvm_cov("report"))
llvm_cov("show", "-format=html", f"-output-dir={tree / 'html'}", "-show-branches=count")

short = []
print(f"{'folder':<18}" + "".join(f"{kind:>24}" for kind in AIMS))
for name in sorted(rows, key=lambda name: (name == "total", name)):
    cells = ""
    for kind, aim in AIMS.items():
        covered, count = rows[name][kind]
        percent = 100 * covered / count if count else 100
        cells += f"{covered:>7} of {count:>4} {percent:>7.1f} %"
        if name in WITH_AIM and percent < aim:
            short.append(f"{name}: {percent:.1f} % of {kind}, the aim is {aim} %")
    print(f"{name:<18}{cells}")
print(f"aims: {', '.join(f'{aim} % of {kind}' for kind, aim in AIMS.items())}; each file: {tree / 'files.txt'}, "
      f"marked sources: {tree / 'html/index.html'}")
for line in short:
    print(line, file=sys.stderr)
sys.exit(1 if short else 0)
