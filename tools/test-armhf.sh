#!/usr/bin/env bash
# Cross-builds the armhf preset (armv7-a, NEON, hard float) and runs the whole
# test suite under qemu-arm. Exits non-zero when the build or a test fails.
#
#   tools/test-armhf.sh                 build in build/armhf
#   PIXORA_ARMHF_BUILD_DIR=DIR ...      build somewhere else
#   PIXORA_JOBS=N ...                   parallel jobs (default: nproc)
#
# Missing tools are installed by tools/setup-armhf.sh when run as root.
set -euo pipefail

root=$(cd "$(dirname "$0")/.." && pwd)
build=${PIXORA_ARMHF_BUILD_DIR:-$root/build/armhf}
jobs=${PIXORA_JOBS:-$(nproc)}

if ! command -v arm-linux-gnueabihf-g++ >/dev/null || ! command -v qemu-arm >/dev/null ||
    [[ ! -f /usr/lib/arm-linux-gnueabihf/cmake/hwy/hwy-config.cmake ]] ||
    [[ ! -f /usr/lib/arm-linux-gnueabihf/cmake/GTest/GTestConfig.cmake ]]; then
    if [[ $(id -u) -eq 0 ]]; then
        "$root/tools/setup-armhf.sh"
    else
        echo "test-armhf: the armhf toolchain is missing; run tools/setup-armhf.sh as root" >&2
        exit 1
    fi
fi

# Emulated runs are slow: the differential tests use smaller images (the same
# operations and cases).
export PIXORA_TEST_SMALL=1

start=$SECONDS
cmake --preset armhf -S "$root" -B "$build" >/dev/null
cmake --build "$build" -j "$jobs"
built=$SECONDS

status=0
ctest --test-dir "$build" -j "$jobs" --output-on-failure || status=$?
tested=$SECONDS

# The vector target the library runs on, for the log.
ctest --test-dir "$build" -R '^VectorTarget\.' -V 2>/dev/null | grep -o 'pixora vector target: .*' || true
echo "test-armhf: build $((built - start)) s, tests $((tested - built)) s under $(qemu-arm --version | head -1)"
exit "$status"
