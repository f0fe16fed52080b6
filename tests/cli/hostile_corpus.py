#!/usr/bin/env python3
"""Hostile project files against the headless tool.

Writes a corpus of projects that try to read private files, exhaust time,
memory or disk, block on special files or smuggle terminal escapes, then runs
each through `info`, `render` (a picture and DXF), `print`, `convert` and
`export-3d` under a 1 GB address space and 10 s of CPU. Every run must end with exit 0 or 1, a failure must say so in one
line, and no output may carry a file from outside the project's folder.

    hostile_corpus.py PLAVENO_CLI [WORK_FOLDER]
"""

import os
import resource
import shutil
import stat
import subprocess
import sys
import tempfile
import zlib

HEAD = "\ufeff\r\n"
# What the tool may never carry into a project: system files and the private
# file planted beside the corpus folder, outside it.
SECRET = b"plaveno-secret-bytes-7f3a\n"


def plain(room="", floor="", parts=(), extra=""):
    text = HEAD + "[Room]\r\nFileVersion=1020\r\nEncoding=utf-8\r\nWidth=600\r\nHeight=400\r\n" + room
    text += "\r\n[Viewpoints]\r\n\r\n" + extra + "[Floor]\r\n" + floor
    text += "\r\n[RoomWalls]\r\n\r\n[FloorPlanDef]\r\n\r\n"
    for i, keys in enumerate(parts):
        text += "[Part%d]\r\n%s\r\n" % (i, keys)
    text += "[EndFloor]\r\n\r\n[PictureResizeCache]\r\n"
    return text.encode("utf-8")


def zero_bomb(size):
    """A zlib stream of `size` zero bytes, made without holding them."""
    packer = zlib.compressobj(9)
    chunk = bytes(1 << 20)
    out = [packer.compress(chunk) for _ in range(size >> 20)]
    out.append(packer.flush())
    return b"".join(out)


def container(entries, text):
    out = b"[Room]\r\nFileVersion=1020\r\nEncoding=utf-8\r\nCompression=zlib\r\n\r\n"
    for name, data, uncompressed in entries:
        out += b"[File]\r\nName=" + name.encode() + b"\r\nUncpSize=%d\r\n" % uncompressed
        out += b"DataSize=%d\r\n" % len(data) + data + b"\r\n\r\n"
    packed = zlib.compress(text, 1)
    out += b"[File]\r\nName=project.pvp\r\nUncpSize=%d\r\n" % len(text)
    out += b"DataSize=%d\r\n" % len(packed) + packed + b"\r\n\r\n"
    return out


def write(folder, name, data):
    path = os.path.join(folder, name)
    with open(path, "wb") as f:
        f.write(data)
    return path


