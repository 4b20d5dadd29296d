"""Makes the meshes of many elements in the sample room: the floor's planks and the stack of books.
Everything else in room.json is written by hand. Plain Python, no packages.

usage: make_meshes.py    puts both into the room.json beside itself
"""

import json
import pathlib
import random

ROOM = pathlib.Path(__file__).with_name("room.json")
FACES = [(0, 2, 3, 1), (4, 5, 7, 6), (0, 1, 5, 4), (1, 3, 7, 5), (3, 2, 6, 7), (2, 0, 4, 6)]
rng = random.Random(20)  # the room is the same each time


def mesh_of(boxes):
    """One mesh of separate boxes, each (x, y, z, size x, size y, size z, material id)."""
    positions, triangles, ids, uvs = [], [], [], []
    for x, y, z, sx, sy, sz, material_id in boxes:
        first = len(positions) // 3
        for k in range(8):
            right, back, up = k & 1, k >> 1 & 1, k >> 2
            positions += [round(c, 3) for c in (x + sx * right, y + sy * back, z + sz * up)]
            uvs += [round(right * sx / 50, 4), round(back * sy / 50, 4)]
        for a, b, c, d in FACES:
            triangles += [first + corner for corner in (a, b, c, a, c, d)]
            ids += [material_id] * 2
    return {
        "positions": positions,
        "triangles": triangles,
        "material_ids": ids,
        "smoothing_groups": 0,
        "uvs": {"1": {"values": uvs, "size": 2}},
    }


def planks():
    for row in range(20):
        x = -250.0 - rng.random() * 60
        while x < 250:
            length = 90 + 30 * rng.random()
            left, right = max(x, -250.0), min(x + length, 250.0)
            if right - left > 1:
                yield left, -200 + row * 20, -2, right - left - 0.3, 19.7, 2, 0
            x += length


def books():
    z = 0.0
    for k in range(9):
        thick = 1.5 + 2.5 * rng.random()
        yield -10 + rng.random(), -7 + rng.random(), z, 20, 14, thick, k % 3
        z += thick


def text(value, indent=0, width=100):
    """JSON with everything that fits on one line kept there, and lists of numbers filled up."""
    flat = json.dumps(value, ensure_ascii=False)
    if len(flat) + indent <= width or not isinstance(value, (dict, list)):
        return flat
    pad, inner = "\n" + " " * indent, "\n" + " " * (indent + 2)
    if isinstance(value, dict):
        items = [f"{json.dumps(k, ensure_ascii=False)}: {text(v, indent + 2)}" for k, v in value.items()]
        return "{" + inner + ("," + inner).join(items) + pad + "}"
    if not all(isinstance(v, (int, float)) for v in value):
        return "[" + inner + ("," + inner).join(text(v, indent + 2) for v in value) + pad + "]"
    lines = [""]
    for item in flat[1:-1].split(", "):
        if indent + 2 + len(lines[-1]) + len(item) + 2 > width:
            lines.append("")
        lines[-1] = (lines[-1] + " " + item + ",").strip()
    return "[" + inner + inner.join(lines).rstrip(",") + pad + "]"


if __name__ == "__main__":
    room = json.loads(ROOM.read_text("utf-8"))
    for name, boxes in (("floor", planks()), ("books", books())):
        room["objects"][name]["mesh"] = mesh_of(boxes)
    ROOM.write_text(text(room) + "\n", "utf-8")
