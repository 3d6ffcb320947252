#!/usr/bin/env python3
"""Draws the resource library's icons as PNG files (pure Python, no imaging
library needed). Run it after changing a drawing; the PNGs are committed.

    scripts/draw-icons.py resources
"""
import math
import struct
import sys
import zlib
from pathlib import Path

SUPERSAMPLE = 4


def png(width, height, pixels):
    """pixels: rows of (r, g, b, a) tuples."""
    raw = b"".join(b"\x00" + bytes(c for px in row for c in px) for row in pixels)

    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body) & 0xFFFFFFFF)

    header = struct.pack(">IIBBBBB", width, height, 8, 6, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw, 9)) + chunk(b"IEND", b"")


def render(size, layers):
    """layers: list of (inside(x, y) -> bool, colour) painted in order, with
    x and y in 0..1; anti-aliased by supersampling."""
    rows = []
    n = SUPERSAMPLE
    for py in range(size):
        row = []
        for px in range(size):
            acc = [0.0, 0.0, 0.0, 0.0]
            for sy in range(n):
                for sx in range(n):
                    x = (px + (sx + 0.5) / n) / size
                    y = (py + (sy + 0.5) / n) / size
                    colour = None
                    for inside, c in layers:
                        if inside(x, y):
                            colour = c
                    if colour:
                        for i in range(3):
                            acc[i] += colour[i]
                        acc[3] += 255
            samples = n * n
            alpha = acc[3] / samples
            if alpha:
                row.append(tuple(round(acc[i] / (acc[3] / 255)) for i in range(3)) + (round(alpha),))
            else:
                row.append((0, 0, 0, 0))
        rows.append(row)
    return png(size, size, rows)


def application_icon(size):
    """A globe with an arrow across it: data moving from one form to another."""
    def disc(x, y):
        return (x - 0.5) ** 2 + (y - 0.5) ** 2 <= 0.42 ** 2

    def meridians(x, y):
        if not disc(x, y):
            return False
        dx, dy = x - 0.5, y - 0.5
        width = 0.035
        on_equator = abs(dy) < width
        on_axis = abs(dx) < width
        ellipse = abs(math.hypot(dx / 0.2, dy / 0.42) - 1) < 0.12
        return on_equator or on_axis or ellipse

    def arrow(x, y):
        shaft = 0.12 <= x <= 0.72 and abs(y - 0.72) <= 0.06
        head = 0.68 <= x <= 0.92 and abs(y - 0.72) <= (0.92 - x) * 0.75
        return shaft or head

    return render(size, [(disc, (38, 104, 182)), (meridians, (200, 225, 250)), (arrow, (240, 140, 30))])


def rect(x0, y0, x1, y1):
    return lambda x, y: x0 <= x <= x1 and y0 <= y <= y1


def frame(x0, y0, x1, y1, width):
    outer = rect(x0, y0, x1, y1)
    inner = rect(x0 + width, y0 + width, x1 - width, y1 - width)
    return lambda x, y: outer(x, y) and not inner(x, y)


def arrow_right(x0, x1, yc, half):
    """A right-pointing arrow from x0 to x1 centred on yc."""
    head = x1 - half * 2.2

    def inside(x, y):
        shaft = x0 <= x <= head and abs(y - yc) <= half * 0.45
        tip = head <= x <= x1 and abs(y - yc) <= (x1 - x) / 2.2
        return shaft or tip
    return inside


