#!/usr/bin/env bash
# Installs the Debian packages that building, running and testing Plaveno need.
# Safe to run again: apt-get skips what is already there.
set -euo pipefail

SUDO=""
if [ "$(id -u)" -ne 0 ]; then
    SUDO="sudo"
fi

PACKAGES=(
    build-essential cmake ninja-build ccache pkg-config
    clang clang-format libclang-rt-dev
    qt6-base-dev qt6-base-dev-tools qt6-svg-dev libqt6opengl6-dev libgl-dev
    qt6-qpa-plugins
    zlib1g-dev libutfcpp-dev libqrcodegencpp-dev libxcb1-dev
    googletest libgtest-dev libgmock-dev libbenchmark-dev libboost-dev
    libcgal-dev
    fpc castle-game-engine-src
    xvfb xauth fonts-dejavu-core xdotool imagemagick view3dscene
    desktop-file-utils appstream shared-mime-info dpkg-dev file
    poppler-utils python3-ezdxf
)

missing=()
for p in "${PACKAGES[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$p")
    fi
done

if [ "${#missing[@]}" -gt 0 ]; then
    export DEBIAN_FRONTEND=noninteractive
    $SUDO apt-get update -qq
    $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
