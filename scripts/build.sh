#!/usr/bin/env bash
# Configures and builds one build folder.
#   scripts/build.sh BUILD_DIR [cmake options...]
set -euo pipefail
cd "$(dirname "$0")/.."
build_dir=$1
shift
export CCACHE_BASEDIR="$PWD"
export CCACHE_NOHASHDIR=1
jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B "$build_dir" -G Ninja "$@" >/dev/null
ninja -C "$build_dir" -j "$jobs"
