#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later

"""Writes the music of the demonstration library: a standard MIDI file of format 0.

    scripts/demo_music.py FILE.mid TUNE[:INSTRUMENT] ...      the tunes one after the other

The tunes are "greensleeves", which is traditional, and "waltz", made for this demonstration.
"""

from __future__ import annotations

import struct
import sys
from pathlib import Path
from typing import NamedTuple

TICKS = 240  # to a quarter note
MELODY, HARP = 0, 1  # channels
HARP_INSTRUMENT = 46  # these and the others as General MIDI numbers them, from 0
SEMITONES = {"C": 0, "D": 2, "E": 4, "F": 5, "G": 7, "A": 9, "B": 11}


class Tune(NamedTuple):
    beat: int  # ticks
    microseconds: int  # to a quarter note
    melody: str  # notes: a name and its octave, then the length in beats
    chords: str  # each for three beats
    pickup: int = 0  # beats of the melody before the first chord


WALTZ = Tune(
    beat=TICKS,
    microseconds=430_000,
    melody="""
        B4:2 D5:1  A4:2 B4:1  G4:2 A4:1       B4:3  C5:2 E5:1  B4:2 D5:1       A4:1 B4:1 C5:1  A4:3
        B4:2 D5:1  A4:2 B4:1  G4:2 A4:1       B4:3  C5:2 E5:1  D5:1 B4:1 G4:1  A4:2 F#4:1      G4:3
        E5:2 D5:1  C5:2 B4:1  A4:1 B4:1 C5:1  B4:3  E5:2 D5:1  C5:2 A4:1       B4:1 A4:1 E4:1  F#4:3
        B4:2 D5:1  A4:2 B4:1  G4:2 A4:1       B4:3  C5:2 E5:1  D5:1 B4:1 G4:1  A4:2 F#4:1      G4:3""",
    chords="G D Em Bm C G Am D  G D Em Bm C G D G  C Am D G C Am Em D  G D Em Bm C G D G",
)

GREENSLEEVES = Tune(
    beat=TICKS // 2,
    microseconds=480_000,
    melody="""
        A4:1
        C5:2 D5:1 E5:1.5 F#5:.5 E5:1  D5:2 B4:1 G4:1.5 A4:.5 B4:1
        C5:2 A4:1 A4:1.5 G#4:.5 A4:1  B4:2 G#4:1 E4:2 A4:1
        C5:2 D5:1 E5:1.5 F#5:.5 E5:1  D5:2 B4:1 G4:1.5 A4:.5 B4:1
        C5:1.5 B4:.5 A4:1 G#4:1.5 F#4:.5 G#4:1  A4:6
        G5:3 G5:1.5 F#5:.5 E5:1  D5:2 B4:1 G4:1.5 A4:.5 B4:1
        C5:2 A4:1 A4:1.5 G#4:.5 A4:1  B4:2 G#4:1 E4:3
        G5:3 G5:1.5 F#5:.5 E5:1  D5:2 B4:1 G4:1.5 A4:.5 B4:1
        C5:1.5 B4:.5 A4:1 G#4:1.5 F#4:.5 G#4:1  A4:6""",
    chords="Am Am G G Am Am E E  Am Am G G Am E Am Am  C C G G Am Am E E  C C G G Am E Am Am",
    pickup=1,
)

TUNES = {"waltz": WALTZ, "greensleeves": GREENSLEEVES}


class Score:
    """Events of one track, at ticks from its beginning."""

    def __init__(self) -> None:
        self.end = 0
        self._events: list[tuple[int, int, bytes]] = []

    def add(self, tick: int, event: bytes, rank: int = 0) -> None:
        self._events.append((tick, rank, event))
        self.end = max(self.end, tick)

    def note(self, channel: int, tick: int, length: int, pitch: int, velocity: int) -> None:
        # At the same tick a note ends before it is played again.
        self.add(tick + length, bytes([0x80 | channel, pitch, 0]))
        self.add(tick, bytes([0x90 | channel, pitch, velocity]), rank=1)

    def instrument(self, channel: int, tick: int, number: int) -> None:
        self.add(tick, bytes([0xC0 | channel, number]))

    def track(self) -> bytes:
        data, last = b"", 0
        for tick, _, event in sorted(self._events):
            data += variable_length(tick - last) + event
            last = tick
        return data + b"\0\xff\x2f\0"


def variable_length(number: int) -> bytes:
    digits = [number & 0x7F]
    while number := number >> 7:
        digits.append(0x80 | number & 0x7F)
    return bytes(reversed(digits))


def pitch(name: str, octave: int) -> int:
    return 12 * (octave + 1) + SEMITONES[name[0]] + name.count("#")


def play(score: Score, tune: Tune, instrument: int) -> None:
    start = score.end
    score.add(start, b"\xff\x51\x03" + tune.microseconds.to_bytes(3, "big"))
    score.instrument(MELODY, start, instrument)
    score.instrument(HARP, start, HARP_INSTRUMENT)
    tick = start
    for note in tune.melody.split():
        name, beats = note.split(":")
        length = round(float(beats) * tune.beat)
        score.note(MELODY, tick, length, pitch(name[:-1], int(name[-1])), 92)
        tick += length
    tick = start + tune.pickup * tune.beat
    for chord in tune.chords.split():
        root, third = pitch(chord, 3), 3 if chord.endswith("m") else 4
        for tone in [root, root + third, root + 7]:
            score.note(HARP, tick, tune.beat, tone, 60)
            tick += tune.beat


def main() -> None:
    score = Score()
    for part in sys.argv[2:]:
        name, _, instrument = part.partition(":")
        play(score, TUNES[name], int(instrument or 73))
    track = score.track()
    Path(sys.argv[1]).write_bytes(
        b"MThd" + struct.pack(">IHHH", 6, 0, 1, TICKS) + b"MTrk" + struct.pack(">I", len(track)) + track
    )


if __name__ == "__main__":
    main()
