"""Fails on an include against the levels, and on a library's header outside that library's folder.

    includes.py ROOT | --self-test
"""

from __future__ import annotations

import re
import sys
from pathlib import Path

from lint import run, sources, without_comments

# Each may include its own level and those before it.
LEVELS = [
    {"runtime"},
    {"platform"},
    {"store"},
    {"check", "browser", "viewer", "import", "search", "export", "links", "about"},
    {"startup"},
]

# The rooms of platform/ that are ours; every other folder in it belongs to the library that it is named after.
PLATFORM_ROOMS = {"files", "pictures", "toolkit", "media", "system"}
LIBRARIES = {
    "qt": r"Q\w*(/Q\w+)?",
    "jpeg": r"(jpeglib|jerror|jmorecfg|turbojpeg)\.h",
    "mpv": r"mpv/\w+\.h",
    "sdl": r"SDL2?/\w+\.h",
}

STANDARD = set(
    """algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono cinttypes
    climits clocale cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg
    cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque exception execution format
    forward_list fstream functional future initializer_list iomanip ios iosfwd iostream istream iterator latch
    limits list locale map memory memory_resource mutex new numbers numeric optional ostream queue random ranges
    ratio regex scoped_allocator semaphore set shared_mutex source_location span sstream stack stdexcept stop_token
    streambuf string string_view syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map
    unordered_set utility valarray variant vector version""".split()
)
SYSTEM = re.compile(r"(dirent|errno|fcntl|limits|locale|malloc|poll|pwd|signal|spawn|stdlib|time|unistd|(sys|linux)/\w+)\.h")


def level_of(path: str) -> int | None:
    """The level of a file or folder below src/."""
    top = path.split("/")[0]
    if path == "main.cpp":
        return len(LEVELS)
    return next((index for index, folders in enumerate(LEVELS) if top in folders), None)


def library_of(path: str) -> str | None:
    """The library whose folder this is, for a path below src/."""
    parts = path.split("/")
    if len(parts) < 3 or parts[0] != "platform" or parts[1] in PLATFORM_ROOMS:
        return None
    return parts[1]


def own_include(path: str, included: str) -> str | None:
    """What is wrong with `#include "included"` in a file below src/."""
    ours, theirs = level_of(path), level_of(included)
    if theirs is None:
        return f'"{included}" names no folder of src/'
    if theirs > ours:
        return f'"{included}" lies above {path.split("/")[0]}'
    library = library_of(included)
    if library and not path.startswith("platform/"):
        return f'"{included}" belongs to what stands behind platform/'
    if library and path.endswith(".h") and not library_of(path):
        return f'"{included}" in a header that names no library'
    return None


def foreign_include(path: str, included: str) -> str | None:
    """What is wrong with `#include <included>` in a file below src/."""
    if included in STANDARD:
        return None
    if included == "filesystem":
        return None if path.startswith("platform/files/") else "<filesystem> outside platform/files/"
    if path.startswith("platform/") and SYSTEM.fullmatch(included):
        return None
    library = library_of(path)
    if library:
        allowed = LIBRARIES.get(library)
        if allowed is None:
            return f"platform/{library}/ is a library that this lint has not been told of"
        if re.fullmatch(allowed, included):
            return None
    return f"<{included}> outside its library's folder"


def test_include(path: str, included: str) -> str | None:
    """What is wrong with `#include <included>` in a file below tests/."""
    if included in STANDARD or included == "filesystem" or included.startswith(("gtest/", "gmock/")):
        return None
    if SYSTEM.fullmatch(included):
        return None
    if path.split("/")[0] in ("support", "platform") and any(
        re.fullmatch(names, included) for names in LIBRARIES.values()
    ):
        return None
    return f"<{included}> in a test that isn't the toolkit's"


def check(root: Path) -> list[str]:
    reports = []
    for folder in ("src", "tests"):
        for source in sources(root, folder):
            path = source.relative_to(root / folder).as_posix()
            if folder == "src" and level_of(path) is None:
                reports.append(f"src/{path}: stands in no level")
                continue
            lines = without_comments(source.read_text(errors="replace")).splitlines()
            for number, line in enumerate(lines, 1):
                found = re.match(r'\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)', line)
                if not found:
                    continue
                own, foreign = found.groups()
                wrong = None
                if folder == "src":
                    wrong = own_include(path, own) if own else foreign_include(path, foreign)
                elif foreign:
                    wrong = test_include(path, foreign)
                if wrong:
                    reports.append(f"{folder}/{path}:{number}: {wrong}")
    return reports


EXAMPLES = [
    (
        "what is allowed passes",
        {
            "src/runtime/Text.cpp": '#include "runtime/Text.h"\n#include <string>\n',
            "src/platform/files/Copy.cpp": "#include <filesystem>\n#include <sys/stat.h>\n#include <fcntl.h>\n",
            "src/platform/qt/toolkit/View.h": '#include "platform/toolkit/Control.h"\n#include <QWidget>\n',
            "src/platform/toolkit/Control.cpp": '#include "platform/qt/toolkit/View.h"\n',
            "src/platform/jpeg/Decoder.cpp": "#include <cstdio>\n#include <jpeglib.h>\n",
            "src/browser/frmMain.cpp": '#include "viewer/ZoomAndPan.h"\n#include "store/Album.h"\n',
            "src/startup/Program.cpp": '#include "browser/frmMain.h"\n',
            "src/main.cpp": '#include "startup/Program.h"\n// #include <QApplication>\n',
            "tests/support/Robot.cpp": "#include <QMouseEvent>\n#include <gtest/gtest.h>\n",
        },
        [],
    ),
    ("an include of a higher level", {"src/store/Log.cpp": '#include "browser/frmMain.h"\n'}, ["Log.cpp:1"]),
    ("platform on store", {"src/platform/files/A.h": '\n#include "store/Album.h"\n'}, ["A.h:2"]),
    ("a dialog on the start-up", {"src/check/A.cpp": '#include "startup/Program.h"\n'}, ["A.cpp:1"]),
    ("an include that names no folder", {"src/store/A.cpp": '#include "Log.h"\n'}, ["names no folder"]),
    ("a folder outside the levels", {"src/helpers/A.cpp": "\n"}, ["stands in no level"]),
    ("a library's header in a subsystem", {"src/viewer/A.cpp": "#include <QImage>\n"}, ["<QImage>"]),
    ("a library's header in a room of platform", {"src/platform/toolkit/A.h": "#include <QWidget>\n"}, ["<QWidget>"]),
    ("one library's header in another's folder", {"src/platform/qt/A.cpp": "#include <jpeglib.h>\n"}, ["<jpeglib.h>"]),
    ("a film library's header", {"src/platform/media/A.cpp": "#include <mpv/client.h>\n"}, ["<mpv/client.h>"]),
    ("the inside of platform from above", {"src/viewer/A.cpp": '#include "platform/qt/a/B.h"\n'}, ["behind platform/"]),
    (
        "a public header that shows a library",
        {"src/platform/toolkit/A.h": '#include "platform/qt/toolkit/View.h"\n'},
        ["names no library"],
    ),
    ("the file system outside platform/files", {"src/store/A.cpp": "#include <filesystem>\n"}, ["<filesystem>"]),
    ("system calls above platform", {"src/check/A.cpp": "#include <sys/stat.h>\n"}, ["<sys/stat.h>"]),
    ("a library's header in a form's test", {"tests/check/A.cpp": "#include <QImage>\n"}, ["<QImage>"]),
]

if __name__ == "__main__":
    sys.exit(run(check, EXAMPLES))
