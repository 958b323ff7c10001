# How long the stages of a long script took.
# shellcheck shell=bash

stage_times=()

# stage NAME COMMAND…: does something, and keeps how long that took.
stage() {
    local begin=$SECONDS
    "${@:2}"
    stage_times+=("$(printf '%6d s  %s' $((SECONDS - begin)) "$1")")
}

# stages_report: says how long each stage took, and all of them.
stages_report() {
    say "Up to here"
    printf '%s\n' "${stage_times[@]}" "$(printf '%6d s  all of these' "$SECONDS")" >&2
}
