# Vellomar's first settings; what they don't say is as the program has it from
# the start.
# shellcheck shell=bash

settings_folder() { printf '%s' "${XDG_DATA_HOME:-$HOME/.local/share}/Vellomar"; }

# settings_write DISK SOURCE…: a disk to back up to, and what to back up. All of
# them are absolute.
settings_write() {
    local folder
    folder=$(settings_folder)
    mkdir -p "$folder"
    chmod 700 "$folder"
    (
        umask 077
        jq -n --arg disk "$1" --args '{sources: $ARGS.positional, localEnabled: true,
            localFolder: $disk, keySaved: true}' -- "${@:2}" >"$folder/config.json.new"
    )
    mv -- "$folder/config.json.new" "$folder/config.json"
}
