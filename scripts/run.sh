#!/usr/bin/env bash
# Installs what Plaveno needs, builds it and starts it.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh
scripts/build.sh build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DPLAVENO_BUILD_TESTS=OFF
exec build/src/plaveno "$@"
