"""Writes the sample room, room.json: a furnished room in centimetres that uses every kind of
thing the stand-in host's scene file can hold. Plain Python, no packages.

usage: make_room.py    writes room.json beside itself
"""

import json
import math
import pathlib
import random

HERE = pathlib.Path(__file__).parent
rng = random.Random(20)  # the room is the same each time


# ---------------------------------------------------------------- meshes of many elements
def box_elements(boxes):
    """One mesh of separate boxes, each (x, y, z, size x, size y, size z, material id)."""
    positions, triangles, ids, uvs = [], [], [], []
    faces = [(0, 2, 3, 1), (4, 5, 7, 6), (0, 1, 5, 4), (1, 3, 7, 5), (3, 2, 6, 7), (2, 0, 4, 6)]
    for x, y, z, sx, sy, sz, material_id in boxes:
        first = len(positions)
        for k in range(8):
            positions.append(
                [round(c, 3) for c in (x + sx * (k & 1), y + sy * (k >> 1 & 1), z + sz * (k >> 2))]
            )
            uvs.append([round((k & 1) * sx / 50, 4), round((k >> 1 & 1) * sy / 50, 4)])
        for a, b, c, d in faces:
            triangles += [[first + a, first + b, first + c], [first + a, first + c, first + d]]
            ids += [material_id] * 2
    return {
        "positions": positions,
        "triangles": triangles,
        "material_ids": ids,
        "smoothing_groups": 0,
        "uvs": {"1": {"values": uvs, "triangles": triangles}},
    }


def planks():
    boxes = []
    for row in range(20):
        x = -250.0 - rng.random() * 60
        while x < 250:
            length = 90 + 30 * rng.random()
            left, right = max(x, -250.0), min(x + length, 250.0)
            if right - left > 1:
                boxes.append((left, -200 + row * 20, -2, right - left - 0.3, 19.7, 2, 0))
            x += length
    return box_elements(boxes)


def books():
    boxes, z = [], 0.0
    for k in range(9):
        thick = 1.5 + 2.5 * rng.random()
        boxes.append((-10 + rng.random(), -7 + rng.random(), z, 20, 14, thick, k % 3))
        z += thick
    return box_elements(boxes)


# ---------------------------------------------------------------- maps
def bitmap(name, file, **more):
    return {"class": "Bitmap", "name": name, "file": "textures/" + file, **more}


def corona_bitmap(name, file, **params):
    return {
        "class": "CoronaBitmap",
        "name": name,
        "params": {"filename": "textures/" + file, "uvwScale": [2, 2, 1], **params},
    }


