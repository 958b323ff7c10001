# What is checked without running the program: the scripts, the form of the
# code, and what clang-tidy sees in it.
# shellcheck shell=bash

# files_of_ours PATTERN…: the files of the work tree, new ones too, each ended by NUL.
files_of_ours() {
    git -C "$root" ls-files -z --cached --others --exclude-standard --deduplicate -- "$@"
}

# The files of scripts/lib are checked as parts of the scripts that use them.
check_scripts() {
    say "Checking the scripts"
    shellcheck --external-sources --check-sourced "$root"/scripts/{run,test,first-settings} "$root/tests/support"/{apart,user_manager}.sh "$root"/bench/{run,retention,connections,window} "$root/.ci/run" ||
        fail "shellcheck found faults in the scripts"
}

check_format() {
    say "Checking the form of the code"
    files_of_ours '*.h' '*.cpp' | xargs -0r clang-format --dry-run --Werror ||
        fail "clang-format would write that code differently"
}

# check_code FOLDER: all of the program that this build compiles. Where it compiles a library as one,
# so does clang-tidy, which reads the headers of Qt that often only.
check_code() {
    local folder=$root/$1 log=$root/$1/tidy.log here united
    here="^$(as_pattern "$root")/(platform|state|tools|engine|model|ui)/"
    mapfile -t united < <(find "$folder" -path '*/Unity/unity_*.cxx' -exec grep -lE "^#include \"${here#^}" {} +)
    say "Checking the code with clang-tidy"
    # A file that holds a library together includes sources, which is odd elsewhere.
    run-clang-tidy -quiet -checks=-bugprone-suspicious-include -j "$(nproc)" -p "$folder" "$here" \
        "${united[@]/#/^}" >"$log" 2>&1 && return
    grep -vE '^clang-tidy|warnings? generated' "$log" >&2
    fail "clang-tidy found faults in the code"
}

as_pattern() { printf '%s' "$1" | sed 's/[][\.*^$+?(){}|]/\\&/g'; }

# check_qml FOLDER: what qmllint says of the window in a build folder.
check_qml() {
    say "Checking the window with qmllint"
    quietly "$root/$1/qmllint.log" cmake --build "$root/$1" --target all_qmllint ||
        fail "qmllint found faults in the window"
}
