# What the measurements share: a home of their own, files to back up, figures in a table.
# shellcheck shell=bash

# 1 as soon as a target was missed.
missed=0

# home_make: an empty home with the folders of a real one, removed at the end of the script. Nothing
# of the user's own is touched.
home_make() {
    HOME=$(mktemp -d)
    export HOME LC_ALL=C.UTF-8
    unset XDG_DATA_HOME XDG_CONFIG_HOME XDG_CACHE_HOME XDG_STATE_HOME
    trap 'rm -rf -- "$HOME"' EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
}

# files_make FOLDER FOLDERS: so many folders with a hundred files of about a kilobyte each.
files_make() {
    mkdir -p -- "$1"
    awk -v top="$1" -v folders="$2" 'BEGIN {
        for (d = 0; d < folders; d++) {
            folder = sprintf("%s/folder %03d", top, d)
            system("mkdir \"" folder "\"")
            for (f = 0; f < 100; f++) {
                file = sprintf("%s/file %02d.txt", folder, f)
                for (line = 0; line < 40; line++)
                    printf "line %d of file %d of folder %d\n", line, f, d > file
                close(file)
            }
        }
    }'
}

# quotient A B: their quotient with four digits.
quotient() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.4f", a / b }'; }

# field N FILE: the column of the file, one value a line.
field() { awk -v n="$1" '{ print $n }' "$2"; }

# Of the numbers on standard input, one a line.
median() { sort -g | awk '{ v[NR] = $1 } END { print (v[int((NR + 1) / 2)] + v[int(NR / 2) + 1]) / 2 }'; }
sum() { awk '{ s += $1 } END { print s }'; }

# row WHAT OURS THEIRS RATIO LIMIT: one line of the table. The ratio must not be above the limit.
row() {
    local verdict=met
    awk -v ratio="$4" -v limit="$5" 'BEGIN { exit !(ratio <= limit) }' || verdict=missed missed=1
    printf '%-46s %12s %12s %9s %8s  %s\n' "$1" "$2" "$3" "$4" "$5" "$verdict"
}

# table_print FILE: the rows of the file under the names of their columns.
table_print() {
    printf '%-46s %12s %12s %9s %8s\n' what ours theirs ratio "at most"
    cat -- "$1"
}
