"""A new user's first half hour: photographs and clips come in, are sorted, described, heard, found and taken out.

    half_hour.py PROGRAM
"""

from __future__ import annotations

import os
import subprocess
from pathlib import Path

from hands_on import NAMES as FIRST_NAMES
from hands_on import Session
from harness import ALL_PHOTOS, YELLOW, Library, equal, make_photograph, scenario
from virtual_desktop import VirtualDesktop, Window, until

NAMES = [f"Photo {number:02}.jpg" for number in range(40)]
CLIPS = ["Surf.mpg", "Sea.avi"]  # in the order of a scan
SONG = b"MThd\0\0\0\6\0\0\0\1\0\x60MTrk\0\0\0\x10\0\xC0\x13\0\x90\x45\x7F\x8F\0\x80\x45\0\0\xFF\x2F\0"
# Pixels of the dialogs.
COPIES, AUTO_SCAN, LAST_ROW = (36, 520), (198, 403), (500, 296)
FIRST_FILE, ADD, FIRST_ROW, ROW_HEIGHT = (60, 230), (388, 249), (480, 54), 14
GROUP_NAME = (184, 350)


def clip(target: Path, *kind: str) -> None:
    sources = [part for source in ("testsrc=s=160x120:d=2", "sine=440:d=2") for part in ("-f", "lavfi", "-i", source)]
    subprocess.run(["ffmpeg", "-v", "error", *sources, *kind, target], check=True)


def prepare(desktop: VirtualDesktop, library: Library) -> Path:
    """What the user has: pictures and sounds in one folder, and a way to read help."""
    folder = library.root.parent / "home" / "Pictures"
    (folder / "out").mkdir(parents=True)
    for number, name in enumerate(NAMES):
        make_photograph(folder / name, number, 400, 400, 1_000_000_000)
    clip(folder / CLIPS[0], "-c:v", "mpeg1video", "-c:a", "mp2")
    clip(folder / CLIPS[1], "-c:v", "mpeg4", "-c:a", "pcm_s16le")
    subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", "sine=880:d=1", folder / "tone.wav"], check=True)
    (folder / "song.mid").write_bytes(SONG)
    opener = folder.parent / "bin" / "xdg-open"
    opener.parent.mkdir()
    opener.write_text('#!/bin/sh\nprintf %s "$1" >"${0%/*}/new" && mv "${0%/*}/new" "${0%/*}/opened"\n')
    opener.chmod(0o700)
    (library.root / "help").symlink_to(Path(__file__).resolve().parents[2] / "help")
    places = {"Import": folder, "Sound": folder, "Export": folder / "out"}
    settings = folder.parent / "config" / "OmbrelaneWorks" / "settings.txt"
    settings.parent.mkdir(parents=True)
    for section, place in places.items():
        path = "/" + str(place)[1:].replace("/", "\\")
        with settings.open("a") as file:
            file.write(f"[SOFTWARE\\OmbrelaneWorks\\Trovarium\\{section}]\nLastPath={path}\n")
    desktop.environment["PATH"] = f"{opener.parent}:{os.environ['PATH']}"
    desktop.environment.update(SDL_AUDIODRIVER="disk", SDL_DISKAUDIOFILE=str(folder.parent / "tap"))
    return folder


