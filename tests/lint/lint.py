"""Fails on an include against the levels, a library's header outside its folder, a handler that nothing calls, an
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
# Where headers may be included; what stands behind platform/'s own headers nobody else sees.
HEADERS = {
    r"filesystem": "platform/files/",
    r"[a-z_]+": "",
    r"(dirent|dlfcn|errno|fcntl|limits|malloc|poll|pwd|signal|spawn|time|unistd|(sys|linux)/\w+)\.h": "platform/",
    r"Q\w+(/Q\w+)?": "platform/qt/",
    r"lcms2\.h": "platform/colour/",
    r"zlib\.h": "platform/qt/pictures/",
    r"j(peglib|error)\.h": "platform/jpeg/",
    r"mpv/\w+\.h": "platform/mpv/",
    r"(SDL2/)?SDL\w*\.h": "platform/sdl/",
}
BEHIND = re.compile(r"platform/(?!files/|pictures/|toolkit/|media/|system/)\w+/")
LONGEST = 600  # lines
MOST_TESTS = 0.33  # of the program


def check_includes(path: str, text: str) -> list[str]:
    def level(name: str) -> int:
        return next((i for i, folders in enumerate(LEVELS) if name.split("/")[0] in folders), -1)

    wrong = [] if level(path) >= 0 else [f"{path} stands in no level"]
    for own, foreign in re.findall(r'^#include (?:"([^"]+)"|<([^>]+)>)', text, re.M):
        rooms = (path.split("/")[0], own.split("/")[0])
        if own and not (0 <= level(own) < level(path) or rooms[0] == rooms[1] or rooms in PAIRS):
            wrong.append(f"{path}: {own} lies above or beside")
        if BEHIND.match(own) and not (path.startswith("platform/") and (path.endswith(".cpp") or BEHIND.match(path))):
            wrong.append(f"{path}: {own} belongs to what stands behind platform/")
        folder = next((folder for names, folder in HEADERS.items() if re.fullmatch(names, foreign)), "its library's")
        if foreign and not path.startswith(folder):
            wrong.append(f"{path}: {foreign} outside {folder}")
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
    files = [path for folder in ("src", "tests", "bench") for path in sorted((root / folder).rglob("*.[hc]*"))]
    texts = {path.relative_to(root).as_posix(): path.read_text() for path in files}
    reports = [f"{path} has more than {LONGEST} lines" for path, text in texts.items() if text.count("\n") > LONGEST]
    program = {path.removeprefix("src/"): text for path, text in texts.items() if path.startswith("src/")}
    assert program, f"there is no src/ in {root}"
    for path, text in program.items():
        reports += check_includes(path, text)
    reports += check_handlers(program)
    print("\n".join(reports))
    return 1 if reports else 0


if __name__ == "__main__":
    sys.exit(main())
