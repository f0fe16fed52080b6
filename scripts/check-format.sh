#!/usr/bin/env bash
# Every C++ file of the project is formatted with the project's .clang-format.
set -euo pipefail
cd "$(dirname "$0")/.."
files=$(git ls-files 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' 'bench/*.cpp' 'bench/*.h' 2>/dev/null || true)
if [ -z "$files" ]; then
    echo "format: no tracked files to check"
    exit 0
fi
# shellcheck disable=SC2086
clang-format --dry-run -Werror $files
echo "format: all files follow .clang-format"