MAPS = {
    "oak_1": corona_bitmap("Oak 1", "oak_1.png", realWorldScale=True, uvwScale=[120, 20, 1]),
    "oak_2": corona_bitmap("Oak 2", "oak_2.png", realWorldScale=True, uvwScale=[120, 20, 1]),
    "oak_3": corona_bitmap("Oak 3", "oak_3.png", realWorldScale=True, uvwScale=[120, 20, 1]),
    "planks": {
        "class": "CoronaMultiMap",
        "name": "Planks",
        "params": {
            "items": 3,
            "seed": 41,
            "texmaps": ["oak_1", "oak_2", "oak_3"],
            "randomizeInstance": False,
            "randomizeMeshElement": True,
            "gammaRandom": 0.15,
        },
    },
    "walnut": bitmap("Walnut", "walnut.png"),
    "fabric_blue": bitmap("Fabric blue", "fabric_blue.png"),
    "fabric_red": bitmap("Fabric red", "fabric_red.png"),
    "bricks": bitmap("Bricks", "bricks.png"),
    "landscape": bitmap("Landscape", "landscape.png"),
    "missing": bitmap("Rug pattern (lost)", "rug_pattern_lost.png"),
    "book_cover": bitmap("Обложка", "книга.png"),
    # Each book its own cover; the second of the list is switched off.
    "covers": {
        "class": "MultiTexture",
        "name": "Covers",
        "params": {
            "rnd_by": 2,
            "seed": 1208,
            "texmaps": ["book_cover", "bricks", "fabric_blue", "fabric_red"],
            "submap_on": [True, False, True, True],
        },
    },
    "scratches": corona_bitmap("Scratches", "scratches.png", gamma=1.0),
    "pebbles": corona_bitmap("Pebbles", "pebbles_normal.png", gamma=1.0),
    "pebble_normal": {
        "class": "CoronaNormal",
        "name": "Pebble bump",
        "params": {"normalMap": "pebbles", "multiplier": 0.8, "flipGreen": True},
    },
    "sky": {
        "class": "CoronaBitmap",
        "name": "Sky dome",
        "params": {"filename": "textures/sky.png", "enviroMapping": 1},
    },
    "warm_white": {
        "class": "CoronaColor",
        "name": "Warm white",
        "params": {"color": [1.0, 0.86, 0.68], "multiplier": 1.0},
    },
    "worn": {
        "class": "CoronaMix",
        "name": "Worn walnut",
        "params": {"texmapTop": "walnut", "texmapBottom": "scratches", "mixAmount": 0.35},
    },
    "wall_grain": {"class": "Noise", "name": "Wall grain", "params": {"size": 2.5}},
    "sheen_falloff": {"class": "Falloff", "name": "Velvet falloff"},
    "checks": {"class": "Checker", "name": "Checks"},
    "tinted": {
        "class": "Color Correction",
        "name": "Darker bricks",
        "slots": ["bricks"],
    },
    "cellar_ao": {"class": "CoronaAO", "name": "Dirt in corners"},
    "wrap": {"class": "CoronaTriplanar", "name": "Round the pot"},
    "ramp": {"class": "Gradient Ramp", "name": "Lamp shade ramp"},
    "edges": {"class": "CoronaRoundEdges", "name": "Soft edges"},
}


