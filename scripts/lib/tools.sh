# restic and rclone, in the versions that Vellomar needs, in the program's own
# folder of tools, and their notices in its folder of licences. They come as
# Debian packages from the newest suite that has them, through lists and
# settings of our own: the machine's package sources are read, never changed.
# apt checks the signatures.
# shellcheck shell=bash

declare -A tool_needs=([restic]=0.17.1 [rclone]=1.68)
tool_suites=(sid testing stable)

# tools_install: puts in place the tools that are missing or too old, and their notices.
tools_install() {
    local folder=$root/build/share/vellomar/bin licenses=$root/build/share/vellomar/licenses
    local tool wanted=()
    for tool in "${!tool_needs[@]}"; do
        [[ -s $licenses/$tool.txt ]] && tool_good "$tool" "$folder/$tool" || wanted+=("$tool")
    done
    ((${#wanted[@]})) || return 0
    command -v apt-get >/dev/null ||
        fail "${wanted[*]} must be taken from Debian's packages, and this machine has no apt-get"

    say "Taking ${wanted[*]} from Debian's newest packages"
    mkdir -p "$folder" "$licenses"
    # In a subshell, whose end removes everything that was only needed on the way.
    (
        work=$(mktemp -d "$root/build/tools.XXXXXX")
        trap 'rm -rf -- "$work"' EXIT
        tools_fetch "$work" "$folder" "${wanted[@]}"
    )
}

# tools_fetch WORK FOLDER TOOL…
tools_fetch() {
    local work=$1 folder=$2 mirror suite tool left reached='' found=none
    shift 2
    local wanted=("$@")
    mirror=$(tools_mirror "$work") ||
        fail "${wanted[*]} can't be found: no archive of Debian is reachable through this machine's package sources"

    for suite in "${tool_suites[@]}"; do
        tools_apt_settings "$work" "$mirror" "$suite"
        tools_apt "$work" update || continue
        reached=yes left=()
        for tool in "${wanted[@]}"; do
            tools_take "$work" "$folder" "$tool" || left+=("$tool")
        done
        wanted=("${left[@]}")
        ((${#wanted[@]})) || return 0
    done

    [[ -n $reached ]] ||
        fail "${wanted[*]} must be taken from $mirror, which can't be read: is there a network?"
    tool=${wanted[0]}
    fail "no suite of Debian has $tool ${tool_needs[$tool]} or newer (the last one found: $found)"
}

# tools_take WORK FOLDER TOOL: true when the suite has it, good, and it is now
# in place.
tools_take() {
    local work=$1 folder=$2 tool=$3 version
    rm -rf -- "${work:?}/packages" "$work/unpacked"
    mkdir "$work/packages"
    (cd "$work/packages" && tools_apt "$work" download "$tool") || return 1
    dpkg-deb -x "$work/packages/$tool"_*.deb "$work/unpacked" || return 1
    version=$(tool_version "$tool" "$work/unpacked/usr/bin/$tool")
    found=${version:-one that does not run}
    tool_good "$tool" "$work/unpacked/usr/bin/$tool" || return 1
    # The same file system, so the tool is there whole or not at all; its notice before it.
    mv -f -- "$work/unpacked/usr/share/doc/$tool/copyright" "$licenses/$tool.txt" || return 1
    mv -f -- "$work/unpacked/usr/bin/$tool" "$folder/$tool" || return 1
    say "$tool $version is in place"
}

# tools_mirror WORK: prints the address of Debian's archive that this machine uses.
tools_mirror() {
    local work=$1 sites
    # Origins are known once lists have been fetched; where the machine has
    # none, they are fetched into a folder of ours.
    sites=$(tools_sites)
    if [[ -z $sites ]]; then
        mkdir -p "$work/machine"
        apt-get -qq -o Dir::State::Lists="$work/machine" -o APT::Sandbox::User="$(id -un)" \
            update >"$work/log" 2>&1 || true
        sites=$(tools_sites -o Dir::State::Lists="$work/machine")
    fi
    # A machine may have the security updates as its only source: the archive
    # itself stands beside them.
    sites=$(sed -e '/^cdrom:/d' -e 's/-security//' <<<"$sites" | head -n 1)
    [[ -n $sites ]] && printf '%s' "$sites"
}

# tools_sites [OPTION…]: prints the sites that have Debian's main component, the
# archive (labelled Debian) before its security updates (Debian-Security).
tools_sites() {
    # shellcheck disable=SC2016
    apt-get indextargets "$@" --format '$(LABEL)|$(SITE)' \
        'Created-By: Packages' 'Origin: Debian' 'Component: main' 2>/dev/null |
        LC_ALL=C sort -t '|' -k 1,1 | cut -d '|' -f 2
}

# tools_apt WORK WORD…: apt-get under the settings of our own. A list that can't
# be fetched is a failure.
tools_apt() {
    local work=$1
    shift
    apt-get -qq -c "$work/apt.conf" "$@" >"$work/log" 2>&1
}

# tools_apt_settings WORK MIRROR SUITE: the settings for one suite.
tools_apt_settings() {
    local work=$1
    rm -rf -- "$work/lists" "$work/cache"
    mkdir -p "$work/lists/partial" "$work/cache/archives/partial"
    : >"$work/status"
    printf 'deb [arch=%s target=Packages signed-by=%s] %s %s main\n' "$(dpkg --print-architecture)" \
        /usr/share/keyrings/debian-archive-keyring.gpg "$2" "$3" >"$work/sources.list"
    cat >"$work/apt.conf" <<EOF
Dir::Etc::SourceList "$work/sources.list";
Dir::Etc::SourceParts "/dev/null";
Dir::Etc::Preferences "/dev/null";
Dir::Etc::PreferencesParts "/dev/null";
Dir::State::Lists "$work/lists";
Dir::State::Status "$work/status";
Dir::Cache "$work/cache";
APT::Default-Release "";
APT::Sandbox::User "$(id -un)";
APT::Update::Error-Mode "any";
Acquire::Languages "none";
#clear APT::Update::Pre-Invoke;
#clear APT::Update::Post-Invoke;
#clear APT::Update::Post-Invoke-Success;
EOF
}

# tool_good TOOL FILE: true when the file runs and is new enough.
tool_good() {
    [[ -x $2 ]] && dpkg --compare-versions "$(tool_version "$@")" ge "${tool_needs[$1]}"
}

# tool_version TOOL FILE: prints the version that the tool says it is; nothing
# where it doesn't run.
tool_version() {
    local words
    words=$("$2" version 2>/dev/null | head -n 1) || true
    if [[ $words =~ ^$1\ v?([0-9]+(\.[0-9]+)+) ]]; then
        printf '%s' "${BASH_REMATCH[1]}"
    fi
}
