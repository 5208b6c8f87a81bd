# SPDX-License-Identifier: GPL-3.0-or-later

"""The package of a build, unpacked in a folder of its own, and its command: package.py BUILD"""

from __future__ import annotations

import subprocess
import sys
import tempfile
from pathlib import Path
from urllib.parse import quote

from harness import Home, equal
from virtual_desktop import Program, VirtualDesktop, until

ROOT = Path(__file__).resolve().parents[2]


def unpacked(build: Path, folder: Path) -> Path:
    """What the package installs."""
    made = subprocess.check_output([ROOT / "scripts/make-deb", build, folder], text=True).strip()
    subprocess.run(["dpkg-deb", "--extract", made, folder / "unpacked"], check=True)
    return folder / "unpacked" / "usr"


def works(desktop: VirtualDesktop, home: Home, program: Program, library: Path) -> None:
    """The window is that of the library, as the address of its help tells."""
    window = program.main_window()
    home.page.unlink(missing_ok=True)
    until("help", home.page.exists, lambda: desktop.type(window, "F1"))
    equal("the page of help", home.page.read_text(), "file://" + quote(f"{library}/help/index.html"))
    equal("whether it stands there", (library / "help" / "index.html").is_file(), True)
    equal("exit code", program.exit(), 0)


def main(build: Path, folder: Path, desktop: VirtualDesktop) -> None:
    launcher = unpacked(build, folder) / "bin" / "trovarium"
    home = Home(folder / "home")
    library = home.folder / "Pictures" / "Trovarium"
    with home.start(desktop, launcher) as program:
        program.main_window()
        program.close_notice()
        works(desktop, home, program, library)

    moved = library.rename(home.folder / "An older album")
    theirs = folder / "trovarium"
    theirs.write_text("theirs")
    for arguments in ([], [folder]):
        with home.start(desktop, launcher, *arguments) as program:
            told = until("a window that tells of it", lambda: next(iter(desktop.windows()), None))
            desktop.dismiss(told, "Return")
            equal("exit code", program.wait(), 1)
    equal("an empty library in its place", library.exists(), False)
    equal("a user's file", theirs.read_text(), "theirs")

    for link in ("trovarium", "help"):
        (moved / link).unlink()
        (moved / link).symlink_to("/nowhere/" + link)
    for arguments in ([moved], []):
        with home.start(desktop, launcher, *arguments) as program:
            works(desktop, home, program, moved)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as own, VirtualDesktop() as screen:
        main(Path(sys.argv[1]), Path(own), screen)
