#!/usr/bin/python3
"""Draws docs/pictures/architecture.svg: the layers of the library and the way of a click through them.

usage: docs/pictures/draw_architecture.py
"""
import html
import pathlib

WIDTH, ROW, GAP, LEFT, TOP = 860, 50, 8, 20, 70
LAYERS = [
    ("exports", "one exported function a command; the frame around every command"),
    ("commands", "check the parameters, then act: one function a command"),
    ("actions", "elements: found, measured on the screen, acted on; tables, pictures"),
    ("session", "browser windows, tabs and dialogs; what is selected and remembered"),
    ("hands and search", "keys and mouse; locators in one document"),
    ("checks", "messages, patterns, parameters, the three members of a result"),
    ("plumbing", "COM: owning types, text conversion, time limits, workers"),
]
INK, LINE, FILL, ACCENT = "#1b1f24", "#8c959f", "#f6f8fa", "#0969da"


def text(x, y, content, size=14, color=INK, weight="normal", anchor="start"):
    return (f'<text x="{x}" y="{y}" font-size="{size}" fill="{color}" font-weight="{weight}" '
            f'text-anchor="{anchor}">{html.escape(content)}</text>')


def box(x, y, width, height, fill=FILL, stroke=LINE):
    return f'<rect x="{x}" y="{y}" width="{width}" height="{height}" rx="6" fill="{fill}" stroke="{stroke}"/>'


def arrow(x1, y1, x2, y2, color=ACCENT):
    return f'<line x1="{x1}" y1="{y1}" x2="{x2}" y2="{y2}" stroke="{color}" stroke-width="2" marker-end="url(#tip)"/>'


def layer(index, name, meaning):
    y = TOP + index * (ROW + GAP)
    return [box(LEFT, y, 590, ROW), text(LEFT + 14, y + 21, name, weight="bold"), text(LEFT + 14, y + 40, meaning, 13)]


def draw():
    bottom = TOP + len(LAYERS) * (ROW + GAP)
    parts = [text(LEFT, 30, "host", weight="bold"), text(LEFT + 50, 30, "calls quillmate.dll on any thread", 13),
             arrow(LEFT + 295, 38, LEFT + 295, TOP - 4)]
    for index, (name, meaning) in enumerate(LAYERS):
        parts += layer(index, name, meaning)
    parts += [box(650, TOP, 190, 236, "#ddf4ff", ACCENT), text(745, TOP + 26, "worker thread", weight="bold", anchor="middle")]
    for at, line in enumerate(("its own apartment;", "makes the calls that a", "dialog or a script of", "the page can hold up.", "",
                               "The command waits one", "second, then succeeds", "with the number 0.")):
        parts.append(text(745, TOP + 54 + 21 * at, line, 13, anchor="middle"))
    parts.append(arrow(610, TOP + 149, 646, TOP + 149))
    parts += [box(LEFT, bottom + 36, 820, 56, "#fff8c5", "#bf8700"),
              text(LEFT + 14, bottom + 59, "browser process", weight="bold"),
              text(LEFT + 14, bottom + 79, "Internet Explorer, or in the tests testbrowser.exe with Chromium inside", 13),
              arrow(LEFT + 295, bottom - 8, LEFT + 295, bottom + 32), text(LEFT + 308, bottom + 17, "COM, window messages, keys and mouse", 13),
              arrow(745, TOP + 236, 745, bottom + 32)]
    height = bottom + 112
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" viewBox="0 0 {WIDTH} {height}" '
            'font-family="sans-serif">'
            f'<defs><marker id="tip" viewBox="0 0 8 8" refX="7" refY="4" markerWidth="8" markerHeight="8" orient="auto">'
            f'<path d="M0 0 8 4 0 8z" fill="{ACCENT}"/></marker></defs>'
            f'<rect width="{WIDTH}" height="{height}" fill="#ffffff"/>\n' + "\n".join(parts) + "\n</svg>\n")


if __name__ == "__main__":
    pathlib.Path(__file__).with_name("architecture.svg").write_text(draw())
