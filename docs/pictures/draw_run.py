#!/usr/bin/python3
"""Makes docs/pictures/run.gif, a short moving picture of a run, from the pictures that ./demo leaves in build/demo.

usage: docs/pictures/draw_run.py     after ./demo
"""

import pathlib
import sys

from PIL import Image

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
# In the run's order: the page, the form filled in, the receipt.
WANTED = 3
WIDTH = 880
MILLISECONDS = [1500, 2000, 3000]


def frame(path):
    picture = Image.open(path).convert("RGB")
    # The page's own part of the window, without the empty screen below it.
    picture = picture.crop((0, 0, picture.width, picture.width * 2 // 3))
    small = picture.resize((WIDTH, WIDTH * picture.height // picture.width), Image.Resampling.LANCZOS)
    return small.quantize(128, dither=Image.Dither.NONE)


def main():
    shots = sorted((ROOT / "build/demo").glob("line-*.png"), key=lambda path: int(path.stem.removeprefix("line-")))
    if len(shots) != WANTED:
        sys.exit(f"draw_run.py: {len(shots)} pictures in build/demo, not {WANTED}: play ./demo first")
    first, *others = map(frame, shots)
    first.save(ROOT / "docs/pictures/run.gif", save_all=True, append_images=others, duration=MILLISECONDS, loop=0,
               optimize=True)


main()
