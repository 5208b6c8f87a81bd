# SPDX-License-Identifier: GPL-3.0-or-later

"""The files that the benchmarks work on, made on demand and kept: photographs out of two packages of Debian's
(lomiri-wallpapers-16.04, mate-backgrounds), and libraries that hold them."""

import concurrent.futures
import os
import shutil
import struct
import subprocess
import time
from collections.abc import Callable
from pathlib import Path

BACKGROUNDS = Path("/usr/share/backgrounds")
SOURCES = [
    "Bridge_by_Sander_Klootwijk.jpg",
    "Dragonfly_by_Bolly.jpg",
    "aitzgorri_by_Aitzol_Berasategi.jpg",
    "life_by_Aitzol_Berasategi.jpg",
    "mate/nature/Blinds.jpg",
    "mate/nature/RainDrops.jpg",
    "picosdeeuropa_by_Aitzol_Berasategi.jpg",
    "seeding_by_Clements_Engelhardt.jpg",
    "sunset_by_Aitzol_Berasategi.jpg",
    "mate/nature/TwoWings.jpg",
]
# How many photographs of a kind there are, how many of them are made, each with a cut, a size and colors of its
# own, while the others are copies, and the sizes that they come in; 8 megapixels in the mean.
KINDS = {
    8: (500, 20, [(2832, 2120), (3264, 2448), (2448, 3264), (3648, 2736), (3072, 2304), (3456, 2304), (2304, 3456)]),
    12: (48, 20, [(4000, 3000), (4256, 2832), (3000, 4000)]),
    24: (200, 7, [(6000, 4000), (4000, 6000)]),
}

MANY = 30_000
LARGE = 1_000
NAME_OF_MANY = "Photograph {:05}.jpg"
PLAIN_DATE = 1_000_000_000  # of photographs and thumbnails alike, so that none is out of date
ALL_PHOTOS = "  All Photos  .lst"
FOLDERS = ["Photos", "Photo_Info", "Photo_Thumbnails", "Photo_SlideGroups", "Photo_Audio", "Photo_Midi", "Help"]


def _make_photograph(target: Path, number: int, sizes: list[tuple[int, int]]) -> None:
    width, height = sizes[number % len(sizes)]
    source = BACKGROUNDS / SOURCES[number % len(SOURCES)]
    unfinished = target.with_suffix(".part")
    subprocess.run(
        ["convert", source, "-resize", f"{width}x{height}^", "-gravity", ["center", "east", "west"][number % 3],
         "-extent", f"{width}x{height}", "-modulate", f"100,{90 + number % 5 * 5},{98 + number % 4}",
         "-attenuate", "0.15", "+noise", "Gaussian", "-quality", "90", "-sampling-factor", "2x2",
         f"jpg:{unfinished}"],
        check=True, env=os.environ | {"MAGICK_THREAD_LIMIT": "1"})
    os.utime(unfinished, (PLAIN_DATE + number, PLAIN_DATE + number))
    unfinished.rename(target)


def photographs(data: Path, megapixels: int) -> list[Path]:
    count, distinct, sizes = KINDS[megapixels]
    folder = data / f"{megapixels} megapixels"
    folder.mkdir(parents=True, exist_ok=True)
    paths = [folder / f"Picture {number:03}.jpg" for number in range(count)]
    absent = [number for number in range(distinct) if not paths[number].exists()]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        list(pool.map(lambda number: _make_photograph(paths[number], number, sizes), absent))
    for number, path in enumerate(paths):
        if not path.exists():
            shutil.copy2(paths[number % distinct], path)
    return paths


def _write_info(library: Path, name: str) -> None:
    lines = [f"PhotoPath=\\Photos\\{name}", f"TITLE=Title of {name}", "PHOTOGRAPHER=Ann", "YEAR=1998",
             "PEOPLE=Ben, Clara", "PLACE=Rome", "EVENT=Wedding trip", "KEYWORDS=The first roll of film",
             "ImageWidth=2048", "ImageHeight=1536"]
    (library / "Photo_Info" / f"{name}.info").write_bytes("".join(line + "\r\n" for line in lines).encode("ascii"))


def write_list(library: Path, file_name: str, names: list[str]) -> None:
    text = "".join(name + "\r\n" for name in names)
    (library / "Photo_SlideGroups" / file_name).write_bytes(text.encode("ascii"))


def _new_library(library: Path) -> Path:
    """The folder under which it is put together, so that one that was broken off is begun again."""
    unfinished = library.with_name(library.name + ".part")
    shutil.rmtree(unfinished, ignore_errors=True)
    for folder in FOLDERS:
        (unfinished / folder).mkdir(parents=True)
    return unfinished