def generate(folder):
    """The corpus: name -> path; FIFOs and planted links are made here too."""
    corpus = {}
    secret = os.path.join(os.path.dirname(folder), "secret.txt")
    with open(secret, "wb") as f:
        f.write(SECRET)
    refs = [
        "Type=0\r\nCaption=A\r\nSoundClip=/etc/shadow\r\nFileLink=/etc/passwd",
        "Type=0\r\nCaption=B\r\nSoundClip=../../../../../../proc/self/environ",
        "Type=0\r\nCaption=C\r\nSoundClip=../secret.txt\r\nOverlayTexture=/etc/passwd",
        "Type=0\r\nCaption=D\r\nAppearFill=/etc/passwd||0|0|0|0|-1|0|0|0|0|0|0|0xFFFFFF",
    ]
    corpus["private_refs"] = write(
        folder, "private_refs.pvp",
        plain(room="SkyBoxTop=/root/.bash_history\r\nSkyBoxLeft=../secret.txt\r\n",
              floor="BkgScan=0|0|100|100|/etc/hostname\r\n", parts=refs,
              extra="[Attachments]\r\nItem0=/etc/passwd|x|0|0|0|0\r\nItem1=../secret.txt|y|0|0|0|0\r\n\r\n"))
    corpus["private_refs_packed"] = write(folder, "private_refs_packed.pvp",
                                          container([], plain(parts=refs)))
    for name, value in (("nan", "nan"), ("inf", "inf"), ("big", "1e10"), ("huge", "1e300")):
        corpus["grid_" + name] = write(
            folder, "grid_%s.pvp" % name,
            plain(room="GridSize=%s\r\nSpaceAround=%s\r\nCaptionFont=Sans|%s|1|0|0\r\n" % (value, value, value),
                  parts=["Type=Label\r\nCaption=T\r\nPosX=10\r\nPosY=10\r\nWidth=%s\r\nLineThick=%s\r\n"
                         "Font=Sans|%s|1|0|0" % (value, value, value)]))
    corpus["tables"] = write(folder, "tables.pvp",
                             plain(parts=["Type=Table\r\nSubType=-1\r\nPosX=10\r\nPosY=10\r\nWidth=50\r\nHeight=50"]
                                   * 3000))
    corpus["empty_parts"] = write(folder, "empty_parts.pvp",
                                  plain(parts=[]).replace(b"[EndFloor]", b"[Part0]\r\n" * 1000000 + b"[EndFloor]"))
    corpus["long_comment"] = write(folder, "long_comment.pvp",
                                   plain(room="Comments=" + "x" * (100 << 20) + "\r\n"))
    bomb = zero_bomb(256 << 20)
    corpus["zero_bombs"] = write(folder, "zero_bombs.pvp",
                                 container([("a.bmp", bomb, 256 << 20), ("b.bmp", bomb, 256 << 20),
                                            ("c.bmp", bomb, 256 << 20)], plain()))
    escape = "\x1b]2;owned\x07\x1b[31m"
    corpus["escapes"] = write(folder, "escapes.pvp",
                              plain(room="SkyBoxTop=%spic.png\r\n" % escape,
                                    parts=["Type=0\r\nCaption=%s\r\nSoundClip=%sclip.wav" % (escape, escape)]))
    fifo = os.path.join(folder, "pipe.wav")
    os.mkfifo(fifo)
    corpus["fifo_ref"] = write(folder, "fifo_ref.pvp",
                               plain(room="SkyBoxTop=pipe.wav\r\n", floor="BkgScan=0|0|100|100|pipe.wav\r\n",
                                     parts=["Type=0\r\nSoundClip=pipe.wav",
                                            "Type=Logo\r\nWidth=50\r\nHeight=50\r\nAppearFill=pipe.wav||0|0"]))
    corpus["fifo_input"] = os.path.join(folder, "input_fifo.pvp")
    os.mkfifo(corpus["fifo_input"])
    return corpus, secret


# A sanitizer build reserves terabytes of address space for its shadow, so
# memory is bounded there by the sanitizer's own resident limit instead, and
# the slower build gets more processor time.
SANITIZED = os.environ.get("PLAVENO_SANITIZED") == "1"
if SANITIZED:
    os.environ["ASAN_OPTIONS"] = os.environ.get("ASAN_OPTIONS", "") + ":hard_rss_limit_mb=3072"


def limit():
    if not SANITIZED:
        resource.setrlimit(resource.RLIMIT_AS, (1 << 30, 1 << 30))
    cpu = 40 if SANITIZED else 10
    resource.setrlimit(resource.RLIMIT_CPU, (cpu, cpu))


def run(cli, args, cwd):
    try:
        done = subprocess.run([cli] + args, cwd=cwd, preexec_fn=limit, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, timeout=60 if SANITIZED else 30)
    except subprocess.TimeoutExpired:
        return None, b"", b"timed out"
    return done.returncode, done.stdout, done.stderr


