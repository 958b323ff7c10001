# What polkit must know of Vellomar, so that it can ask the user to log in
# once more before the key is shown. Nothing is done where it knows it already.
# shellcheck shell=bash

# polkit reads this one folder.
policy_folder=/usr/share/polkit-1/actions

# policy_install: puts the policy in place, which only root can do. Without it
# the program runs all the same, and asks for no login.
policy_install() {
    local name=it.vellomar.policy
    cmp -s -- "$root/resources/$name" "$policy_folder/$name" && return
    say "Telling polkit what the key asks a login for"
    as_root install -D -m 644 -- "$root/resources/$name" "$policy_folder/$name" ||
        say "Only root can do that: until then the key is shown and copied without a login"
}
