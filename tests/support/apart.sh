#!/bin/sh
# apart.sh PROGRAM WORD…: runs a test where there are no processes but its own, as it may end some by
# their name. The first of them is this shell.
own_rights=
[ "$(id -u)" = 0 ] || own_rights='--map-current-user --keep-caps'
# shellcheck disable=SC2016,SC2086
exec unshare $own_rights --pid --fork --mount-proc --kill-child sh -c '"$@"; exit $?' apart "$@"
