#!/usr/bin/env python3
"""Checks that every failure site ("Source/..." or "Platform/..." literal) names a source file."""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
sites = 0
errors = []
for path in sorted([*(ROOT / "Source").glob("*"), *(ROOT / "Platform").rglob("*")]):
    if path.suffix not in (".h", ".cpp"):
        continue
    for site in re.findall(r'"((?:Source|Platform)/[^"]*)"', path.read_text()):
        sites += 1
        if not (ROOT / (site + ".cpp")).is_file():
            errors.append(f'{path.relative_to(ROOT)}: the site "{site}" names no file')
print("\n".join(errors) if errors else f"{sites} failure sites, each names its file")
sys.exit(1 if errors or not sites else 0)
