# shellcheck shell=bash
# Sourced by ./package: what an administrator does with the setup, under Wine, in a prefix of its own. A program that hangs there shows a box that nobody sees, so each has a time limit.

readonly prefix=$root/build/wine
readonly patience=120 # seconds

under_wine() {
    WINEPREFIX=$prefix WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml=" \
        timeout "$patience" wine "$@" 2>/dev/null
}

# expect <exit code> <what> <command>...
expect() {
    local wanted=$1 what=$2 code=0
    shift 2
    "$@" || code=$?
    if [[ $code != "$wanted" ]]; then
        say "NOT AS IT MUST BE: $what ends with $code, not $wanted" >&2
        return 1
    fi
    say "   $what: $code"
}

# The files in a folder, on one line.
left_in() { (cd "$1" && find . -type f -printf '%P\n' | sort | paste -sd ' '); }

# The uninstaller works in a copy of itself and returns at once, unless it is told its folder, which
# must be the last word and, as blanks would have Wine quote it, have none.
uninstall() { under_wine "$prefix/drive_c/payroll/uninstall.exe" /S '_?=C:\payroll'; }

# The processes that have this file mapped, which is how Wine runs one.
processes_of() { grep -lF "$1" /proc/[0-9]*/maps 2>/dev/null | sed 's|/proc/\(.*\)/maps|\1|'; }

run_program() {
    local end=$((SECONDS + patience))
    under_wine "$1/OstrelPayroll.exe" &
    until [[ -n $(processes_of "$1/OstrelPayroll.exe") ]]; do
        ((SECONDS < end)) || { say "the program does not start under Wine" >&2; return 1; }
        sleep 0.2
    done
}

end_program() {
    processes_of "$1/OstrelPayroll.exe" | xargs -r kill 2>/dev/null || true # some end by themselves
    wait 2>/dev/null || true
}

try_setup() {
    local setup=$1 older=$2 folder file lines="Prin1234.mdb Printed/a.pdf"
    rm -rf "$prefix"
    under_wine wineboot -i
    expect 0 "a silent setup" under_wine "$setup" /S
    [[ -n $(find "$prefix"/drive_c/users/*/AppData/Local/Programs -name OstrelPayroll.exe) ]]
    expect 0 "a silent setup into a folder that was named" under_wine "$setup" /S '/D=C:\payroll'
    folder=$prefix/drive_c/payroll
    mkdir "$folder/Printed"
    for file in $lines; do printf 'kept' >"$folder/$file"; done
    expect 0 "the setup over itself" under_wine "$setup" /S
    expect 4 "an older setup over it" under_wine "$older" /S
    # Wine lets root write anywhere; a folder in the place of the file that is tried refuses as well.
    mkdir -p "$prefix/drive_c/refusing/setup.try"
    expect 5 "a setup into a folder that cannot be written" \
        under_wine "$setup" /S '/D=C:\refusing'
    run_program "$folder"
    expect 3 "a setup while the program runs" under_wine "$setup" /S
    expect 3 "taking it away while it runs" uninstall
    end_program "$folder"
    expect 0 "taking it away" uninstall
    # An uninstaller that is told its folder works in place, and cannot take itself away.
    if [[ $(left_in "$folder") != "$lines uninstall.exe" ]]; then
        say "NOT AS IT MUST BE: left are $(left_in "$folder")" >&2
        return 1
    fi
    say "   the lines are where they were"
}

try_package() {
    install_packages wine64 wine xvfb xauth
    local older=$build/older-setup.exe
    makensis -V1 -DVERSION=0.0.1 -DFROM="$staged" -DTO="$older" -DREMOVALS="$build/removals.nsh" \
        packaging/windows/setup.nsi
    say "Under Wine:"
    try_setup "$packages/$name-setup.exe" "$older"
}
