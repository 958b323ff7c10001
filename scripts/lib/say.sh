# What the scripts say to the user. All of it goes to standard error, so that
# standard output stays the program's own.
# shellcheck shell=bash

say() { printf '==> %s\n' "$*" >&2; }

fail() {
    printf 'error: %s\n' "$*" >&2
    exit 1
}
