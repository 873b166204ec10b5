# The Debian 12 packages Pixora needs, in one place. Sourced by
# tools/run-demo.sh and tools/run-tests.sh; pixora_install_deps installs
# whatever of them is missing (apt-get runs only then).

# Building, testing, benchmarking and the demo's image files.
PIXORA_PACKAGES=(
    build-essential cmake ninja-build pkg-config
    libhwy-dev libgtest-dev libgmock-dev libbenchmark-dev
    libpng-dev libjpeg-dev
)
# Peers: test oracles and benchmark baselines only.
PIXORA_PEER_PACKAGES=(
    libopencv-imgproc-dev libopencv-imgcodecs-dev libopencv-video-dev libopencv-features2d-dev
    libyuv-dev
)
# Real photographs for the tracking demo, the peer cross-checks and the
# benchmarks: the sample images of OpenCV's documentation package (a
# 640x480 frame pair among them), read from PIXORA_PHOTO_DIR.
PIXORA_DATA_PACKAGES=(opencv-doc)

# Whether a package is installed for this machine's architecture. With a
# foreign architecture added (the armhf job does that), a package installed
# for both is ambiguous by its bare name, so the native one is asked for.
pixora_installed() {
    local ok='^Status: install ok installed'
    dpkg -s "$1" 2>/dev/null | grep -q "$ok" ||
        dpkg -s "$1:$(dpkg --print-architecture)" 2>/dev/null | grep -q "$ok"
}

pixora_missing_packages() {
    local p
    for p in "${PIXORA_PACKAGES[@]}" "${PIXORA_PEER_PACKAGES[@]}" "${PIXORA_DATA_PACKAGES[@]}" "$@"; do
        pixora_installed "$p" || echo "$p"
    done
}

# Installs the missing packages (plus any named as arguments).
pixora_install_deps() {
    local missing
    mapfile -t missing < <(pixora_missing_packages "$@")
    if [[ ${#missing[@]} -eq 0 ]]; then
        return 0
    fi
    local sudo=()
    if [[ $(id -u) -ne 0 ]]; then
        if ! command -v sudo >/dev/null; then
            echo "Missing packages: ${missing[*]}; run as root to install them." >&2
            return 1
        fi
        sudo=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    # A mirror that is mid-sync fails some index files; the install below
    # still works from the others, and fails by itself if it cannot.
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q ||
        echo "apt-get update reported errors; installing with the lists it has" >&2
    "${sudo[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -q --no-install-recommends "${missing[@]}"
}

# Parallel build jobs: one per processor.
pixora_jobs() {
    nproc 2>/dev/null || echo 2
}
