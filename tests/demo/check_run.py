"""Checks what one run of scripts/demo left in its folder.

usage: check_run.py DIR [--materials NAME,NAME,...] [--missing-textures N]
"""

import argparse
import json
import pathlib
import re
import struct
import sys
import zlib

STAGES = [  # (progress, text) in order; the V-Ray line appears only after a conversion
    (8, r"Preparing job folder\.\.\."),
    (12, r"Baking MultiTexture vertex colors\.\.\."),
    (15, r"Checking for V-Ray materials\.\.\."),
    (20, r"Deduplicating material names\.\.\."),
    (25, r"Exporting FBX\.\.\."),
    (40, r"Collecting textures\.\.\."),
    (55, r"Textures: \d+(  \(\d+ missing\))?"),
    (65, r"Building Package\.\.\."),
    (78, r"Package ready\. Objects: \d+"),
    (88, r"Sending to server\.\.\."),
    (100, r"Done  OK  Objects: \d+"),
]

problems = []


def expect(condition, text):
    if not condition:
        problems.append(text)


def png_colours(path):
    """Size of a PNG of 8-bit RGB(A) and how many different pixel rows it has."""
    data = path.read_bytes()
    width, height = struct.unpack(">II", data[16:24])
    at, packed = 8, b""
    while at < len(data):
        (length,) = struct.unpack(">I", data[at : at + 4])
        if data[at + 4 : at + 8] == b"IDAT":
            packed += data[at + 8 : at + 8 + length]
        at += 12 + length
    raw = zlib.decompress(packed)
    stride = len(raw) // height
    return width, height, len({raw[y * stride + 1 : (y + 1) * stride] for y in range(height)})


def check_panel(folder):
    summary = json.loads((folder / "summary.json").read_text("utf-8"))
    status = summary["status_text"]
    expect(re.fullmatch(r"Done  OK  Objects: \d+", status), f"status text: {status!r}")
    job = pathlib.PureWindowsPath(summary["job_folder"]).name
    expect(summary["job_label"] == "Job: " + job, f"job label: {summary['job_label']!r}")
    expect(re.fullmatch(r".+_[a-z0-9]{8}", job), f"job folder name: {job!r}")
    expect(summary["message_boxes"] == [], f"message boxes: {summary['message_boxes']}")
    seen = [(s["progress"], s["text"]) for s in summary["stages"]]
    expect(len(seen) == len(STAGES), f"stages: {seen}")
    for (progress, pattern), (got_progress, got_text) in zip(STAGES, seen):
        ok = progress == got_progress and re.fullmatch(pattern, got_text)
        expect(ok, f"stage {progress} {pattern!r}: got {got_progress} {got_text!r}")
    width, height, rows = png_colours(folder / "panel.png")
    expect(width > 300 and height > 400 and rows > 40, f"panel.png: {width}x{height}, {rows} rows")
    copied = next((int(t.split()[1]) for p, t in seen if p == 55), None)
    return job, int(status.rsplit(" ", 1)[1]), copied


def check_job_folder(folder, job, copied):
    files = {p.name for p in (folder / "exchange" / job).iterdir()}
    fbx = job[:-9] + ".fbx"
    expect({fbx, "textures"} <= files, f"job folder holds {sorted(files)}")
    expect("1.json" not in files, "1.json is still in the job folder")
    # Two files of one name take one place.
    textures = list((folder / "exchange" / job / "textures").iterdir())
    expect(len(textures) <= copied and bool(textures) == bool(copied),
           f"{copied} textures copied, {len(textures)} there")
    expect(all(p.stat().st_size for p in textures), "a texture is empty")
    head = (folder / "exchange" / job / fbx).read_bytes()[:23]
    expect(head.startswith(b"Kaydara FBX Binary  \0"), "the FBX file has no FBX header")


def check_request(folder, job):
    request = json.loads((folder / "service/jobs/0001/request.json").read_text("utf-8"))
    expect(request["method"] == "POST", f"method {request['method']}")
    expect(request["path"] == "/node/api/v1/jobs", f"path {request['path']}")
    text = json.dumps(request["headers"])
    for header in ("Authorization", "X-Job-Name", "X-Blender-Target-Version", "Content-Type"):
        expect(header in text, f"no header {header} in request.json")
    expect("application/json; charset=utf-8" in text, "no JSON content type in request.json")


def check_package(folder, objects, materials):
    body = (folder / "service/jobs/0001/package.json").read_bytes()
    expect(not body.startswith(b"\xef\xbb\xbf") and b"\r" not in body, "byte-order mark or CR")
    package = json.loads(body)
    expect(package["object_count"] == objects == len(package["objects"]), "object counts differ")
    names = [o["object_name"] for o in package["objects"]]
    expect(len(set(names)) == len(names), "object names repeat")
    found = set()
    for entry in package["objects"]:
        material = entry["material"]
        found.add(material["name"])
        found.update(s["material_name"] for s in material.get("sub_materials", []))
    for name in materials:
        expect(name in found, f"material {name!r} is not in the package: {sorted(found)}")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--materials", default="")
    options = parser.parse_args()
    job, objects, copied = check_panel(options.folder)
    check_job_folder(options.folder, job, copied)
    check_request(options.folder, job)
    check_package(options.folder, objects, [m for m in options.materials.split(",") if m])
    for problem in problems:
        print(f"{options.folder}: {problem}")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main())