class HalfHour(Session):
    def dialog(self, menu: str, entry: str, title: str) -> Window:
        self.desktop.choose(self.window.window, menu, entry)
        found = until(title, lambda: next((w for w in self.desktop.windows() if w.name == title), None))
        self.desktop.activate(found)
        return found

    def has_ink(self, dialog: Window, x: int, y: int) -> bool:
        """Whether a text crosses the line to the right of this place."""
        picture = self.desktop.picture(dialog)
        return picture is not None and any(max(picture.at(x + step, y)) < 100 for step in range(60))

    def import_all(self) -> None:
        dialog = self.dialog("f", "i", "Import Media")
        self.desktop.mouse(dialog, *COPIES, "click", "1")
        self.desktop.mouse(dialog, *AUTO_SCAN, "click", "1")
        until("a full list", lambda: self.has_ink(dialog, *LAST_ROW))
        self.desktop.type(dialog, "alt+i")
        until("42 thumbnails", lambda: len(list(self.library.thumbnails.iterdir())) == len(NAMES + CLIPS))
        whole = "".join(f"{name}\r\n" for name in NAMES + CLIPS).encode()
        until("all of them in one list", lambda: self.library.group(ALL_PHOTOS) == whole)
        self.desktop.close(dialog)
        self.window.shows_page("the first sixteen", list(range(16)))

    def make_groups(self) -> None:
        self.answer("f", "c", "ctrl+a", "A", "l", "p", "s", "Return")
        self.answer("f", "c", "ctrl+a", "T", "r", "i", "p", "Return")
        self.holds("Trip", [])
        window = self.window
        self.open_group(0, list(range(16)))
        self.select(0)
        mark = window.cell(4, window.MARK_BEHIND)
        way = [(window.cell(4, window.RIGHT_HALF), {mark: YELLOW}), (window.group_row(2), {mark: None})]
        window.drag(window.cell(1), *way, held="ctrl")
        self.holds("Trip", [0, 1])

    def link(self, menu: str, title: str, row: int, target: Path, source: Path) -> None:
        dialog = self.dialog(menu, "a", title)
        for place in (FIRST_FILE, (FIRST_ROW[0], FIRST_ROW[1] + row * ROW_HEIGHT), ADD):
            self.desktop.mouse(dialog, *place, "click", "1")
        self.desktop.type(dialog, "alt+m")
        until(str(target), lambda: target.exists() and target.read_bytes() == source.read_bytes())
        self.desktop.close(dialog)

    def watch(self, tap: Path) -> None:
        self.open_group(2, [0, 1])
        dialog = self.dialog("v", "s", "Start Slideshow")
        self.desktop.type(dialog, "0", "period", "5", "Tab", "space", "Return")
        until("sound in the tap", lambda: tap.exists() and any(tap.read_bytes()))
        self.window.shows_page("the end of the show", [0, 1])

    def find(self) -> None:
        dialog = self.dialog("e", "f", "Create Album Groups")
        self.desktop.type(dialog, "Tab", "a", "b", "e", "n", "d", "Return")
        self.desktop.mouse(dialog, *GROUP_NAME, "click", "1")
        self.desktop.type(dialog, "F", "u", "n", "d", "alt+a")
        self.holds("Fund", [1])
        self.desktop.close(dialog)

    def take_out(self, out: Path) -> None:
        self.open_group(2, [1])
        self.desktop.type(self.window.window, "ctrl+a")
        dialog = self.dialog("f", "e", "Export Media")
        self.desktop.type(dialog, "alt+x")
        copy, original = out / NAMES[1], self.library.photos / NAMES[1]
        until("the copy", lambda: copy.exists() and copy.read_bytes() == original.read_bytes())
        self.desktop.close(dialog)


def play(desktop: VirtualDesktop, library: Library) -> None:
    equal("the names that the session knows", NAMES[: len(FIRST_NAMES)], FIRST_NAMES)
    folder = prepare(desktop, library)
    with library.start(desktop) as program:
        program.main_window()
        program.close_notice()
        user = HalfHour(desktop, library, program)
        user.import_all()
        user.make_groups()
        user.edit_and_full_screen()
        clips, songs = library.root / "Photo_Audio", library.root / "Photo_Midi"
        user.open_group(2, [0, 1])
        user.select(0)
        user.link("e", "Import-Link Wav Clip to Photo", 0, clips / f"{NAMES[0]}.wav", folder / "tone.wav")
        user.link("f", "Import-Link Midi Song to Group", 2, songs / "Trip.mid", folder / "song.mid")
        user.watch(folder.parent / "tap")
        user.find()
        user.take_out(folder / "out")
        user.answer("e", "p", "alt+y")
        until("the photograph set aside", lambda: (library.photos / "Removed" / NAMES[1]).exists())
        opened = folder.parent / "bin" / "opened"
        until("help", opened.exists, lambda: desktop.choose(user.window.window, "h", "c"))
        equal("the page of help", opened.read_text().endswith("/Album/help/index.html"), True)
        equal("exit code of Exit on the File menu", program.exit(), 0)
    # A press on the row of a group that has become shorter is logged.
    log = (library.root / "Trovarium.Log").read_text().splitlines()[1:]
    equal("the log", [line for line in log if "'SetGroupListSelect'" not in line], [])


if __name__ == "__main__":
    scenario(play)
