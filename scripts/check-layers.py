#!/usr/bin/env python3
"""Lower layers never include a header of a higher one.

Includes are written without folders, so a header is found by its name in
the source folders. Layers of one rank may include each other."""
import os
import re
import sys

RANKS = {
    "base": 0,
    "io": 1,
    "loc": 2,
    "draw": 3,
    "model": 4,
    "objects": 4,
    "library": 5,
    "editing": 5,
    "scene": 5,
    "output": 5,
    "core": 5,
    "ui": 6,
    "cli": 6,
    "viewer": 6,
}


def main():
    src = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "src")
    home = {}
    files = []
    for folder in os.listdir(src):
        path = os.path.join(src, folder)
        if not os.path.isdir(path):
            continue
        if folder not in RANKS:
            print(f"src/{folder} has no layer; give it a rank in scripts/check-layers.py")
            return 1
        for name in os.listdir(path):
            if not name.endswith((".h", ".cpp")):
                continue
            files.append((folder, name))
            if not name.endswith(".h"):
                continue
            if name in home:
                print(f"{name} is in both src/{home[name]} and src/{folder}")
                return 1
            home[name] = folder
    bad = []
    include = re.compile(r'\s*#\s*include\s+"([^"]+)"')
    for folder, name in sorted(files):
        with open(os.path.join(src, folder, name), encoding="utf-8", errors="replace") as f:
            for number, line in enumerate(f, 1):
                match = include.match(line)
                if not match:
                    continue
                target = home.get(os.path.basename(match.group(1)))
                if target and RANKS[target] > RANKS[folder]:
                    bad.append(f"src/{folder}/{name}:{number} includes {match.group(1)} of src/{target}")
    if bad:
        print("Includes that run from a lower layer up:")
        print("\n".join(bad))
        return 1
    print("layers: no include runs upward")
    return 0


if __name__ == "__main__":
    sys.exit(main())