# ---------------------------------------------------------------- materials
MATERIALS = {
    # The class name really begins with a carriage return.
    "floor": {
        "class": "\rCoronaPhysicalMtl",
        "name": "Oak planks",
        "params": {"baseTexmap": "planks", "baseRoughness": 0.35, "baseIor": 1.5},
    },
    "wall": {
        "class": "Physical Material",
        "name": "Wall paint",
        "params": {
            "base_color": [0.82, 0.80, 0.76, 1],
            "roughness": 0.7,
            "bump_map": "wall_grain",
            "bump_map_amt": 0.05,
        },
    },
    "brick_wall": {
        "class": "Physical Material",
        "name": "Brick wall",
        "params": {"base_color_map": "tinted", "roughness": 0.9},
    },
    "ceiling": {"class": "Standard (Legacy)", "name": "Ceiling white"},
    "walnut": {
        "class": "CoronaLegacyMtl",
        "name": "Walnut oiled",
        "params": {"texmapDiffuse": "worn", "levelReflect": 0.4},
    },
    "fabric_blue": {
        "class": "VRayMtl",
        "name": "Fabric blue",
        "params": {"texmap_diffuse": "fabric_blue", "reflection_glossiness": 0.5},
    },
    "fabric_red": {
        "class": "VRayMtl",
        "name": "Fabric red",
        "params": {"texmap_diffuse": "fabric_red", "reflection_glossiness": 0.45},
    },
    "glass": {
        "class": "\rCoronaPhysicalMtl",
        "name": "Window glass",
        "params": {"refractionAmount": 1.0, "baseRoughness": 0.0, "useThinMode": True},
    },
    "brass": {
        "class": "\rCoronaPhysicalMtl",
        "name": "Brass",
        "params": {
            "metalnessMode": 1,
            "baseColor": [0.78, 0.57, 0.24],
            "baseRoughness": 0.25,
            "baseRoughnessTexmap": "scratches",
        },
    },
    "bulb": {
        "class": "CoronaLightMtl",
        "name": "Bulb glow",
        "params": {"intensity": 6.0, "texmap": "warm_white"},
    },
    "shade": {
        "class": "Double Sided",
        "name": "Lamp shade",
        "sub_materials": ["wall", "fabric_red"],
    },
    "book_red": {
        "class": "Physical Material",
        "name": "Book red",
        "params": {"base_color": [0.5, 0.08, 0.06, 1], "base_color_map": "covers"},
    },
    "book_green": {
        "class": "Physical Material",
        "name": "Book green",
        "params": {"base_color": [0.08, 0.3, 0.12, 1], "base_color_map": "covers"},
    },
    "book_blue": {
        "class": "Physical Material",
        "name": "Книга синяя",
        "params": {"base_color": [0.07, 0.12, 0.4, 1]},
    },
    "books": {
        "class": "Multi/Sub-Object",
        "name": "Books",
        "sub_materials": ["book_red", "book_green", "book_blue"],
    },
    "picture": {
        "class": "glTF Material",
        "name": "Picture \"Landscape\"",
        "params": {"roughness": 0.8, "metalness": 0.0},
        "slots": {"baseColorMap": "landscape"},
    },
    "mirror": {
        "class": "PBR Material (Metal/Rough)",
        "name": "Mirror",
        "params": {"metalness": 1.0, "roughness": 0.02},
    },
    "rug": {
        "class": "CoronaLayeredMtl",
        "name": "Rug",
        "params": {
            "baseMtl": "rug_base",
            "layers": ["fabric_red"],
            "amounts": [0.5],
            "mixmaps": ["checks"],
        },
    },
    "rug_base": {
        "class": "Standard (Legacy)",
        "name": "Rug base",
        "slots": {"Diffuse Color": "missing"},
    },
    "pot": {
        "class": "VRayBlendMtl",
        "name": "Glazed pot",
        "params": {"baseMtl": "pot_clay", "coatMtl_0": "brass", "blend_0": [0.2, 0.2, 0.2]},
    },
    "pot_clay": {
        "class": "\rCoronaPhysicalMtl",
        "name": "Clay",
        "params": {"baseColor": [0.55, 0.27, 0.16], "baseBumpTexmap": "pebble_normal"},
    },
    "cable": {"class": "CoronaSelectMtl", "name": "Cable rubber"},
    "backdrop": {"class": "Matte/Shadow", "name": "Behind the window"},
}


# ---------------------------------------------------------------- objects
def box(width, length, height):
    return {"class": "Box", "params": {"width": width, "length": length, "height": height}}


