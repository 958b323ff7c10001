# A session bus with an unlocked keyring, for machines and logins that have
# none: a server, a container, a terminal.
# shellcheck shell=bash

# True when this login has a session bus.
session_here() {
    [[ -n ${DBUS_SESSION_BUS_ADDRESS-} || -S ${XDG_RUNTIME_DIR:-/nowhere}/bus ]]
}

# True when this login can show a window, or ask for the keyring's password in one.
desktop_here() {
    session_here && [[ -n ${DISPLAY-}${WAYLAND_DISPLAY-} ]]
}

# True when secrets can be read and stored as things are. Without a desktop no
# one could answer a locked keyring, so it must be open already.
keyring_here() {
    desktop_here || { session_here && keyring_served && keyring_open; }
}

# session_open PASSWORD: opens a private session over the keyring in HOME, which
# is made with that password where there is none yet. The session ends with the
# script, or with the program that the script becomes by exec.
session_open() {
    local folder bus attempt
    folder=$(mktemp -d)
    # The keyring's daemon has its socket in the folder too, even when the bus
    # is what starts it.
    bus=$(XDG_RUNTIME_DIR=$folder dbus-daemon --session --fork --print-pid \
        --address="unix:path=$folder/bus") || fail "no session bus could be started"
    session_closes_with $$ "$bus" "$folder"
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$folder/bus

    # The password is handed over on standard input: arguments can be read by anyone.
    printf '%s' "$1" | XDG_RUNTIME_DIR=$folder \
        setsid --wait gnome-keyring-daemon --unlock --components=secrets >/dev/null 2>&1 ||
        fail "the keyring couldn't be started"
    for ((attempt = 0; attempt < 100; attempt++)); do
        keyring_served && break
        sleep 0.1
    done
    keyring_open || fail "the keyring couldn't be opened: is that its password?"
}

# session_closes_with PROCESS BUS FOLDER: ends the bus when the process is gone,
# however it went. A process of its own session does it, out of the reach of a
# terminal's Ctrl-C: the program ends first, and still has its keyring then.
session_closes_with() {
    # shellcheck disable=SC2016
    (setsid bash -c 'tail -s 0.1 --pid="$1" -f /dev/null; kill "$2"; rm -rf -- "$3"' \
        session "$@" </dev/null >/dev/null 2>&1 &)
}

# session_ask: prints the keyring's password, asked for at the terminal, or the
# first line of standard input.
session_ask() {
    local password='' again
    if [[ -t 0 ]]; then
        if keyring_exists; then
            read -rsp "Password of your keyring: " password && echo >&2
        else
            say "The key of your backup is kept in a keyring, which is made now."
            read -rsp "Choose a password for it: " password && echo >&2
            read -rsp "Once more: " again && echo >&2
            [[ $password == "$again" ]] || fail "the two passwords differ"
        fi
    else
        read -r password || true
    fi
    [[ -n $password ]] ||
        fail "no session bus is here, so the keyring's password is needed: type it, or put it in the first line of standard input"
    printf '%s' "$password"
}

keyring_exists() { [[ -e ${XDG_DATA_HOME:-$HOME/.local/share}/keyrings/login.keyring ]]; }

# True when a keyring answers on the session bus; asking starts none.
keyring_served() {
    [[ $(dbus-send --session --print-reply=literal --dest=org.freedesktop.DBus / \
        org.freedesktop.DBus.NameHasOwner string:org.freedesktop.secrets 2>/dev/null) == *true ]]
}

# True when the keyring for new secrets is unlocked.
keyring_open() {
    [[ $(dbus-send --session --print-reply=literal --dest=org.freedesktop.secrets \
        /org/freedesktop/secrets/aliases/default org.freedesktop.DBus.Properties.Get \
        string:org.freedesktop.Secret.Collection string:Locked 2>/dev/null) == *false ]]
}
