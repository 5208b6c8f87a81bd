"""Fails on a handler that nothing calls: a member x_Event whose control x stands on the form and raises
that event, with no on(...) that wires the two. Fails, too, when one event is wired twice, since the second
wiring silently takes the place of the first.

    handlers.py ROOT | --self-test
"""

from __future__ import annotations

import re
import sys
from dataclasses import dataclass, field
from pathlib import Path
from typing import Iterator

from lint import run, sources, without_comments

# The handlers of a timer bear the event's name, which the timer's own type has taken.
MEMBER_OF_EVENT = {"Timer": "Tick"}


@dataclass
class Class:
    name: str
    path: str
    bases: list[str]
    events: set[str] = field(default_factory=set)
    controls: dict[str, str] = field(default_factory=dict)  # a control's name and its type
    handlers: dict[str, int] = field(default_factory=dict)  # a member function's name and its line
    forms: set[str] = field(default_factory=set)  # the form classes that it mentions


def closing(text: str, start: int) -> int:
    """Behind the bracket that closes the one at `start`."""
    depth = 0
    for index in range(start, len(text)):
        if text[index] in "({[":
            depth += 1
        elif text[index] in ")}]":
            depth -= 1
            if depth == 0:
                return index + 1
    return len(text)


def classes_in(path: str, text: str) -> Iterator[Class]:
    pattern = r"\b(?:class|struct)\s+(\w+)(?:\s+final)?\s*(?::([^{};]*))?\{"
    for match in re.finditer(pattern, text):
        start = match.end() - 1
        body = text[start : closing(text, start)]
        found = Class(match.group(1), path, re.findall(r"(\w+)\s*(?:,|$)", (match.group(2) or "").strip()))
        found.events = set(re.findall(r"\bEvent<[^;{]*>\s+(\w+)\s*[{;]", body))
        for array, plain, name in re.findall(r"\b(?:ControlArray<(\w+)>|(\w+))\s+(\w+)\s*[{;]", body):
            found.controls[name] = array or plain
        for member in re.finditer(r"\bvoid\s+(\w+_\w+)\s*\(", body):
            found.handlers[member.group(1)] = text.count("\n", 0, start + member.start()) + 1
        found.forms = set(re.findall(r"\b(frm\w+)\s*&", body))
        yield found


def split_arguments(text: str) -> list[str]:
    """The arguments between the brackets of a call, cut at the commas outside further brackets."""
    parts, depth, last = [], 0, 0
    for index, letter in enumerate(text):
        if letter in "({[":
            depth += 1
        elif letter in ")}]":
            depth -= 1
        elif letter == "," and depth == 0:
            parts.append(text[last:index].strip())
            last = index + 1
    return parts + [text[last:].strip()]


@dataclass(frozen=True)
class Wiring:
    control: str  # "Form" for the form's own events
    event: str
    owner: str  # the class of the handler
    handler: str
    place: str


def wirings_in(path: str, text: str) -> Iterator[Wiring]:
    for match in re.finditer(r"\bon\s*(?=\()", text):
        arguments = split_arguments(text[match.end() + 1 : closing(text, match.end()) - 1])
        handler = re.fullmatch(r"&\s*(?:\w+::)*?(\w+)::(\w+)", arguments[-1])
        if not handler:
            continue
        place = f"{path}:{text.count(chr(10), 0, match.start()) + 1}"
        source = re.sub(r"\(\w*\)|\bthis\s*->|\s", "", arguments[0]).replace("->", ".").split(".")
        if len(arguments) == 4:
            member = re.fullmatch(r"&\s*(?:\w+::)*(\w+)", arguments[1])
            if member:
                yield Wiring(source[-1], member.group(1), *handler.groups(), place)
        elif len(arguments) == 3:
            control = "Form" if len(source) == 1 or source[-2] in ("form", "m_form") else source[-2]
            yield Wiring(control, source[-1], *handler.groups(), place)


def check(root: Path) -> list[str]:
    texts = {
        path.relative_to(root).as_posix(): without_comments(path.read_text(errors="replace"))
        for path in sources(root, "src")
    }
    classes = {found.name: found for path, text in texts.items() for found in classes_in(path, text)}

    def events_of(name: str) -> set[str]:
        if name not in classes:
            return set()
        return classes[name].events.union(*(events_of(base) for base in classes[name].bases))

    def is_form(name: str) -> bool:
        return name in classes and ("Form" in classes[name].bases or any(map(is_form, classes[name].bases)))

    forms = {name for name in classes if is_form(name)}

    def forms_behind(owner: Class) -> set[str]:
        """The forms whose controls this class handles; any form's when it mentions none."""
        return {owner.name} if owner.name in forms else (owner.forms & forms) or forms

    wirings = [wiring for path, text in texts.items() for wiring in wirings_in(path, text)]
    wired = {(wiring.owner, wiring.handler, wiring.control, wiring.event) for wiring in wirings}

    reports = []
    for owner in classes.values():
        for handler, line in owner.handlers.items():
            control, event = handler.rsplit("_", 1)
            event = MEMBER_OF_EVENT.get(event, event)
            types = {classes[form].controls.get(control, "") for form in forms_behind(owner)}
            if control == "Form" and owner.name in forms:
                types = {"Form"}
            if any(event in events_of(kind) for kind in types) and (owner.name, handler, control, event) not in wired:
                reports.append(f"{owner.path}:{line}: {owner.name}::{handler} is wired to nothing")

    first: dict[tuple[str, str, str], Wiring] = {}
    for wiring in wirings:
        owner = classes.get(wiring.owner)
        for form in forms_behind(owner) if owner else ():
            if wiring.control != "Form" and wiring.control not in classes[form].controls:
                continue
            earlier = first.setdefault((form, wiring.control, wiring.event), wiring)
            if earlier is not wiring:
                reports.append(f"{wiring.place}: {wiring.control}.{wiring.event} is wired at {earlier.place} already")
    return sorted(set(reports))