OBJECTS = {
    "floor": {"class": "Editable Mesh", "mesh": planks()},
    "wall_long": box(500, 10, 270),
    "wall_short": box(10, 400, 270),
    "ceiling": {"class": "Plane", "params": {"width": 500, "length": 400}},
    "table_top": box(160, 80, 4),
    "table_leg": box(6, 6, 71),
    "chair_seat": box(42, 42, 4),
    "chair_back": box(42, 4, 48),
    "chair_leg": {"class": "Cylinder", "params": {"radius": 2, "height": 43, "sides": 12}},
    "sofa_base": box(190, 85, 38),
    "cushion": box(60, 18, 45),
    "lamp_foot": {"class": "Cylinder", "params": {"radius": 14, "height": 3, "sides": 24}},
    "lamp_pole": {"class": "Cylinder", "params": {"radius": 1.2, "height": 140, "sides": 12}},
    "lamp_shade": {"class": "Cone", "params": {"radius1": 24, "radius2": 15, "height": 26}},
    "bulb": {"class": "Sphere", "params": {"radius": 4, "segs": 16}},
    "books": {"class": "Editable Poly", "mesh": books()},
    "frame": box(90, 3, 60),
    "picture": {"class": "Plane", "params": {"width": 80, "length": 50}},
    "window_bar": box(140, 5, 5),
    "window_post": box(5, 5, 130),
    "window_glass": {"class": "Plane", "params": {"width": 135, "length": 120}},
    "pot": {"class": "Teapot", "params": {"radius": 14}},
    "ring": {"class": "Torus", "params": {"radius1": 12, "radius2": 2}},
    "rug": {
        "base": "rug_plane",
        "modifiers": [
            {"class": "UVW Map"},
            {"class": "CoronaDisplacementMod", "enabled": True},
        ],
    },
    "rug_plane": {
        "class": "Plane",
        "params": {"width": 180, "length": 120, "widthsegs": 8, "lengthsegs": 6},
    },
    "cable": {
        "class": "Line",
        "params": {"render_renderable": True, "render_thickness": 0.8, "render_sides": 8},
        "splines": [
            {
                "closed": False,
                "points": [[0, 0, 1], [30, 12, 1], [62, 8, 1], [95, 30, 1], [95, 30, 40]],
            }
        ],
    },
    "guide": {
        "class": "Rectangle",
        "params": {"width": 60, "length": 40, "render_renderable": False},
    },
    "downlight": {
        "class": "CoronaLight",
        "params": {"shape": 2, "intensity": 900, "intensityUnits": 1, "iesOn": True,
                   "iesFile": "downlight.ies", "width": 8.0},
    },
    "window_light": {
        "class": "CoronaLight",
        "params": {"shape": 1, "width": 140, "height": 120, "intensity": 12, "targeted": True},
    },
    "sun": {"class": "CoronaSun", "params": {"intensity": 1.0}},
    "vray_fill": {"class": "VRayLight", "params": {"multiplier": 2.0}},
    "vray_sun": {"class": "VRaySun", "params": {"intensity_multiplier": 0.02}},
    "vray_ies": {"class": "VRayIES", "params": {"ies_file": "downlight.ies", "power": 1700}},
    "photometric": {"class": "Free Light", "params": {"webfile": "downlight.ies"}},
    "omni": {"class": "Omni"},
    "cam_physical": {"class": "Physical", "camera": {"target_distance": 420}},
    "cam_target": {
        "class": "Target",
        "camera": {"fov": 0.9, "target_distance": 380, "manual_clip": True, "near": 5, "far": 2000},
    },
    "cam_plan": {"class": "Free", "camera": {"fov": 0.8, "ortho": True, "target_distance": 600}},
    "cam_corona": {"class": "CoronaCam"},
    "cam_vray": {"class": "VRayPhysicalCamera"},
}


# ---------------------------------------------------------------- nodes
def node(name, object_id=None, material=None, at=(0, 0, 0), turn=None, scale=None, **more):
    entry = {"name": name}
    if object_id:
        entry["object"] = object_id
    if material:
        entry["material"] = material
    transform = {}
    if any(at):
        transform["position"] = list(at)
    if turn is not None:
        transform["rotation"] = list(turn) if isinstance(turn, (tuple, list)) else [0, 0, turn]
    if scale is not None:
        transform["scale"] = list(scale)
    if transform:
        entry["transform"] = transform
    entry.update(more)
    return entry


def look_at(eye, target):
    """World matrix of something that looks down its -z axis from eye to target."""
    z = [e - t for e, t in zip(eye, target)]
    length = math.sqrt(sum(c * c for c in z))
    z = [c / length for c in z]
    x = [-z[1], z[0], 0.0]
    length = math.hypot(x[0], x[1]) or 1.0
    x = [c / length for c in x] if length > 1e-9 else [1.0, 0.0, 0.0]
    y = [z[1] * x[2] - z[2] * x[1], z[2] * x[0] - z[0] * x[2], z[0] * x[1] - z[1] * x[0]]
    return {"matrix": [[round(c, 6) for c in row] for row in (x, y, z)] + [list(eye)]}


def aimed(name, object_id, eye, target, targeted=True):
    entry = {"name": name, "object": object_id, "transform": look_at(eye, target)}
    if not targeted:
        return [entry]
    aim = {"name": name + ".Target", "transform": {"position": list(target)}}
    return [{**entry, "target": aim["name"]}, aim]


