# The main job where there is no desktop: a sample folder is backed up to a
# sample disk, changed, backed up again, and restored, all in a temporary home, and the window
# is shown in pictures.
# shellcheck shell=bash

demonstration() {
    # The folders of a real home; nothing of the user's own is touched.
    HOME=$(mktemp -d)
    export HOME
    unset XDG_DATA_HOME XDG_CONFIG_HOME XDG_CACHE_HOME XDG_STATE_HOME
    trap 'pictures_end; rm -rf -- "$HOME"' EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
    local sample=$HOME/Sample disk=$HOME/Disk restored=$HOME/Restored pictures=$root/build/pictures/pages

    say "No desktop here: this is a backup in a private session, in the temporary home $HOME"
    session_open "$(key_new)"
    key_new | key_store
    sample_make "$sample"
    mkdir "$disk"
    settings_write "$disk" "$sample"

    say "First backup, of $(sample_size "$sample")"
    backup_shown
    # Of the versions of one hour the last is kept, so the first is dated back.
    say "A day passes (the first version is given yesterday's date)"
    restic_here rewrite --forget --new-time "$(date -d yesterday '+%F %T')" latest
    sample_change "$sample"
    say "Second backup, after a change, a new file and a removed one"
    backup_shown
    say "What the log says"
    cat -- "$(settings_folder)/backup.log" >&2

    say "The versions on the disk"
    restic_here snapshots
    say "Restoring the last version"
    restic_here restore "latest:$sample" --target "$restored"
    diff -r --no-dereference "$sample" "$restored" ||
        fail "what was restored differs from what was backed up"
    diff <(sample_modes "$sample") <(sample_modes "$restored") ||
        fail "modes or times of what was restored differ"
    say "The window, page by page"
    pictures_take "$pictures"
    say "Shown: an encrypted backup, a check of the disk, a second version of the changes alone, and a restore that is equal byte by byte, with names, modes and times. The pictures of the window are in $pictures"
}

# A backup by the program, and what its history says of it.
backup_shown() {
    "$root/build/bin/vellomar" --backup --manual || fail "the backup failed: $(newest_backup .message)"
    newest_backup '"    new files: \(.filesNew), changed: \(.filesChanged), added to the disk: \(.dataAdded) bytes"'
}

# newest_backup FILTER: applies a filter of jq to the record of the newest backup.
newest_backup() { jq -r "map(select(.kind == null))[0] | $1" "$(settings_folder)/history.json"; }

# restic WORD… on the sample disk; restic reads the key from standard input.
restic_here() {
    key_read | "$root/build/share/vellomar/bin/restic" -q --no-cache -r "$HOME/Disk/Vellomar.backup" "$@"
}

# sample_make FOLDER: files with ordinary names, and odd ones.
sample_make() {
    mkdir -p "$1/Documenti [vecchi]" "$1/写真" "$1/an empty one"
    cd -- "$1" || return
    printf 'una lettera\n' >"Documenti [vecchi]/lettera con spazi.txt"
    printf 'quoted\n' >"it's \"quoted\" \\ and * starred?.txt"
    printf 'two lines\n' >$'two\nlines.txt'
    printf 'latin\n' >$'not UTF-8 \xe8\xff.txt'
    printf 'фото\n' >"写真/Фото ① é.jpg"
    printf 'private\n' >private.txt
    printf '#!/bin/sh\n' >tool.sh
    : >empty
    head -c 3000000 /dev/urandom >film.bin
    ln -s "Documenti [vecchi]/lettera con spazi.txt" link
    chmod 600 private.txt
    chmod 755 tool.sh
    chmod 700 "写真"
}

sample_change() {
    cd -- "$1" || return
    printf 'a line more\n' >>"Documenti [vecchi]/lettera con spazi.txt"
    head -c 200000 /dev/urandom >"写真/new one.jpg"
    rm empty
}

sample_size() { printf '%s files, %s' "$(find "$1" -type f -printf . | wc -c)" "$(du -sh "$1" | cut -f 1)"; }

# Each name with its type, mode and time of change.
sample_modes() { (cd -- "$1" && find . -mindepth 1 -printf '%p %y %m %T@\n' | LC_ALL=C sort); }
