#!/usr/bin/env bash
# The desktop files validate, and the Debian package, unpacked into a
# temporary folder, runs: plaveno-cli reads and draws a sample from there,
# and the thumbnailer entry calls it.
#   package_test.sh SOURCE_DIR BUILD_DIR
set -euo pipefail
source_dir=$1
build_dir=$2
linux=$source_dir/packaging/linux
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

desktop-file-validate "$linux/org.plaveno.Plaveno.desktop"
appstreamcli validate --no-net "$linux/org.plaveno.Plaveno.metainfo.xml"

# The file types, with the magic that finds a project without its name.
mkdir -p "$work/mime/packages"
cp "$linux/org.plaveno.Plaveno.xml" "$work/mime/packages/"
update-mime-database "$work/mime"
test -f "$work/mime/application/x-plaveno-project.xml"
grep -q 'x-plaveno-project' "$work/mime/globs2"
grep -q 'x-plaveno-project' "$work/mime/magic"

(cd "$build_dir" && cpack -G DEB -B "$work/package" >"$work/cpack.log") || {
    cat "$work/cpack.log"
    exit 1
}
deb=$(ls "$work"/package/plaveno_*.deb)
dpkg-deb -f "$deb" Depends | grep -q 'libqt6widgets6'
dpkg-deb -f "$deb" Depends | grep -q 'qt6-qpa-plugins'
dpkg-deb -x "$deb" "$work/root"
root=$work/root/usr
test -x "$root/bin/plaveno"
test -f "$root/share/applications/org.plaveno.Plaveno.desktop"
test -f "$root/share/icons/hicolor/scalable/apps/org.plaveno.Plaveno.svg"
test -f "$root/share/man/man1/plaveno-cli.1.gz"
test -f "$root/share/plaveno/Library.pvl"
# The 3D engine beside the programs, when the build made it.
if [ -f "$build_dir/src/libcastleengine.so" ]; then
    test -f "$root/bin/libcastleengine.so"
    nm -D --defined-only "$root/bin/libcastleengine.so" | grep -q ' CGE_SetNodeFieldValue_SFInt32$'
fi

# The unpacked program finds its data through share/plaveno.
"$root/bin/plaveno-cli" info "$root/share/plaveno/samples/Flat.pvp" | grep -q 'Room'
"$root/bin/plaveno-cli" render "$root/share/plaveno/samples/Flat.pvp" -o "$work/flat.png"
test -s "$work/flat.png"
test -f "$root/share/plaveno/Library.pvlz"
# The 3D prototype library, plain for external viewers and as the zlib
# stream of the built-in one, which must inflate to the plain text.
test -f "$root/share/plaveno/library.wrl"
python3 -c 'import sys, zlib; sys.exit(zlib.decompress(open(sys.argv[1], "rb").read()) != open(sys.argv[2], "rb").read())' \
    "$root/share/plaveno/library_cs.wrl" "$root/share/plaveno/library.wrl"
objects=$("$root/bin/plaveno-cli" library --json | grep -c '"number"' || true)
[ "$objects" -eq 293 ] || { echo "the unpacked program lists $objects library objects"; exit 1; }

# The thumbnailer's command, with its placeholders filled as a file
# manager does.
entry=$root/share/thumbnailers/plaveno.thumbnailer
grep -q '^MimeType=application/x-plaveno-project;$' "$entry"
command=$(sed -n 's/^Exec=//p' "$entry")
command=${command//%i/$root/share/plaveno/samples/Studio.pvp}
command=${command//%o/$work/thumb.png}
command=${command//%s/128}
(cd "$root/bin" && PATH="$root/bin:$PATH" eval "$command")
test -s "$work/thumb.png"
echo "package $(basename "$deb") checked"