TOOLKIT = {
    "src/platform/toolkit/Button.h": "class Button : public Control {\n    Event<> Click{this};\n};\n",
    "src/platform/toolkit/Image.h": "class Image : public Control {\n    Event<> Click{this};\n"
    "    Event<int, int, float, float> MouseDown{this};\n};\n",
    "src/platform/toolkit/ScrollBar.h": "class ScrollBar : public Control {\n    Event<> Change{this};\n};\n"
    "class VScroll : public ScrollBar {\n};\n",
    "src/platform/toolkit/Timer.h": "class Timer : public Component {\n    trovarium::Event<> Tick{this};\n};\n",
    "src/platform/toolkit/Form.h": "class Form : public Component, public Container {\n    Event<> Load{this};\n};\n",
    "src/browser/frmMain.h": "class frmMain : public Form {\npublic:\n    Button cmdExit{this, {.Name = \"cmdExit\"}};\n"
    "    ControlArray<Image> imgThumbnail;\n    VScroll VScroll1{&pctWindow, {.Left = 1}};\n"
    "    Timer tmrInfoBox{this, {}};\n};\n",
}


def concern(members: str, body: str) -> dict[str, str]:
    return {
        **TOOLKIT,
        "src/browser/Pages.h": f"class Pages {{\npublic:\n    explicit Pages(frmMain& form);\n{members}}};\n",
        "src/browser/Pages.cpp": f"Pages::Pages(frmMain& form)\n{{\n{body}}}\n",
    }


ALL_MEMBERS = """    void cmdExit_Click();
    void imgThumbnail_MouseDown(int Index, int Button);
    void VScroll1_Change();
    void tmrInfoBox_Timer();
    void cmdNowhere_Click();
    void cmdExit_MouseDown();
"""
ALL_WIRINGS = """    on(form.cmdExit.Click, this, &Pages::cmdExit_Click);
    on(form.imgThumbnail, &Image::MouseDown, this,
        &Pages::imgThumbnail_MouseDown);
    on(m_form.VScroll1.Change, this, &Pages::VScroll1_Change);
    on(form.tmrInfoBox.Tick, this, &Pages::tmrInfoBox_Timer);
"""


def without(line_with: str) -> str:
    text = ALL_WIRINGS.replace("this,\n        ", "this, ")
    return "".join(line for line in text.splitlines(keepends=True) if line_with not in line)


EXAMPLES = [
    (
        "wired handlers, one without a control and one without such an event pass",
        concern(ALL_MEMBERS, ALL_WIRINGS),
        [],
    ),
    ("a button's handler", concern(ALL_MEMBERS, without("cmdExit")), ["Pages.h:4: Pages::cmdExit_Click"]),
    ("an array's handler", concern(ALL_MEMBERS, without("imgThumbnail")), ["Pages::imgThumbnail_MouseDown"]),
    ("an event from a base class", concern(ALL_MEMBERS, without("VScroll1")), ["Pages::VScroll1_Change"]),
    ("a timer's handler", concern(ALL_MEMBERS, without("tmrInfoBox")), ["Pages::tmrInfoBox_Timer"]),
    (
        "a wiring in a comment only",
        concern("    void cmdExit_Click();\n", "    // on(form.cmdExit.Click, this, &Pages::cmdExit_Click);\n"),
        ["Pages::cmdExit_Click"],
    ),
    (
        "a handler wired to another event",
        concern(
            "    void imgThumbnail_MouseDown(int Index);\n",
            "    on(form.imgThumbnail, &Image::Click, this, &Pages::imgThumbnail_MouseDown);\n",
        ),
        ["Pages::imgThumbnail_MouseDown"],
    ),
    (
        "a form's own event",
        {**TOOLKIT, "src/check/frmSplash.h": "class frmSplash : public Form {\n    void Form_Load();\n};\n"},
        ["frmSplash::Form_Load"],
    ),
    (
        "a form's own event, wired",
        {
            **TOOLKIT,
            "src/check/frmSplash.h": "class frmSplash : public Form {\n    void Form_Load();\n};\n",
            "src/check/frmSplash.cpp": "frmSplash::frmSplash()\n{\n    on(Load, this, &frmSplash::Form_Load);\n}\n",
        },
        [],
    ),
    (
        "an event that is wired twice",
        concern(
            "    void cmdExit_Click();\n    void leave();\n",
            "    on(form.cmdExit.Click, this, &Pages::leave);\n"
            "    on(form.cmdExit.Click, this, &Pages::cmdExit_Click);\n",
        ),
        ["cmdExit.Click is wired at src/browser/Pages.cpp:3 already"],
    ),
]

if __name__ == "__main__":
    sys.exit(run(check, EXAMPLES))
