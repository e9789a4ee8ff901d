#!/usr/bin/env bash
# foreman.sh <scratch folder> <office's disk>
# Works with the installed program the way a foreman does, by keys on a real display (DISPLAY), as the
# user who runs it: the first run, a line, a page, the import file, and a second run. Says what it saw
# and ends with 1 at the first thing that is not as it must be.
set -euo pipefail

readonly scratch=$1 disk=$2
readonly folder=$HOME/Documents/"Ostrel Payroll"
readonly store=$folder/Prin1234.mdb
readonly patience=60 # seconds

say() { printf '   %s\n' "$*"; }
fail() {
    printf 'NOT AS IT MUST BE: %s\n' "$*" >&2
    import -window root "$scratch/failed.png" 2>/dev/null || true
    exit 1
}

# until <what> <command>...: waits until the command succeeds.
until_() {
    local what=$1 end=$((SECONDS + patience))
    shift
    until "$@" >/dev/null 2>&1; do
        ((SECONDS < end)) || fail "waited $patience seconds for $what"
        sleep 0.2
    done
}

# The window whose whole title this is, brought to the keyboard.
window() { xdotool search --onlyvisible --name "^$1\$" | tail -n 1; }
focus() {
    until_ "the window \"$1\"" focused "$1"
}
focused() {
    local found
    found=$(window "$1")
    [[ -n $found ]] && xdotool windowfocus --sync "$found"
}
gone() { [[ -z $(window "$1") ]]; }

# keys <title> <key or text>...: into the window of that title; a text begins with "=".
keys() {
    local key
    focus "$1"
    shift
    for key; do
        if [[ $key == =* ]]; then
            xdotool type --delay 30 -- "${key#=}"
        else
            xdotool key --delay 30 "$key"
        fi
    done
}

lines() { sqlite3 "file:$store?mode=ro" "select count(*), max(EMPL_NUMB) from OstrelPr"; }
lines_are() { [[ $(lines) == "$1" ]]; }

"${PROGRAM:-OstrelPayroll}" --documents &
program=$!
