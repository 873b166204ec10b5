#!/usr/bin/env bash
# Installs a built tree into a temporary prefix and builds tests/install
# against it twice: through find_package(Pixora) (shared and static
# library) and through pkg-config. Runs the three programs.
# Usage: tools/check-install.sh [BUILD_DIR]   (default build/release)
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$(cd "${1:-$root/build/release}" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

echo "=== install into a temporary prefix"
cmake --install "$build" --prefix "$prefix" >/dev/null

echo "=== find_package(Pixora)"
cmake -S "$root/tests/install" -B "$work/cmake" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build "$work/cmake"
"$work/cmake/pixora_install_check"
"$work/cmake/pixora_install_check_static"

echo "=== pkg-config pixora"
pc=$(find "$prefix" -name pixora.pc -print -quit)
[[ -n $pc ]] || { echo "pixora.pc was not installed" >&2; exit 1; }
export PKG_CONFIG_PATH=$(dirname "$pc")
libdir=$(pkg-config --variable=libdir pixora)
# shellcheck disable=SC2046
cc -std=c99 -Wall -Wextra -Werror -pedantic "$root/tests/install/main.c" -o "$work/pc-check" \
    $(pkg-config --cflags --libs pixora)
LD_LIBRARY_PATH=$libdir "$work/pc-check"
echo "install check: passed"
