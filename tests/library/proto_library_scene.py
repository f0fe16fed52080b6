#!/usr/bin/env python3
"""Loads the 3D prototype library in a scene that instantiates every
prototype it declares, the way the scene export uses them: once with the
library inlined in the scene, once through EXTERNPROTO lines that point at
the file. The scenes go through tovrmlx3d, which must print nothing on
stderr. With --grid the scene is written for looking at the objects: each
in a cell of a grid, at its catalogue size, under a light.

Usage: proto_library_scene.py LIBRARY.wrl [CATALOGUE.pvl]
           [--grid OUT.wrl [--only N,N,...] [--view front|back|left|top]]
Exit status 77 when tovrmlx3d is missing (the test is skipped)."""

import os
import re
import shutil
import subprocess
import sys
import tempfile

PROTO_RE = re.compile(r"^PROTO\s+(\w+)\s*\[", re.M)
FIELD_RE = re.compile(r"(field|exposedField|eventIn|eventOut)\s+(\w+)\s+(\w+)")

# Values of each field type that an instance passes, as the export does.
ARGUMENT = {
    "SFNode": "Appearance{material Material{diffuseColor .8 .6 .4}}",
    "SFColor": ".9 1 1",
    "SFVec3f": "1 1 1",
    "SFRotation": "0 1 0 .5",
    "SFFloat": "0",
    "MFNode": "[Shape{geometry Box{size .5 .5 .5}}]",
    "MFVec3f": "[0 0 0, 1 0 0, 0 1 0]",
    "MFVec2f": "[0 0, 1 0, 0 1]",
}
SPECIAL = {
    "texture": "PixelTexture{image 2 2 3 0xFF0000 0x00FF00 0x0000FF 0xFFFFFF}",
    "appearanceFront": "Appearance{material Material{diffuseColor .3 .45 .7}}",
    "geom": "Box{size 1 1 1}",
    "doormodel": "[Transform{translation .5 .5 .5 children Shape{appearance Appearance{material Material{"
                 "diffuseColor .85 .8 .7}} geometry Box{size 1 1 1}}}]",
}


def read_protos(path):
    with open(path, encoding="utf-8") as f:
        text = f.read()
    if not text.startswith("#VRML V2.0 utf8"):
        sys.exit("%s: not a VRML 2.0 file" % path)
    protos = []
    for m in PROTO_RE.finditer(text):
        # The interface runs to the matching bracket: defaults such as the
        # "[]" of an MFNode field nest inside it.
        end, depth = m.end(), 1
        while end < len(text) and depth:
            depth += {"[": 1, "]": -1}.get(text[end], 0)
            end += 1
        fields = FIELD_RE.findall(text[m.end():end])
        protos.append((m.group(1), fields))
    return text, protos


def instance(name, fields):
    args = []
    for _kind, ftype, fname in fields:
        value = SPECIAL.get(fname, ARGUMENT.get(ftype))
        if value is not None:
            args.append("%s %s" % (fname, value))
    return "%s{%s}" % (name, " ".join(args))


def extern_line(name, fields, url):
    decl = " ".join("field %s %s" % (ftype, fname) for _k, ftype, fname in fields)
    return 'EXTERNPROTO %s [%s] "%s#%s"' % (name, decl, url, name)


def catalogue_sizes(path):
    """Width, height and depth of each library number, in metres."""
    sizes = {}
    if not path:
        return sizes
    with open(path, encoding="utf-8-sig") as f:
        text = f.read()
    for section in re.split(r"\n\[Part\d+\]\n", text)[1:]:
        keys = dict(line.split("=", 1) for line in section.splitlines() if "=" in line)
        try:
            number = int(keys.get("LibObjID", "0"))
            w, d, h = (float(keys.get(k, "100")) / 100 for k in ("Width", "Height", "ZHeight"))
        except ValueError:
            continue
        if number and number not in sizes:
            sizes[number] = (w, max(h, .02), d)
    return sizes


