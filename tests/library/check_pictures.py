"""Checks the pictures that pictures_test wrote: really in the format of their names, of the right size, and with the
page's four colours where they belong, pixel by pixel. Usage: check_pictures.py FOLDER"""

import pathlib
import sys

from PIL import Image

FORMATS = {".png": "PNG", ".bmp": "BMP", ".tif": "TIFF"}
COLOURS = [(255, 0, 0), (0, 255, 0), (0, 0, 255), (0x12, 0x34, 0x56)]


def colour_at(x, y):
    return COLOURS[(1 if x >= 32 else 0) + (2 if y >= 24 else 0)]


def faults(path, size, left, top):
    with Image.open(path) as image:
        if image.format != FORMATS[path.suffix]:
            yield f"is {image.format}"
        if image.size != size:
            yield f"is {image.size}, not {size}"
            return
        pixels = image.convert("RGB").load()
    wrong = [(x, y) for y in range(48) for x in range(64) if pixels[left + x, top + y] != colour_at(x, y)]
    if wrong:
        x, y = wrong[0]
        yield f"has {len(wrong)} wrong pixels, the first at {x},{y}: {pixels[left + x, top + y]}"


def main():
    folder = pathlib.Path(sys.argv[1])
    failed = False
    lines = (folder / "expected.txt").read_text().splitlines()
    for line in lines:
        name, width, height, left, top = line.split()
        for fault in faults(folder / name, (int(width), int(height)), int(left), int(top)):
            failed = True
            print(f"{name} {fault}")
    print(f"{len(lines)} pictures checked")
    return 1 if failed or len(lines) < 6 else 0


if __name__ == "__main__":
    sys.exit(main())
