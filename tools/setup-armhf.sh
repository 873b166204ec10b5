#!/usr/bin/env bash
# Installs what the armhf cross build and its emulated test run need on a
# Debian 12 machine: the arm-linux-gnueabihf cross compiler, qemu-arm, and the
# armhf builds of Highway and GoogleTest beside the native ones.
# Run as root. Each step is skipped when its result is already in place.
set -euo pipefail

if [[ $(id -u) -ne 0 ]]; then
    echo "setup-armhf: run as root" >&2
    exit 1
fi

export DEBIAN_FRONTEND=noninteractive

# Packages and the file that proves each one is installed.
packages=(
    g++-arm-linux-gnueabihf
    qemu-user
    libhwy-dev:armhf
    libgtest-dev:armhf
    libgmock-dev:armhf
)

installed() {
    dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null | grep -qx installed
}

missing=()
for p in "${packages[@]}"; do
    installed "$p" || missing+=("$p")
done

if [[ ${#missing[@]} -eq 0 ]]; then
    echo "setup-armhf: everything already installed"
    exit 0
fi

if ! dpkg --print-foreign-architectures | grep -qx armhf; then
    dpkg --add-architecture armhf
fi
# A mirror that is mid-sync can fail one index (seen with the security
# suite's armhf list); the packages come from the main suite, so go on and let
# the install step decide.
apt-get update -q -o Acquire::Retries=3 ||
    echo "setup-armhf: apt-get update reported errors; trying the install anyway" >&2
# The -dev packages are Multi-Arch: same, so the armhf copies install beside
# the amd64 ones (same version, identical headers).
apt-get install -y -q --no-install-recommends "${missing[@]}"
echo "setup-armhf: installed ${missing[*]}"
