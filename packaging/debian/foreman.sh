#!/usr/bin/env bash
# foreman.sh <scratch folder> <office's disk> first|upgraded|removed
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

lines() { sqlite3 "file:$store?mode=ro" "select group_concat(cast(EMPL_NUMB as integer)) from OstrelPr"; }
lines_are() { [[ $(lines) == "$1" ]]; }
one_file() { compgen -G "$1"; }

start() {
    "$@" >"$scratch/program.log" 2>&1 &
    program=$!
}

leave() {
    keys "$main_window" alt+f x
    until_ "the program to end" ended
}
ended() { ! kill -0 "$program"; }

# A line in the plain layout: number, quantity, hours, and Enter on the button.
enter_line() {
    keys "$main_window" "=$1" Return =0 Return =8 Return Return
}

readonly main_window="Ostrel Payroll Data Input"

first_run() {
    start OstrelPayroll --documents
    keys "Orveth Ostrel Payroll Program" n
    keys "First time operation" Return
    keys "Open Halvane descriptions.*" "=$disk/Clnt1234.zip" Return
    keys "Ostrel Payroll" Return # the descriptions are there
    until_ "the store" test -s "$store"
    [[ $(stat -c %a "$folder") == 700 ]] || fail "the folder may be read by others"
    say "first run: the office's tables are in, the folder is the user's alone"
}

work() {
    enter_line 103
    until_ "a line in the store" lines_are 103
    say "a line by keys: on the disk"
    keys "$main_window" ctrl+p
    keys "Ostrel Payroll" Return
    until_ "the page" one_file "$folder/Printed/*.pdf"
    pdftotext "$(one_file "$folder/Printed/*.pdf" | head -n 1)" - | grep -q 103 ||
        fail "the page does not show the line"
    say "printed: a PDF with the line"
    keys "$main_window" ctrl+w
    until_ "the import file" grep -q 103 "$disk/Pck-1234.asc"
    keys "&Write Halvane Import File" Return
    say "exported: the import file with the line"
    leave
}

again() {
    start OstrelPayroll --documents
    enter_line "$1"
    until_ "the lines $2" lines_are "$2"
    leave
    say "started again: the lines are $2"
}

options() {
    local code=0
    OstrelPayroll --version
    OstrelPayroll --help >/dev/null
    OstrelPayroll --quickly 2>"$scratch/refusal" || code=$?
    [[ $code == 2 ]] || fail "an unknown option ends with $code"
    grep -q -- --quickly "$scratch/refusal" || fail "an unknown option is not named"
}

case $3 in
    first) options; first_run; work; again 107 103,107 ;;
    upgraded) again 112 103,107,112 ;;
    removed) lines_are 103,107,112 || fail "the lines are $(lines)" ;;
esac