def grid_scene(protos, library_text, sizes, only, view):
    lines = ["#VRML V2.0 utf8", library_text.split("\n", 1)[1],
             "NavigationInfo{headlight FALSE}",
             "DirectionalLight{direction .3 -1 -.6 intensity .8}",
             "DirectionalLight{direction -.5 -.4 .8 intensity .45}",
             "DirectionalLight{direction 0 1 0 intensity .25}",
             "Background{skyColor [.85 .9 .95]}"]
    shown = [(n, f) for n, f in protos if n.startswith("LibraryObject") and
             (not only or int(n[len("LibraryObject"):]) in only)]
    # Cells fit the largest object shown; trees and pools are shrunk to 2.6 m.
    largest = max([max(sizes.get(int(n[len("LibraryObject"):]), (1, 1, 1))[::2]) for n, _f in shown] + [1])
    cell = min(3.2, max(1.2, largest * 1.25))
    cols = max(1, int(len(shown) ** .5 + .999))
    for i, (name, fields) in enumerate(shown):
        number = int(name[len("LibraryObject"):])
        w, h, d = sizes.get(number, (1, 1, 1))
        k = min(1.0, cell * .8 / max(w, d))
        x, z = (i % cols) * cell, (i // cols) * cell
        lines.append("Transform{translation %.3f 0 %.3f children[Transform{translation %.3f 0 %.3f scale %.3f %.3f %.3f "
                     "children %s} Transform{translation 0 -.01 0 children Shape{appearance Appearance{material "
                     "Material{diffuseColor .75 .75 .72}} geometry Box{size %.2f .02 %.2f}}}]}"
                     % (x, z, -w * k / 2, -d * k / 2, w * k, h * k, d * k, instance(name, fields),
                        cell * .95, cell * .95))
    rows = (len(shown) + cols - 1) // cols
    cx, cz = (cols - 1) * cell / 2, (rows - 1) * cell / 2
    # Far enough back to see the tallest object whole.
    tallest = max([sizes.get(int(n[len("LibraryObject"):]), (1, 1, 1))[1] for n, _f in shown] + [1])
    span = max(max(cols, rows) * cell, 2.2 * min(tallest, cell * 2))
    # From the front, the back and the left, looking down; then straight down.
    # The first is the one a viewer starts with; --view picks another.
    views = {
        "front": ((cx, span * .62, cz + span * .78), "1 0 0 -.7"),
        "back": ((cx, span * .62, cz - span * .78), "0 .939 .343 3.1416"),
        "left": ((cx - span * .78, span * .62, cz), "-.324 -.889 -.324 1.689"),
        "top": ((cx, span * 1.1, cz), "1 0 0 -1.5708"),
    }
    order = [view] + [v for v in views if v != view] if view in views else list(views)
    for name in order:
        (x, y, z), orientation = views[name]
        lines.append("Viewpoint{position %.2f %.2f %.2f orientation %s description \"%s\"}"
                     % (x, y, z, orientation, name))
    return "\n".join(lines) + "\n"


def run(tool, scene, folder, label):
    path = os.path.join(folder, label + ".wrl")
    with open(path, "w", encoding="utf-8") as f:
        f.write(scene)
    result = subprocess.run([tool, path], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
    if result.returncode != 0 or result.stderr.strip():
        print("%s scene: tovrmlx3d exit %d\n%s" % (label, result.returncode, result.stderr))
        return False
    return True


def main(argv):
    args = [a for a in argv[1:]]
    grid_out = None
    only = set()
    if "--grid" in args:
        i = args.index("--grid")
        grid_out = args[i + 1]
        del args[i:i + 2]
    view = "front"
    if "--view" in args:
        i = args.index("--view")
        view = args[i + 1]
        del args[i:i + 2]
    if "--only" in args:
        i = args.index("--only")
        only = {int(v) for v in args[i + 1].split(",")}
        del args[i:i + 2]
    if not args:
        print(__doc__)
        return 2
    library = os.path.abspath(args[0])
    text, protos = read_protos(library)
    if not protos:
        print("%s: no PROTO declarations" % library)
        return 1
    if grid_out:
        with open(grid_out, "w", encoding="utf-8") as f:
            f.write(grid_scene(protos, text, catalogue_sizes(args[1] if len(args) > 1 else None), only, view))
        return 0
    tool = shutil.which("tovrmlx3d")
    if not tool:
        print("tovrmlx3d is not installed; skipped")
        return 77
    body = "\n".join("Transform{translation %d 0 0 children %s}" % (i * 2, instance(n, f))
                     for i, (n, f) in enumerate(protos))
    inlined = "#VRML V2.0 utf8\n" + text.split("\n", 1)[1] + "\n" + body + "\n"
    url = "file://" + library
    extern = "#VRML V2.0 utf8\n" + "\n".join(extern_line(n, f, url) for n, f in protos) + "\n" + body + "\n"
    with tempfile.TemporaryDirectory() as folder:
        ok = run(tool, inlined, folder, "inlined") and run(tool, extern, folder, "extern")
    print("%d prototypes instantiated" % len(protos))
    return 0 if ok else 1


if __name__ == "__main__":
    sys.exit(main(sys.argv))
