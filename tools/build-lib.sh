# shellcheck shell=bash disable=SC2154
# Shared by ./run and ./test: where a preset is built, and building it. Expects source_dir.

# Build tree of a preset, outside the source tree. STATION_BUILD_DIR replaces the place the presets
# name; a clone whose parent cannot be written to is built in the user's cache.
build_dir() {
    local preset=$1 parent name
    parent=$(dirname "$source_dir")
    name=build-$(basename "$source_dir")
    if [ -n "${STATION_BUILD_DIR:-}" ]; then
        echo "$STATION_BUILD_DIR/$preset"
    elif [ -w "$parent" ]; then
        echo "$parent/$name/$preset"
    else
        echo "${XDG_CACHE_HOME:-$HOME/.cache}/operator-station/$name/$preset"
    fi
}

# build PRESET [TARGET...]: everything when no target is named.
build() {
    local preset=$1
    shift
    local dir
    dir=$(build_dir "$preset")
    (cd "$source_dir" && cmake --preset "$preset" -B "$dir" --log-level=WARNING >/dev/null) || return
    cmake --build "$dir" --parallel "$(nproc)" ${1:+--target "$@"}
}
