# The Debian packages that Vellomar needs, and the one place where they are
# listed. Nothing is done, and nothing asked, when all of them are there.
# shellcheck shell=bash

# To build the program and to use it.
run_packages=(
    g++ cmake ninja-build pkg-config
    qt6-base-dev libsecret-1-dev libexpected-dev libicu-dev
    qt6-declarative-dev qt6-svg-dev bootstrap-icons fonts-inter fonts-quicksand polkitd
    qml6-module-qtquick qml6-module-qtquick-templates qml6-module-qtquick-window
    qml6-module-qtqml qml6-module-qtqml-models qml6-module-qtqml-workerscript
    qt6-translations-l10n qt6-l10n-tools
    dbus gnome-keyring libsecret-tools ca-certificates jq openssh-client procps
)

# Besides those, to show the window where there is no screen.
demonstration_packages=(xvfb xdotool imagemagick)

# Besides all those, to test it.
test_packages=(
    libgtest-dev libgmock-dev libgcrypt20-dev qml6-module-qttest
    clang-format clang-tidy shellcheck git
    strace python3 python3-dbus python3-gi python3-dbusmock libglib2.0-bin util-linux
    openssh-server apache2-bin samba python3-swift
    systemd dunst librsvg2-common
    openbox wmctrl xclip trayer poppler-utils
    at-spi2-core gir1.2-atspi-2.0 libxcb1-dev
)

# packages_install run|demonstration|test: installs those of the list that are missing.
packages_install() {
    local wanted=("${run_packages[@]}") missing log=$root/build/packages.log
    [[ $1 == run ]] || wanted+=("${demonstration_packages[@]}")
    [[ $1 != test ]] || wanted+=("${test_packages[@]}")
    mapfile -t missing < <(packages_missing "${wanted[@]}")
    ((${#missing[@]})) || return 0

    say "Installing the packages that are missing: ${missing[*]}"
    as_root true || fail "only root can install packages"
    mkdir -p "$root/build"
    # Lists that can't be refreshed are no failure yet: those at hand may do.
    as_root apt-get -q update >"$log" 2>&1 || true
    as_root DEBIAN_FRONTEND=noninteractive \
        apt-get -q install -y --no-install-recommends "${missing[@]}" >>"$log" 2>&1 </dev/null ||
        fail "the packages couldn't be installed (is the network reachable?); apt's own words are in $log"
}

# packages_missing NAME…: prints the names that aren't installed, one a line.
packages_missing() {
    local installed name
    installed=" $(dpkg-query -W -f '${db:Status-Status}:${Package} ' "$@" 2>/dev/null || true)"
    for name; do
        [[ $installed == *" installed:$name "* ]] || printf '%s\n' "$name"
    done
}

# as_root [NAME=VALUE…] COMMAND…: false too where nobody can be root.
as_root() {
    if ((EUID == 0)); then
        env "$@"
    else
        command -v sudo >/dev/null && sudo env "$@"
    fi
}