def group(name, at, members, turn=None):
    for member in members:
        member["group_member"] = True
    return node(name, at=at, turn=turn, group_head=True, children=members)


def chair(number, at, turn):
    corners = [(-18, -18), (18, -18), (-18, 18), (18, 18)]
    members = [
        node(f"Chair {number} seat", "chair_seat", "fabric_blue", (0, 0, 43)),
        node(f"Chair {number} back", "chair_back", "walnut", (0, 19, 47), turn=(-8, 0, 0)),
    ]
    members += [
        node(f"Chair {number} leg {k + 1}", "chair_leg", "walnut", (x, y, 0))
        for k, (x, y) in enumerate(corners)
    ]
    return group(f"Chair {number}", at, members, turn)


def nodes():
    found = [
        node("Floor", "floor", "floor"),
        node("Wall back", "wall_long", "brick_wall", (0, 205, 0)),
        node("Wall left", "wall_short", "wall", (-255, 0, 0)),
        # Mirrored on purpose: a negative scale must survive the export.
        node("Wall right", "wall_short", "wall", (255, 0, 0), scale=(-1, 1, 1)),
        node("Ceiling", "ceiling", "ceiling", (0, 0, 270), turn=(180, 0, 0)),
        node("Backdrop", "ceiling", "backdrop", (0, 400, 130), turn=(90, 0, 0)),
        group(
            "Window",
            (120, 200, 90),
            [
                node("Window sill", "window_bar", "walnut", (0, 0, 0)),
                node("Window top", "window_bar", "walnut", (0, 0, 125)),
                node("Window left", "window_post", "walnut", (-67, 0, 0)),
                node("Window right", "window_post", "walnut", (67, 0, 0)),
                node("Window glass", "window_glass", "glass", (0, 0, 65), turn=(90, 0, 0)),
            ],
        ),
        node(
            "Table",
            "table_top",
            "walnut",
            (-40, 20, 71),
            children=[
                node(f"Table leg {k + 1}", "table_leg", "walnut", (x, y, -71))
                for k, (x, y) in enumerate([(-74, -34), (74, -34), (-74, 34), (74, 34)])
            ]
            + [
                node("Books", "books", "books", (45, 0, 4), turn=17),
                node("Чайник", "pot", "pot", (-30, 5, 4), turn=-30),
                node("Ring \"brass\"", "ring", "brass", (5, -18, 6), scale=(1, 1, 0.6)),
            ],
        ),
        chair(1, (-40, -50, 0), 180),
        chair(2, (-150, 20, 0), 90),
        chair(3, (-40, 95, 0), 0),
        node(
            "Sofa",
            "sofa_base",
            "fabric_red",
            (170, -60, 0),
            turn=-90,
            children=[
                node("Cushion 1", "cushion", "fabric_blue", (-62, 30, 38), turn=(-12, 0, 0)),
                node("Cushion 2", "cushion", "fabric_blue", (0, 30, 38), turn=(-12, 0, 3)),
                node("Cushion 3", "cushion", "fabric_red", (62, 30, 38), turn=(-12, 0, -4)),
            ],
        ),
        node("Rug", "rug", "rug", (120, -60, 0.4)),
        node(
            "Lamp",
            "lamp_foot",
            "brass",
            (-215, 160, 0),
            children=[
                node("Lamp pole", "lamp_pole", "brass", (0, 0, 3)),
                node("Lamp shade", "lamp_shade", "shade", (0, 0, 135)),
                node("Lamp bulb", "bulb", "bulb", (0, 0, 146)),
            ],
        ),
        node("Lamp cable", "cable", "cable", (-215, 140, 0), turn=-20),
        node("Guide", "guide", None, (0, 0, 1)),
        node("Picture frame", "frame", "walnut", (-120, 198, 140)),
        node("Picture", "picture", "picture", (-120, 196, 170), turn=(90, 0, 0)),
        node("Mirror", "picture", "mirror", (-249, -60, 150), turn=(90, 0, 90), hidden=True),
        node("Origin", {"class": "Point"}, None),
        node("Downlight 1", "downlight", None, (-100, -80, 265)),
        node("Downlight 2", "downlight", None, (100, -80, 265)),
        node("Photometric lamp", "photometric", None, (0, 100, 265)),
        node("VRay fill", "vray_fill", None, (0, -190, 200), turn=(60, 0, 0)),
        node("VRay downlight", "vray_ies", None, (0, -80, 265)),
        node("VRay sun", "vray_sun", None, (300, 600, 500)),
        node("Old omni", "omni", None, (0, 0, 200)),
        node("Plan", "cam_plan", None, (0, 0, 600)),
        node("VRay view", "cam_vray", None, (200, -180, 140), turn=(80, 0, 40)),
        node("Corona view", "cam_corona", None, (-200, -180, 140), turn=(80, 0, -40)),
    ]
    found += aimed("Window light", "window_light", (120, 215, 155), (60, 0, 40))
    found += aimed("Sun", "sun", (600, 900, 800), (0, 0, 0))
    found += aimed("Camera", "cam_target", (30, -190, 150), (-30, 60, 70))
    found += aimed("Physical view", "cam_physical", (-230, -170, 130), (100, 100, 60))
    return found


