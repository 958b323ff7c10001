# Builds one of the presets of CMakePresets.json, only what changed, and says
# nothing where nothing did.
# shellcheck shell=bash

# build PRESET FOLDER TARGET: the target is "program", or one that has tests in it.
build() {
    local preset=$1 folder=$root/$2 target=$3 testing=ON
    # The program alone asks for no package that only tests need.
    [[ $target != program ]] || testing=OFF
    cd -- "$root" || return
    if ! build_configured "$folder" "$testing"; then
        say "Configuring the $preset build"
        quietly "$folder/configure.log" cmake --preset "$preset" -D BUILD_TESTING="$testing" ||
            fail "the $preset build couldn't be configured"
    fi
    # A dry run shows whether there is anything to do.
    [[ $(ninja -C "$folder" -n "$target") != *'no work to do'* ]] || return 0
    say "Building ($preset)"
    quietly "$folder/build.log" cmake --build "$folder" --target "$target" ||
        fail "the $preset build failed"
}

# build_configured FOLDER ON|OFF: true when the folder is set up, with the tests
# where they are asked for; a folder that has them serves the program too.
build_configured() {
    [[ -e $1/build.ninja && ! CMakePresets.json -nt $1/build.ninja ]] || return 1
    [[ $2 == OFF ]] || grep -qx 'BUILD_TESTING:[A-Z]*=ON' "$1/CMakeCache.txt"
}

# quietly LOG COMMAND…: keeps what the command prints in the log, and shows it
# only where the command fails.
quietly() {
    local log=$1
    shift
    mkdir -p "${log%/*}"
    "$@" >"$log" 2>&1 && return
    cat -- "$log" >&2
    return 1
}