def segment(ax, ay, bx, by, width):
    def inside(x, y):
        dx, dy = bx - ax, by - ay
        t = max(0.0, min(1.0, ((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy)))
        return math.hypot(x - ax - t * dx, y - ay - t * dy) <= width
    return inside


def branch(diverging):
    """Three strokes joining at one point: merging (into one on the right) or
    fanning out (one on the left into three)."""
    stem, ends = (0.62, [0.08, 0.28, 0.48]), 0.98
    if diverging:
        parts = [segment(0.56, 0.28, 0.78, 0.28, 0.045)] + [segment(0.78, 0.28, ends, y, 0.045) for y in stem[1]]
    else:
        parts = [segment(0.56, y, 0.78, 0.28, 0.045) for y in stem[1]] + [segment(0.78, 0.28, ends, 0.28, 0.045)]
    return lambda x, y: any(part(x, y) for part in parts)


def general_tab(source, plain, overlay):
    """A data sheet with an arrow: leaving it on the right for a reader,
    entering it from the left for a writer. Plain sheets are drawn in grey;
    merged and fanned-out feature types carry a branch mark."""
    paper = (236, 236, 236) if plain else (255, 255, 255)
    ink = (120, 120, 120) if plain else (60, 90, 140)
    accent = (46, 150, 60) if source else (220, 120, 20)
    sheet = rect(0.22, 0.08, 0.72, 0.92) if source else rect(0.34, 0.08, 0.84, 0.92)
    border = frame(0.22, 0.08, 0.72, 0.92, 0.07) if source else frame(0.34, 0.08, 0.84, 0.92, 0.07)
    rows = [rect(0.32, y, 0.62, y + 0.06) if source else rect(0.44, y, 0.74, y + 0.06) for y in (0.3, 0.45, 0.6)]
    lines = lambda x, y: any(r(x, y) for r in rows)
    arrow = arrow_right(0.5, 1.0, 0.76, 0.14) if source else arrow_right(0.0, 0.5, 0.76, 0.14)
    layers = [(sheet, paper), (border, ink), (lines, ink), (arrow, accent)]
    if overlay is not None:
        layers.append((branch(overlay), (150, 40, 170)))
    return render(16, layers)


def attributes_tab():
    """A small table: a heading row and two columns of cells."""
    table = rect(0.06, 0.12, 0.94, 0.88)
    heading = rect(0.06, 0.12, 0.94, 0.34)
    grid = lambda x, y: frame(0.06, 0.12, 0.94, 0.88, 0.07)(x, y) or abs(x - 0.42) < 0.04 or abs(y - 0.61) < 0.035
    inside = lambda x, y: table(x, y) and grid(x, y)
    return render(16, [(table, (255, 255, 255)), (heading, (120, 160, 210)), (inside, (60, 90, 140))])


def parameters_tab():
    """Three sliders at different settings."""
    layers = []
    for y, knob in ((0.22, 0.3), (0.5, 0.7), (0.78, 0.45)):
        layers.append((rect(0.08, y - 0.04, 0.92, y + 0.04), (110, 110, 110)))
        layers.append((rect(knob - 0.09, y - 0.14, knob + 0.09, y + 0.14), (46, 110, 190)))
    return render(16, layers)


def reader_item(schema_reader):
    """A data sheet read out to the right; a schema reader's sheet shows a
    table heading, for the schema it offers."""
    layers = [(rect(0.12, 0.08, 0.62, 0.92), (255, 255, 255)), (frame(0.12, 0.08, 0.62, 0.92, 0.07), (60, 90, 140))]
    if schema_reader:
        layers.append((rect(0.12, 0.08, 0.62, 0.34), (120, 160, 210)))
    layers.append((lambda x, y: any(rect(0.22, yy, 0.52, yy + 0.06)(x, y) for yy in (0.45, 0.6, 0.75)), (60, 90, 140)))
    layers.append((arrow_right(0.45, 1.0, 0.7, 0.14), (46, 150, 60)))
    return render(16, layers)


# Bitmap ID -> drawing. Role, plain (the icon flags not both set) and branch.
BITMAPS = {
    196: lambda: general_tab(True, False, None),
    649: lambda: general_tab(True, False, False),
    484: lambda: general_tab(True, True, None),
    655: lambda: general_tab(True, True, False),
    197: lambda: general_tab(False, False, None),
    647: lambda: general_tab(False, False, True),
    483: lambda: general_tab(False, True, None),
    654: lambda: general_tab(False, True, True),
    202: parameters_tab,
    302: attributes_tab,
}


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else "resources")
    for language in ("en", "de"):
        (root / language / "icons").mkdir(parents=True, exist_ok=True)
        (root / language / "icons" / "128.png").write_bytes(application_icon(48))
        (root / language / "bitmaps").mkdir(parents=True, exist_ok=True)
        for number, draw in BITMAPS.items():
            (root / language / "bitmaps" / f"{number}.png").write_bytes(draw())
    # The icons of the schema source list, files of the installation.
    icons = root.parent / "services" / "prompter" / "icons"
    icons.mkdir(parents=True, exist_ok=True)
    (icons / "reader.png").write_bytes(reader_item(False))
    (icons / "schema_reader_item.png").write_bytes(reader_item(True))


if __name__ == "__main__":
    main()
