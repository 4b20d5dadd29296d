"""Draws the sample room's small textures (plain Python, no packages).

usage: make_textures.py    writes textures/*.png beside itself
"""

import math
import pathlib
import random
import struct
import zlib

HERE = pathlib.Path(__file__).parent


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def write_png(name, size, shade):
    """shade(u, v) gives r, g, b in 0..1; u and v run over 0..1 and wrap."""
    rows = bytearray()
    for y in range(size):
        rows.append(0)
        for x in range(size):
            for value in shade(x / size, y / size):
                rows.append(max(0, min(255, round(value * 255))))
    header = struct.pack(">IIBBBBB", size, size, 8, 2, 0, 0, 0)
    png = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header)
    png += chunk(b"IDAT", zlib.compress(bytes(rows), 9)) + chunk(b"IEND", b"")
    (HERE / "textures" / name).write_bytes(png)


def waves(seed, count):
    rng = random.Random(seed)
    parts = [
        (rng.randint(1, 4), rng.randint(1, 9), rng.random() * math.tau, rng.random())
        for _ in range(count)
    ]
    total = sum(p[3] for p in parts)
    return lambda u, v: (
        sum(w * math.sin(math.tau * (a * u + b * v) + f) for a, b, f, w in parts) / total
    )


def wood(dark, light, seed):
    grain = waves(seed, 5)

    def shade(u, v):
        t = 0.5 + 0.5 * math.sin(math.tau * 4 * v + 2.5 * grain(u * 1.0, v))
        return [d + (li - d) * t for d, li in zip(dark, light)]

    return shade


def weave(base, contrast):
    def shade(u, v):
        t = math.sin(math.tau * 16 * u) * math.sin(math.tau * 16 * v)
        return [c * (1 + contrast * t) for c in base]

    return shade


def bricks(u, v):
    row = int(v * 8)
    x = (u * 4 + 0.5 * (row % 2)) % 1
    y = (v * 8) % 1
    if x < 0.04 or y < 0.08:
        return 0.78, 0.76, 0.72
    tone = 0.85 + 0.15 * math.sin(97.0 * row + 31.0 * int(u * 4 + 0.5 * (row % 2)))
    return 0.62 * tone, 0.30 * tone, 0.22 * tone


def pebble_normals(u, v):
    dx = 0.35 * math.cos(math.tau * 6 * u) * math.sin(math.tau * 6 * v)
    dy = 0.35 * math.sin(math.tau * 6 * u) * math.cos(math.tau * 6 * v)
    length = math.sqrt(dx * dx + dy * dy + 1)
    return 0.5 - 0.5 * dx / length, 0.5 - 0.5 * dy / length, 0.5 + 0.5 / length


def landscape(u, v):
    hills = 0.55 + 0.08 * math.sin(math.tau * 2 * u) + 0.03 * math.sin(math.tau * 5 * u)
    if v > hills:
        return 0.20 + 0.2 * v, 0.38 + 0.1 * v, 0.16
    return 0.45 + 0.4 * v, 0.62 + 0.3 * v, 0.90


def sky(u, v):
    cloud = max(0.0, waves(11, 6)(u, v))
    return [c + (0.95 - c) * cloud for c in (0.38 + 0.3 * v, 0.55 + 0.3 * v, 0.85)]


def scratches(u, v):
    t = 0.55 + 0.25 * waves(5, 7)(u, v)
    return t, t, t


TEXTURES = {
    "oak_1.png": wood((0.42, 0.27, 0.15), (0.60, 0.42, 0.26), 1),
    "oak_2.png": wood((0.38, 0.24, 0.13), (0.55, 0.38, 0.23), 2),
    "oak_3.png": wood((0.47, 0.31, 0.18), (0.66, 0.48, 0.31), 3),
    "walnut.png": wood((0.20, 0.12, 0.07), (0.36, 0.23, 0.14), 4),
    "fabric_blue.png": weave((0.16, 0.24, 0.38), 0.25),
    "fabric_red.png": weave((0.45, 0.13, 0.11), 0.25),
    "bricks.png": bricks,
    "pebbles_normal.png": pebble_normals,
    "landscape.png": landscape,
    "sky.png": sky,
    "scratches.png": scratches,
    "книга.png": weave((0.30, 0.32, 0.22), 0.1),
}

if __name__ == "__main__":
    for name, shade in TEXTURES.items():
        write_png(name, 32 if name == "книга.png" else 64, shade)
