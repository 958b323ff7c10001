# Pictures of the window's pages, taken of the real program on a virtual screen.
# shellcheck shell=bash

picture_processes=()
picture_pages=(panoramica ripristina cartelle destinazioni attivita impostazioni)

# pictures_take FOLDER: the program as it is in this home and session, page by page.
pictures_take() {
    local folder=$1 display='' window='' page=0 name last=/dev/null
    mkdir -p "$folder" "$HOME/run"
    rm -f -- "$folder"/*.png
    chmod 700 "$HOME/run"
    exec {display_number}< <(exec Xvfb -displayfd 1 -screen 0 1280x900x24 -nolisten tcp 2>/dev/null)
    picture_processes=($!)
    read -r -t 60 display <&"$display_number" || fail "no virtual screen could be started"
    DISPLAY=:$display XDG_RUNTIME_DIR=$HOME/run "$root/build/bin/vellomar" </dev/null >"$HOME/window.log" 2>&1 &
    picture_processes=($! "${picture_processes[@]}")
    window=$(DISPLAY=:$display timeout 60 xdotool search --sync --onlyvisible --name '^Vellomar$') ||
        fail "the window didn't open: $(cat -- "$HOME/window.log")"

    for name in "${picture_pages[@]}"; do
        # The rows of the sidebar; the hand goes out of the picture's way again.
        DISPLAY=:$display xdotool mousemove --window "$window" 110 $((146 + 45 * page)) click 1 \
            mousemove 1279 899
        picture_settled "$display" "$window" "$folder/$name.png"
        ! cmp -s -- "$folder/$name.png" "$last" || fail "the page $name didn't come"
        last=$folder/$name.png
        page=$((page + 1))
    done
    pictures_end
}

# picture_settled DISPLAY WINDOW FILE: a picture of the window once nothing in it moves any more.
picture_settled() {
    local attempt before=''
    for ((attempt = 0; attempt < 40; attempt++)); do
        sleep 0.5
        DISPLAY=:$1 import -window "$2" -define png:exclude-chunks=date,time "$3" ||
            fail "no picture could be taken of the window"
        [[ $(cksum <"$3") != "$before" ]] || return 0
        before=$(cksum <"$3")
    done
}

# pictures_end: ends what the pictures needed, the program first.
pictures_end() {
    local process
    for process in "${picture_processes[@]}"; do
        kill "$process" 2>/dev/null || true
        wait "$process" 2>/dev/null || true
    done
    picture_processes=()
}