def library_of(data: Path, megapixels: int) -> Path:
    """A library with these photographs and one group of them all, without thumbnails."""
    library = data / f"library of {megapixels} megapixels"
    if library.exists():
        return library
    unfinished = _new_library(library)
    paths = photographs(data, megapixels)
    for path in paths:
        os.link(path, unfinished / "Photos" / path.name)
        _write_info(unfinished, path.name)
    write_list(unfinished, ALL_PHOTOS, [path.name for path in paths])
    unfinished.rename(library)
    return library


def library_of_peers(data: Path) -> Path:
    """500 photographs of 12 megapixels, whose order by name is that by date."""
    library = data / "library of 500 of 12 megapixels"
    if library.exists():
        return library
    unfinished = _new_library(library)
    paths = photographs(data, 12)
    names = [f"Picture {number:03}.jpg" for number in range(500)]
    for number, name in enumerate(names):
        path = unfinished / "Photos" / name
        shutil.copyfile(paths[number % len(paths)], path)
        os.utime(path, (PLAIN_DATE + number, PLAIN_DATE + number))
        _write_info(unfinished, name)
    write_list(unfinished, ALL_PHOTOS, names)
    unfinished.rename(library)
    return library


def library_of_p3(data: Path, profile: bytes) -> Path:
    """The photographs of 12 megapixels, each with this color profile."""
    library = data / "library of 12 megapixels of P3"
    if library.exists():
        return library
    unfinished = _new_library(library)
    segment = b"ICC_PROFILE\0\1\1" + profile
    paths = photographs(data, 12)
    for path in paths:
        photograph = path.read_bytes()
        (unfinished / "Photos" / path.name).write_bytes(
            photograph[:2] + b"\xff\xe2" + struct.pack(">H", len(segment) + 2) + segment + photograph[2:])
        _write_info(unfinished, path.name)
    write_list(unfinished, ALL_PHOTOS, [path.name for path in paths])
    unfinished.rename(library)
    return library


def library_of_a_clip(data: Path) -> Path:
    """Ten seconds of 1280 by 720 at 30 frames a second, with sound."""
    library = data / "library of a clip"
    if not library.is_dir():
        unfinished = _new_library(library)
        clip = unfinished / "Photos" / "clip.avi"
        subprocess.run(["ffmpeg", "-v", "error", "-f", "lavfi", "-i", "testsrc=s=1280x720:r=30:d=10", "-f", "lavfi",
                        "-i", "sine=440:d=10", "-c:v", "mpeg4", "-q:v", "3", "-c:a", "pcm_s16le", clip], check=True)
        _write_info(unfinished, clip.name)
        write_list(unfinished, ALL_PHOTOS, [clip.name])
        unfinished.rename(library)
    return library


def long_sound(data: Path) -> Path:
    """Ten seconds of a tone of 16 bits, and silence up to 4 GB that takes no room."""
    size, header = 4_000_000_000, 44
    path = data / "long.wav"
    with path.open("wb") as file:
        file.write(struct.pack("<4sI4s4sIHHIIHH4sI", b"RIFF", size - 8, b"WAVE", b"fmt ", 16, 1, 2, 44_100, 176_400, 4,
                               16, b"data", size - header))
        file.write((b"\1\x20" * 200 + b"\1\xe0" * 200) * 2205)
        file.truncate(size)
    return path


def empty_library(data: Path) -> Path:
    library = data / "empty library"
    if not library.exists():
        _new_library(library).rename(library)
    return library


def _tiny_bitmap() -> bytes:
    return b"BM" + struct.pack("<IIIIIIHHIIIIII", 58, 0, 54, 40, 1, 1, 1, 24, 0, 4, 0, 0, 0, 0) + b"\x40\x80\xc0\0"


def many_names() -> list[str]:
    return [NAME_OF_MANY.format(number) for number in range(1, MANY + 1)]


def library_of_many(data: Path) -> Path:
    """30,000 photographs that nothing opens, all in order, in three groups."""
    library = data / "library of many"
    if library.exists():
        return library
    unfinished = _new_library(library)
    names = many_names()
    for name in names:
        for folder in ["Photos", "Photo_Thumbnails"]:
            path = unfinished / folder / name
            path.write_bytes(_tiny_bitmap())
            os.utime(path, (PLAIN_DATE, PLAIN_DATE))
        _write_info(unfinished, name)
    write_list(unfinished, ALL_PHOTOS, names)
    write_list(unfinished, "Holidays.lst", names[::10])
    write_list(unfinished, "Garden.lst", names[5::100])
    unfinished.rename(library)
    return library


