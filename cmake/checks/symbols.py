#!/usr/bin/env python3
"""Checks what an installation lets out: symbols.py INCLUDE_DIR LIBRARY...

A library exports what the installed headers mark with BRINDLE_API or BRINDLE_PLATFORM_API, and the instantiations of the
standard library that come with it, and nothing else, above all no name of a library behind ours. Every class that is
thrown is exported, wherever it is declared, so that a caller's handler recognises it. An installed header names no
header of a library behind ours, and is either marked or included by another one.
"""
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
MARK = r"BRINDLE_(?:PLATFORM_)?API"
CLASS = re.compile(rf"\b(?:class|struct)\s+(?:{MARK}\s+)?(\w+)(?:\s+final)?\s*:\s*public\s+(\w+)")
MARKED = re.compile(rf"\b(?:class|struct)\s+{MARK}\s+(\w+)|\b{MARK}\s+(?!class)[^;{{()]*?(\w+)\s*(?:\(|;)")
FOREIGN = re.compile(r"\bicu(_\d+)?::|\bXML_|\btoml::|\bU(Char|ErrorCode|Converter)\w*\b|\byy\w+")
FOREIGN_HEADER = re.compile(r'#\s*include\s+["<](unicode/|expat|toml)')
PREFIX = re.compile(r"^(?:(?:vtable|VTT|typeinfo|typeinfo name|guard variable) for |(?:non-virtual|virtual) thunk to )")
STANDARD = re.compile(r"^(?:[\w:]+ )?(?:std|__gnu_cxx)::|\bstd::")
errors = []

include, libraries = pathlib.Path(sys.argv[1]), sys.argv[2:]
headers = {path.relative_to(include).as_posix(): path.read_text() for path in include.rglob("*.h")}
exported = {name for text in headers.values() for pair in MARKED.findall(text) for name in pair if name}
included = {name for text in headers.values() for name in re.findall(r'#\s*include\s+"([^"]+)"', text)}

for name, text in sorted(headers.items()):
    if FOREIGN_HEADER.search(text):
        errors.append(f"{name}: includes a header of a library behind ours")
    if not re.search(MARK, text) and name not in included:
        errors.append(f"{name}: installed, but neither marked nor included by an installed header")

symbols = set()
for library in libraries:
    lines = subprocess.run(["nm", "-D", "-C", "--defined-only", library], check=True, capture_output=True, text=True).stdout
    own = {line.split(maxsplit=2)[-1] for line in lines.splitlines()}
    symbols |= own
    for symbol in sorted(own):
        name = PREFIX.sub("", symbol)
        # A function template has its result's type in front of the name; what operators belong to stands behind it.
        words = re.findall(r"\w+", name.removeprefix("brindle_platform::"))
        own_words = words if words and words[0] == "operator" else re.findall(r"\w+", re.split(r"[(<]", name)[0])[:2]
        if FOREIGN.search(name) or not (exported & set(own_words) or STANDARD.search(name)):
            errors.append(f"{pathlib.Path(library).name}: exports {symbol}")

bases = dict(pair for folder in ("Include", "Platform", "Source") for path in (ROOT / folder).rglob("*.[hc]*")
             for pair in CLASS.findall(path.read_text()))
thrown = set()
for name in bases:
    base = name
    while base in bases:
        base = bases[base]
    if base == "ZBLThrowable":
        thrown.add(name)
        if f"typeinfo for {name}" not in symbols:
            errors.append(f"{name}: thrown, but not exported")
if "QEExceptionExtended" not in thrown:
    errors.append("no class of the exceptions was found")

print("\n".join(errors) if errors else f"{len(symbols)} exported symbols, {len(thrown)} thrown classes, {len(headers)} headers")
sys.exit(1 if errors else 0)
