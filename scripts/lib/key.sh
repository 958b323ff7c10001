# The key of the backup in the keyring. It goes through pipes alone, so that no
# argument and no environment of any process ever has it.
# shellcheck shell=bash

key_place=(service it.vellomar.app account repository-key)

# True when the keyring has a key; a keyring that can't be read is a failure.
key_here() {
    local refusal
    refusal=$(secret-tool lookup "${key_place[@]}" 2>&1 >/dev/null) && return
    [[ -z $refusal ]] || fail "the keyring can't be read: $refusal"
    return 1
}

# Prints a new key: 32 characters of an alphabet without those that look alike.
# Bytes outside it are dropped, so every character is as likely as any other.
key_new() {
    local bytes
    bytes=$(head -c 4096 /dev/urandom |
        LC_ALL=C tr -dc 'abcdefghijkmnpqrstuvwxyzABCDEFGHJKLMNPQRSTUVWXYZ23456789')
    printf '%s' "${bytes:0:32}"
}

# Puts standard input in the keyring as the key.
key_store() {
    secret-tool store --label='Vellomar' "${key_place[@]}" ||
        fail "the key couldn't be put in the keyring"
}

# Prints the key.
key_read() { secret-tool lookup "${key_place[@]}"; }
