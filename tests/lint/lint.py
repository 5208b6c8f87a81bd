# SPDX-License-Identifier: GPL-3.0-or-later

"""Fails on an include against the levels, a library's header outside its files, a handler that nothing calls, an
event that is wired twice, and a file that is too long.

    lint.py ROOT [share]

With `share` fails when the tests have grown beyond their share.
"""

import re
import sys
from pathlib import Path

# Each may include its own folder and the levels before it.
DIALOGS = {"import", "search", "export", "links", "about"}
LEVELS = [{"runtime"}, {"platform"}, {"store"}, {"check"}, {"browser", "viewer"}, DIALOGS, {"startup"}, {"main.cpp"}]
PAIRS = {("browser", "viewer"), ("viewer", "browser"), ("import", "search")}
# Which files may include a header of the system or of a library.
SYSTEM = {
    r"filesystem": r"platform/(files|system)/.*",
    r"[a-z_]+": r".*",
    r"(dirent|dlfcn|errno|fcntl|limits|malloc|mntent|poll|pwd|signal|spawn|time|unistd|(sys|linux)/\w+)\.h": r"platform/.*",
}
LIBRARIES = {
    r"Q\w+(/Q\w+)?": r"platform/(toolkit/(.*\.cpp|(DesktopState|DrawnWidget|FormWindow|QtValues|RowList|SessionEnd|SharpThumbnail|Style)\.h)"
    r"|media/(Mpv\w+\.cpp|FilmSurface\.h)"
    r"|pictures/(.*\.cpp|wmf/.*|(Bitmap|Decode|Heif|Jpeg|Picture|Thumbnail)\w+\.h|Reduction\.h)|system/(IdleInhibition|Shell)\.cpp)",
    r"lcms2\.h": r"platform/pictures/ColorConversion\.cpp",
    r"turbojpeg\.h": r"platform/pictures/JpegDecoder\.cpp",
    r"libheif/heif\.h": r"platform/pictures/HeifLibrary\.h",
    r"jxl/\w+\.h": r"platform/pictures/JpegXlLibrary\.h",
    r"mpv/\w+\.h": r"platform/media/MpvLibrary\.h",
    r"(SDL2/)?SDL\w*\.h": r"platform/media/SdlLibrary\.h",
}
LONGEST = 600  # lines
MOST_TESTS = 0.33  # of the program


def includes(text: str) -> list[tuple[str, str]]:
    """Each as our own header or that of the system or a library; the other of the two is empty."""
    return re.findall(r'^#include (?:"([^"]+)"|<([^>]+)>)', text, re.M)


def without_libraries(program: dict[str, str]) -> set[str]:
    """The headers of platform/ that include no library, nor does any header that they include."""

    def is_plain(own: str, foreign: str) -> bool:
        return own in plain if own.startswith("platform/") else not any(re.fullmatch(key, foreign) for key in LIBRARIES)

    plain = {path for path in program if path.startswith("platform/") and path.endswith(".h")}
    while wrong := {path for path in plain if not all(is_plain(*names) for names in includes(program[path]))}:
        plain -= wrong
    return plain


def check_includes(path: str, text: str, plain: set[str]) -> list[str]:
    def level(name: str) -> int:
        return next((i for i, folders in enumerate(LEVELS) if name.split("/")[0] in folders), -1)

    wrong = [] if level(path) >= 0 else [f"{path} stands in no level"]
    for own, foreign in includes(text):
        rooms = (path.split("/")[0], own.split("/")[0])
        if own and not (0 <= level(own) < level(path) or rooms[0] == rooms[1] or rooms in PAIRS):
            wrong.append(f"{path}: {own} lies above or beside")
        if rooms[0] != "platform" and rooms[1] == "platform" and own not in plain:
            wrong.append(f"{path}: {own} includes a library")
        files = next((files for key, files in (SYSTEM | LIBRARIES).items() if re.fullmatch(key, foreign)), "")
        if foreign and not re.fullmatch(files, path):
            wrong.append(f"{path}: {foreign} is included in other files: {files}")
    return wrong


