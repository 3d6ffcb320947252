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


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else "resources")
    for language in ("en", "de"):
        (root / language / "icons").mkdir(parents=True, exist_ok=True)
        (root / language / "icons" / "128.png").write_bytes(application_icon(48))


if __name__ == "__main__":
    main()
