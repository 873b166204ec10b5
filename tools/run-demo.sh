#!/usr/bin/env bash
# Installs what is missing, builds the release preset and runs pixora-demo.
# Arguments go to the demo (an image path, -o DIR, -r N); its output files
# go to ./pixora-demo-out unless -o says otherwise.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# shellcheck source=tools/deps.sh
source "$root/tools/deps.sh"

pixora_install_deps
(
    cd "$root"
    cmake --preset release >/dev/null
    cmake --build --preset release -j"$(pixora_jobs)" --target pixora-demo
)
exec "$root/build/release/tools/pixora-demo" "$@"