SCENE = {
    "format": "simhost-scene",
    "version": 1,
    "file_name": "C:\\Scenes\\living room.max",
    "units": {"type": "centimeters", "scale": 1.0},
    "map_paths": [".", "textures"],
    "color_pipeline": {"mode": "gamma", "rendering_space": "sRGB", "display_gamma": 2.2},
    "renderer": {
        "class": "Corona",
        "params": {"bg_source": 1, "bg_color": [0.32, 0.42, 0.55], "bg_texmap": "sky"},
    },
    "environment": {
        "background": [0.32, 0.42, 0.55],
        "use_map": True,
        "map": "sky",
    },
    "maps": MAPS,
    "materials": MATERIALS,
    "objects": OBJECTS,
    "nodes": nodes(),
}


def text(value, indent=0, width=100):
    """JSON with everything that fits on one line kept there."""
    flat = json.dumps(value, ensure_ascii=False)
    if len(flat) + indent <= width or not isinstance(value, (dict, list)):
        return flat
    pad, inner = " " * indent, " " * (indent + 2)
    if isinstance(value, list) and all(isinstance(v, (int, float)) for v in value):
        lines, line = [], ""
        for number in value:
            item = json.dumps(number) + ","
            if len(inner) + len(line) + len(item) + 1 > width:
                lines.append(line)
                line = ""
            line = (line + " " + item).strip()
        lines.append(line)
        return "[\n" + inner + ("\n" + inner).join(lines).rstrip(",") + "\n" + pad + "]"
    if isinstance(value, dict):
        items = [json.dumps(k, ensure_ascii=False) + ": " + text(v, indent + 2) for k, v in value.items()]
        return "{\n" + inner + (",\n" + inner).join(items) + "\n" + pad + "}"
    return "[\n" + inner + (",\n" + inner).join(text(v, indent + 2) for v in value) + "\n" + pad + "]"


def flatten_meshes(scene):
    """Big lists of points are written flat: shorter, and as good."""
    for entry in scene["objects"].values():
        mesh = entry.get("mesh")
        if mesh:
            mesh["positions"] = [c for p in mesh["positions"] for c in p]
            mesh["triangles"] = [c for t in mesh["triangles"] for c in t]
            channel = mesh["uvs"]["1"]
            channel["values"] = [c for p in channel["values"] for c in p]
            channel["size"] = 2
            del channel["triangles"]


if __name__ == "__main__":
    flatten_meshes(SCENE)
    (HERE / "room.json").write_text(text(SCENE) + "\n", "utf-8")
