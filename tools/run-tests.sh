#!/usr/bin/env bash
# Installs what is missing, then builds and tests three presets:
#   release  every test
#   asan     every test under AddressSanitizer + UndefinedBehaviorSanitizer
#   tsan     the tests named *Concurrency* under ThreadSanitizer
# Prints ctest's summaries at the end (also kept in build/test-summary.txt)
# and exits non-zero when a build or a test failed.
set -uo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
# shellcheck source=tools/deps.sh
source tools/deps.sh

pixora_install_deps || exit 1
jobs=$(pixora_jobs)
summary=build/test-summary.txt
mkdir -p build
: >"$summary"
failed=0

# ThreadSanitizer needs a memory layout that some kernels' address
# randomisation breaks; run its tests without randomisation where allowed.
tsan_runner=()
if setarch "$(uname -m)" -R true 2>/dev/null; then
    tsan_runner=(setarch "$(uname -m)" -R)
fi

seconds() { date +%s; }

run_preset() {
    local preset=$1 t0 t1 t2 log=build/ctest-$1.log
    local runner=()
    [[ $preset == tsan ]] && runner=("${tsan_runner[@]}")
    echo "=== $preset: configure and build"
    t0=$(seconds)
    if ! cmake --preset "$preset" >/dev/null || ! cmake --build --preset "$preset" -j"$jobs"; then
        echo "$preset: BUILD FAILED" | tee -a "$summary"
        failed=1
        return
    fi
    t1=$(seconds)
    echo "=== $preset: test"
    "${runner[@]}" ctest --preset "$preset" -j"$jobs" 2>&1 | tee "$log"
    local rc=${PIPESTATUS[0]}
    t2=$(seconds)
    {
        echo "$preset (build $((t1 - t0)) s, tests $((t2 - t1)) s):"
        grep -E "tests passed|No tests were found" "$log" || echo "ctest gave no summary"
        grep -A200 -E "^The following tests (FAILED|did not run)" "$log" || true
    } >>"$summary"
    [[ $rc -eq 0 ]] || failed=1
}

for preset in release asan tsan; do
    run_preset "$preset"
done

echo
echo "=== Test summary"
cat "$summary"
exit "$failed"
