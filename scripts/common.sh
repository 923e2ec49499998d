# shellcheck shell=bash
# Sourced by the scripts in this folder: they work in the tree's root and say what they do.
cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit

step() { printf '\n== %s [%d min %02d s]\n' "$1" $((SECONDS / 60)) $((SECONDS % 60)); }

# build PRESET [TARGET …]: configures and builds, everything when no target is named.
build() {
    local preset=$1
    shift
    cmake --preset "$preset" >"build/configure-$preset.log" || { cat "build/configure-$preset.log" && return 1; }
    cmake --build --preset "$preset" -- "${ninja_quietly[@]}" "$@"
}

# On a terminal ninja keeps its progress on one line; a log is spared it.
ninja_quietly=()
[ -t 1 ] || ninja_quietly=(--quiet)

# run_fuzzer NAME SECONDS [OPTION …]: goes on from the corpus in the tree and from what
# earlier runs added to it in build/corpus; what breaks it lands in the artefacts.
run_fuzzer() {
    local corpora=("build/corpus/$1") findings=build/artefacts/$1
    mkdir -p "build/corpus/$1" "$findings"
    if [ -d "fuzz/corpus/$1" ]; then corpora+=("fuzz/corpus/$1"); fi
    "build/fuzz/fuzz/$1" -max_total_time="$2" -timeout=10 -rss_limit_mb=2048 \
        -artifact_prefix="$findings/" "${@:3}" "${corpora[@]}" || return
    rmdir "$findings"  # it is empty when nothing broke
}

mkdir -p build
