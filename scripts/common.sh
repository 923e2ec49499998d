# Sourced by the scripts in this folder: they work in the tree's root and say what they do.
cd "$(dirname "${BASH_SOURCE[0]}")/.."

step() { printf '\n== %s [%d min %02d s]\n' "$1" $((SECONDS / 60)) $((SECONDS % 60)); }

# build PRESET [TARGET …]: configures and builds, everything when no target is named.
build() {
    local preset=$1
    shift
    cmake --preset "$preset" >"build/configure-$preset.log" || { cat "build/configure-$preset.log" && return 1; }
    cmake --build --preset "$preset" -- --quiet "$@"
}

mkdir -p build
