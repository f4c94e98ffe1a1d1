#!/usr/bin/env bash
# Makes sure the Debian packages the build needs are installed. As root it installs what
# is missing; otherwise it prints the one command to run and fails.
set -euo pipefail

packages=(
    build-essential cmake ninja-build pkg-config git
    clang clang-format libclang-rt-14-dev llvm
    googletest libgtest-dev libgmock-dev libbenchmark-dev
    qt6-base-dev libsystemd-dev libcanberra-dev libfontconfig-dev
    fonts-dejavu-core xvfb xauth dbus-daemon
)
# `make run` also needs what its tour on a virtual display uses: a window manager with a
# notification area, xdotool to click, and the X tools to wait for the server.
if [ "${1:-}" = run ]; then
    packages+=(xdotool icewm x11-utils qt6-qpa-plugins)
fi

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$p")
    fi
done

[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -eq 0 ]; then
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends "${missing[@]}"
else
    echo "Missing Debian packages. Run:"
    echo "  sudo apt-get install -y ${missing[*]}"
    exit 1
fi
