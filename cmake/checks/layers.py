#!/usr/bin/env python3
"""Checks the dependency rule against the include lines.

Between folders: Tools, Examples, Tests, Benchmarks, Fuzz -> Include -> Platform; Source -> Include and Platform. Headers
of Source are for Source and for tests of internal classes. Inside Platform: ZBLCore knows OS alone, the other folders know
ZBLCore and OS, and each other only where Platform/README.md names the edge. Inside Source: the levels of Source/README.md;
a file includes headers of its own level or below, except for the edges that the page names.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.M)
CODE_FOLDERS = ("Include", "Source", "Platform", "Tools", "Tests", "Benchmarks", "Fuzz", "Examples")
errors = []


def complain(path, text):
    errors.append(f"{path.relative_to(ROOT)}: {text}")


def sources(folder):
    return sorted(p for p in (ROOT / folder).rglob("*") if p.suffix in (".h", ".cpp"))


def edges(page):
    """Lines such as `A -> B` in a list of the page, as pairs."""
    return set(re.findall(r"^- `(\w+) -> (\w+)`", (ROOT / page).read_text(), re.M))


def levels():
    """Rows such as `| 3 | QMMacroExpander | ... |` of Source/README.md, as stem -> level."""
    rows = re.findall(r"^\| (\d) \| `(\w+)` \|", (ROOT / "Source/README.md").read_text(), re.M)
    return {stem: int(level) for level, stem in rows}


exported = {p.name for p in sources("Include")}
private = {p.name for p in sources("Source")}
platform_folders = {p.name for p in (ROOT / "Platform").iterdir() if p.is_dir()}
platform_edges = edges("Platform/README.md")
level = levels()
source_edges = edges("Source/README.md")

stems = {p.stem for p in sources("Source")}
for stem in sorted(stems - level.keys()):
    errors.append(f"Source/README.md: no level for `{stem}`")
for stem in sorted(level.keys() - stems):
    errors.append(f"Source/README.md: `{stem}` names no file of Source/")

for folder in CODE_FOLDERS:
    for path in sources(folder):
        for included in INCLUDE.findall(path.read_text()):
            first, _, rest = included.partition("/")
            in_platform = bool(rest) and first in platform_folders
            if folder == "Platform":
                own = path.relative_to(ROOT / "Platform").parts[0]
                if included in exported or included in private:
                    complain(path, f"Platform includes {included}")
                elif in_platform and first not in (own, "OS") and not (first == "ZBLCore" and own != "OS"):
                    if (own, first) not in platform_edges:
                        complain(path, f"{own} -> {first} is no edge of Platform/README.md")
            elif folder == "Include":
                if included in private:
                    complain(path, f"an exported header includes the private {included}")
            elif folder == "Source":
                target = pathlib.PurePath(included).stem
                if included in private and level.get(target, 0) > level.get(path.stem, 0):
                    if (path.stem, target) not in source_edges:
                        complain(path, f"level {level.get(path.stem)} includes {included} of level {level[target]}")
            elif included in private and folder != "Tests":
                complain(path, f"{folder} includes the private {included}")

print("\n".join(errors) if errors else f"{len(level)} stems of Source/ on their levels, include lines in order")
sys.exit(1 if errors else 0)
