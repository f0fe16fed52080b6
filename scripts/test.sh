#!/usr/bin/env bash
# Installs what Plaveno needs, builds it and runs the whole test suite: the
# unit tests, the GUI tests on Qt's offscreen platform and under Xvfb, the
# fuzz targets over their seed corpora, then the unit tests again with
# AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install-deps.sh

echo "== Build and test =="
scripts/build.sh build -DCMAKE_BUILD_TYPE=RelWithDebInfo
(cd build && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j 2 -LE xvfb)
(cd build && xvfb-run -a -s "-screen 0 1280x1024x24" ctest --output-on-failure -L xvfb)

echo "== Build and test with AddressSanitizer and UndefinedBehaviorSanitizer =="
scripts/build.sh build-asan -DCMAKE_BUILD_TYPE=Debug -DPLAVENO_SANITIZE=ON -DPLAVENO_BUILD_GUI=OFF
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
export LSAN_OPTIONS=suppressions="$PWD/tests/lsan.supp"
(cd build-asan && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j 2)