def library_in_groups(data: Path, count: int) -> Path:
    """So many photographs of a third of a megapixel, links to ten, all in the group of all, and 299 groups of 100."""
    library = data / f"library of {count} in 300 groups"
    if library.exists():
        return library
    unfinished = _new_library(library)
    originals = data / "small pictures"
    for folder, size in [("Photos", "640x480"), ("Photo_Thumbnails", "100x75")]:
        (originals / folder).mkdir(parents=True, exist_ok=True)
        for number, source in enumerate(SOURCES):
            subprocess.run(["convert", BACKGROUNDS / source, "-resize", f"{size}!", originals / folder / f"{number}.jpg"],
                           check=True)
    names = [NAME_OF_MANY.format(number) for number in range(1, count + 1)]
    for number, name in enumerate(names):
        for folder in ["Photos", "Photo_Thumbnails"]:
            os.link(originals / folder / f"{number % len(SOURCES)}.jpg", unfinished / folder / name)
        _write_info(unfinished, name)
    write_list(unfinished, ALL_PHOTOS, names)
    for group in range(1, 300):
        write_list(unfinished, f"Group {group:03}.lst", [names[(group * 101 + i * 7) % count] for i in range(100)])
    unfinished.rename(library)
    return library


def many_new_photographs(data: Path) -> Path:
    """30,000 photographs in a library that knows none of them."""
    library = data / "library of many new"
    if not library.exists():
        unfinished = _new_library(library)
        for name in many_names():
            (unfinished / "Photos" / name).write_bytes(_tiny_bitmap())
        unfinished.rename(library)
    forget_photographs(library)
    return library


def many_in_folders(data: Path) -> Path:
    """A tree of 30,000 photographs in 600 folders, on two levels."""
    tree = data / "tree of many"
    if not tree.exists():
        unfinished = tree.with_name(tree.name + ".part")
        shutil.rmtree(unfinished, ignore_errors=True)
        folders = [unfinished / f"Year {1970 + year}" / (f"Trip {trip:02}" if trip else "")
                   for year in range(20) for trip in range(30)]
        for number, name in enumerate(many_names()):
            folder = folders[number % len(folders)]
            folder.mkdir(parents=True, exist_ok=True)
            (folder / name).write_bytes(_tiny_bitmap())
        unfinished.rename(tree)
    return tree


def large_photographs(data: Path) -> Path:
    """A folder of 1,000 files of 3 MB, which nothing opens as pictures."""
    folder = data / "files of 3 MB"
    if not folder.exists():
        unfinished = folder.with_name(folder.name + ".part")
        shutil.rmtree(unfinished, ignore_errors=True)
        unfinished.mkdir()
        content = os.urandom(3_000_000)
        for number in range(1, LARGE + 1):
            path = unfinished / NAME_OF_MANY.format(number)
            path.write_bytes(content)
            os.utime(path, (PLAIN_DATE, PLAIN_DATE))
        unfinished.rename(folder)
    return folder


def library_of_large(data: Path) -> Path:
    """These files as one group of a library."""
    library = data / "library of files of 3 MB"
    if not library.exists():
        unfinished = _new_library(library)
        paths = sorted(large_photographs(data).iterdir())
        for path in paths:
            os.link(path, unfinished / "Photos" / path.name)
            _write_info(unfinished, path.name)
        write_list(unfinished, ALL_PHOTOS, [path.name for path in paths])
        unfinished.rename(library)
    return library


def fresh(data: Path, make: Callable[[Path], Path]) -> Path:
    """An empty place to write to. What was written before is emptied and set aside, and is on the disk, so that no
    figure waits for it."""
    place = data / "written to"
    if place.exists():
        for path in place.rglob("*"):
            if path.is_file() and not path.is_symlink():
                os.truncate(path, 0)
        _set_aside(data, place)
    make(place)
    os.sync()
    return place


def new_folder(place: Path) -> Path:
    place.mkdir()
    return place


def new_library(place: Path) -> Path:
    return _new_library(place).rename(place)


def forget_photographs(library: Path) -> None:
    for folder in ["Photo_Info", "Photo_SlideGroups"]:
        _set_aside(library.parent, library / folder)
        (library / folder).mkdir()


def _set_aside(data: Path, folder: Path) -> None:
    """Not deleted: a file system may be slow to make new files where others have just gone."""
    aside = data / "set aside"
    aside.mkdir(exist_ok=True)
    folder.rename(aside / f"{folder.name} {time.time_ns()}")


def clean_up(data: Path) -> None:
    for left in ["set aside", "written to"]:
        shutil.rmtree(data / left, ignore_errors=True)