# on(source.Event, this, &Owner::handler) or on(array, &Type::Event, this, &Owner::handler)
WIRING = re.compile(r"\bon\(\s*([\w.]+),\s*(?:&(?:\w+::)*(\w+),\s*)?this,\s*&(\w+)::(\w+)\);")


def check_handlers(sources: dict[str, str]) -> list[str]:
    code = re.sub(r"//[^\n]*|/\*.*?\*/", "", "\n".join(sources.values()), flags=re.S)
    found = re.findall(r"^class (\w+)(?: final)?(?: : ([^{;]*?))?\s*\{(.*?)^\};", code, re.M | re.S)
    bases = {name: re.findall(r"\w+(?=,|$)", listed) for name, listed, _ in found}
    bodies = {name: body for name, _, body in found}
    controls = {form: {"Form": "Form"} for form in bodies if "Form" in bases[form]}
    for form in controls:
        for kind, name in re.findall(r"^    (?:ControlArray<)?(\w+)>? (\w+)[{;]", bodies[form], re.M):
            controls[form][name] = kind

    def events(kind: str) -> set[str]:
        return set(re.findall(r"Event<.*?> (\w+)\{", bodies.get(kind, ""))).union(*map(events, bases.get(kind, [])))

    def forms_of(owner: str) -> set[str]:
        body = "".join(bodies.get(name, "") for name in (owner, *bases[owner]))
        return controls.keys() & ({owner} & controls.keys() or re.findall(r"\b(frm\w+)[&*] m_form\b", body))

    wrong, first = [], {}
    for source, array, owner, handler in WIRING.findall(code):
        control, event = ["Form", *re.sub(r"^(m_)?form\.", "", source).split("."), *filter(None, [array])][-2:]
        for form in forms_of(owner):
            if first.setdefault((form, control, event), (owner, handler)) != (owner, handler):
                wrong.append(f"{form}: {control}.{event} is wired twice")
    for owner, body in bodies.items():
        for handler, control, name in re.findall(r"\bvoid ((\w+)_([A-Z]\w*))\(", body):
            event = {"Timer": "Tick"}.get(name, name)  # the event's own name is taken by the timer's type
            for form in forms_of(owner):
                raised = event in events(controls[form].get(control, ""))
                if raised and first.get((form, control, event)) != (owner, handler):
                    wrong.append(f"{owner}::{handler} is wired to nothing")
    return wrong


def share(root: Path) -> int:
    """Prints how much there is of the tests against the program, in lines that aren't empty."""
    tests, program = (
        sum(bool(line.strip()) for file in (root / folder).rglob("*") if file.is_file() for line in file.open("rb"))
        for folder in ("tests", "src")
    )
    print(f"tests {tests} lines, src {program}: {tests / program:.1%}")
    return 1 if tests > MOST_TESTS * program else 0


def main() -> int:
    root = Path(sys.argv[1])
    if "share" in sys.argv[2:]:
        return share(root)
    files = [
        path
        for folder in ("src", "tests", "bench")
        for path in sorted((root / folder).rglob("*"))
        if path.suffix in {".h", ".cpp"}
    ]
    texts = {path.relative_to(root).as_posix(): path.read_text() for path in files}
    reports = [f"{path} has more than {LONGEST} lines" for path, text in texts.items() if text.count("\n") > LONGEST]
    program = {path.removeprefix("src/"): text for path, text in texts.items() if path.startswith("src/")}
    assert program, f"there is no src/ in {root}"
    plain = without_libraries(program)
    for path, text in program.items():
        reports += check_includes(path, text, plain)
    reports += check_handlers(program)
    print("\n".join(reports))
    return 1 if reports else 0


if __name__ == "__main__":
    sys.exit(main())