def container_entries(path):
    """Names and bytes of the entries of a container the tool wrote."""
    with open(path, "rb") as f:
        data = f.read()
    entries, pos = [], 0
    while True:
        start = data.find(b"[File]\r\n", pos)
        if start < 0:
            return entries
        name = size = None
        uncompressed = 0
        pos = start + 8
        while True:
            end = data.index(b"\r\n", pos)
            line = data[pos:end]
            pos = end + 2
            key, _, value = line.partition(b"=")
            if key == b"Name":
                name = value.decode()
            elif key == b"UncpSize":
                uncompressed = int(value)
            elif key == b"DataSize":
                size = int(value.strip())
                break
        blob = data[pos:pos + size]
        pos += size
        entries.append((name, zlib.decompress(blob) if uncompressed else blob))


def main():
    cli = os.path.abspath(sys.argv[1])
    root = sys.argv[2] if len(sys.argv) > 2 else tempfile.mkdtemp(prefix="plaveno-hostile-")
    folder = os.path.join(root, "corpus")
    shutil.rmtree(root, ignore_errors=True)
    os.makedirs(folder)
    corpus, secret = generate(folder)
    forbidden = [SECRET]
    for system in ("/etc/passwd", "/etc/hostname", "/etc/shadow"):
        try:
            with open(system, "rb") as f:
                forbidden.append(f.read())
        except OSError:
            pass
    out = os.path.join(root, "out")
    os.makedirs(out)
    # A link planted at the temporary name of an output must not be written
    # through.
    victim = write(root, "victim.txt", b"untouched")
    os.symlink(victim, os.path.join(out, "planted.png.saving~"))
    os.symlink(victim, os.path.join(out, "planted.pvp.saving~"))
    os.symlink(victim, os.path.join(out, "planted.dxf.saving~"))
    os.symlink(victim, os.path.join(out, "planted.wrl.saving~"))
    os.mkfifo(os.path.join(out, "fifo_out.png"))

    failures = []
    for name, path in sorted(corpus.items()):
        runs = [("info", ["info", path]),
                ("render", ["render", path, "-o", os.path.join(out, "planted.png"), "--width", "400"]),
                ("convert", ["convert", path, os.path.join(out, "planted.pvp")]),
                ("print", ["print", path, "-o", os.path.join(out, "printed.pdf"), "--scale", "1:50"]),
                ("dxf", ["render", path, "-o", os.path.join(out, "planted.dxf")]),
                ("export-3d", ["export-3d", path, "-o", os.path.join(out, "planted.wrl")])]
        if name == "grid_huge":
            runs.append(("render-fifo-out", ["render", path, "-o", os.path.join(out, "fifo_out.png")]))
        for verb, args in runs:
            code, stdout, stderr = run(cli, args, folder)
            lines = stderr.decode(errors="replace").splitlines()
            if code not in (0, 1):
                failures.append("%s %s: exit %s, %s" % (verb, name, code, stderr[-300:]))
            elif code == 1 and len(lines) != 1:
                failures.append("%s %s: failed with %d lines on stderr" % (verb, name, len(lines)))
            if verb == "info" and b"\x1b" in stdout:
                failures.append("info %s: raw escape sequence in the output" % name)
            converted = os.path.join(out, "planted.pvp")
            if verb == "convert" and code == 0 and os.path.exists(converted):
                for entry_name, blob in container_entries(converted):
                    if any(secret_bytes and secret_bytes in blob for secret_bytes in forbidden) or \
                            entry_name in ("passwd", "shadow", "environ", ".bash_history", "hostname",
                                           "secret.txt"):
                        failures.append("convert %s: embedded %s" % (name, entry_name))
    with open(victim, "rb") as f:
        if f.read() != b"untouched":
            failures.append("an output was written through a planted link")
    if not stat.S_ISFIFO(os.lstat(os.path.join(out, "fifo_out.png")).st_mode):
        failures.append("the FIFO given as output was replaced")
    for failure in failures:
        print("FAIL:", failure)
    if len(sys.argv) <= 2:
        shutil.rmtree(root, ignore_errors=True)
    print("%d runs checked, %d failures" % (len(corpus) * 4 + 1, len(failures)))
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
