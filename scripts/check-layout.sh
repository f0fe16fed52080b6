#!/usr/bin/env bash
# The core runs without a display: Qt Widgets belong to src/ui alone, and
# painting with QPainter to the drawing surface and the widgets; and no
# layer includes a header of a layer above it.
set -euo pipefail
cd "$(dirname "$0")/.."
bad=$(grep -rlE '#include <(QtWidgets/|QWidget|QApplication|QMainWindow|QDialog|QMessageBox|QLineEdit)' src \
    --include='*.h' --include='*.cpp' | grep -v '^src/ui/' || true)
if [ -n "$bad" ]; then
    echo "Qt Widgets used outside src/ui:"
    echo "$bad"
    exit 1
fi
painters=$(grep -rl '#include <QPainter>' src --include='*.h' --include='*.cpp' \
    | grep -vE '^src/ui/|CVxQtDC|CVxAppearanceTileGen|CVxAppearance\.cpp' || true)
if [ -n "$painters" ]; then
    echo "QPainter used outside the drawing surface and the widgets:"
    echo "$painters"
    exit 1
fi
echo "layout: core free of widgets"
python3 scripts/check-layers.py
