"""Fails on a source that clang-format would change, and on one of more than 600 lines.

    format.py ROOT | --self-test
"""

from __future__ import annotations

import re
import subprocess
import sys
from pathlib import Path

from lint import run, sources

LONGEST = 600  # lines
STYLE = Path(__file__).resolve().parents[2] / ".clang-format"


def check(root: Path) -> list[str]:
    files = [path for path in sources(root, "src", "tests", "bench") if path.is_file()]
    reports = []
    for path in files:
        lines = path.read_bytes().count(b"\n")
        if lines > LONGEST:
            reports.append(f"{path.relative_to(root)}: {lines} lines; the most is {LONGEST}")

    command = ["clang-format", f"--style=file:{STYLE}", "--dry-run", *map(str, files)]
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    places = re.findall(r"^(.+?):(\d+):\d+: warning: code should be clang-formatted", done.stderr, re.MULTILINE)
    first: dict[str, str] = {}
    for path, line in places:
        first.setdefault(path, line)
    for path, line in first.items():
        reports.append(f"{Path(path).relative_to(root)}:{line}: clang-format would change this")
    if done.returncode != 0:
        reports.append(f"clang-format failed: {done.stderr.strip()}")
    return reports


CLEAN = "int answer()\n{\n    return 42;\n}\n"
EXAMPLES = [
    ("a clean file passes", {"src/runtime/A.cpp": CLEAN}, []),
    ("a brace in the wrong place", {"src/runtime/A.cpp": "int answer() {\n    return 42;\n}\n"}, ["A.cpp:1"]),
    ("a header of a test", {"src/runtime/A.cpp": CLEAN, "tests/b/B.h": "int  b;\n"}, ["tests/b/B.h:1"]),
    ("a file that is too long", {"src/runtime/A.cpp": "int a();\n" * 601}, ["601 lines"]),
]

if __name__ == "__main__":
    sys.exit(run(check, EXAMPLES))
