"""What the lints share: walking the sources, reporting, and showing that a lint does fail."""

from __future__ import annotations

import argparse
import re
import sys
import tempfile
from pathlib import Path
from typing import Callable, Iterator

Check = Callable[[Path], list[str]]
Example = tuple[str, dict[str, str], list[str]]  # what it shows, files by path, what each report has to name


def sources(root: Path, *folders: str) -> Iterator[Path]:
    for folder in folders:
        yield from sorted(path for path in (root / folder).rglob("*") if path.suffix in (".h", ".cpp"))


def without_comments(text: str) -> str:
    """The code with comments blanked out, lines kept; a quoted text stays as it is."""

    def blank(match: re.Match[str]) -> str:
        found = match.group(0)
        return found if found.startswith(('"', "'")) else re.sub(r"[^\n]", " ", found)

    return re.sub(r'"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'|//[^\n]*|/\*.*?\*/', blank, text, flags=re.DOTALL)


def run(check: Check, examples: list[Example]) -> int:
    """Checks the tree that is named, or with --self-test the examples."""
    parser = argparse.ArgumentParser()
    parser.add_argument("root", nargs="?", type=Path, help="the folder with src/ and tests/ in it")
    parser.add_argument("--self-test", action="store_true", help="show that bad examples are found")
    arguments = parser.parse_args()
    if arguments.self_test:
        return _self_test(check, examples)
    if not arguments.root or not (arguments.root / "src").is_dir():
        parser.error("there is no src/ to look at")
    reports = check(arguments.root)
    print("\n".join(reports))
    return 1 if reports else 0


def _self_test(check: Check, examples: list[Example]) -> int:
    failures = 0
    for shows, files, expected in examples:
        with tempfile.TemporaryDirectory() as folder:
            root = Path(folder)
            for path, text in files.items():
                (root / path).parent.mkdir(parents=True, exist_ok=True)
                (root / path).write_text(text)
            reports = check(root)
        named = len(reports) == len(expected) and all(
            part in report for report, part in zip(sorted(reports), sorted(expected))
        )
        print(("ok    " if named else "WRONG ") + shows)
        if not named:
            failures += 1
            print("  expected:", *expected, "  reported:", *reports, sep="\n    ")
    return 1 if failures or not examples else 0
