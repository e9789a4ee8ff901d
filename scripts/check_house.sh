#!/usr/bin/env bash
# check_house.sh --rules         names the rules of the house, one a line
# check_house.sh <rule>          prints every breach of one rule; exit code 1 if there is any
# check_house.sh <rule> <tree>   the same for another tree
# CONTRIBUTING.md says what each rule is for.
set -euo pipefail

rules=(floors rooms-in-order qt-only-in-the-window window-seen-by-few statement-numbers
    no-swallowed-failures no-sleeping-tests headers-once no-unused-includes one-definition
    nothing-left-to-do)

names_awk=$(dirname "$(readlink -f "$0")")/names.awk
everything=(src tests bench fuzz sample docs)
sources() { find "$@" -name '*.h' -o -name '*.cpp' 2>/dev/null | sort; }

# matches <regular expression>: the lines that match in the files named on the standard input. Code
# only, comments do not count.
matches() {
    xargs -r awk -v expression="$1" '
        { code = $0; sub(/\/\/.*/, "", code) }
        code ~ expression { print FILENAME ":" FNR ": " $0 }'
}

# The sources that have no business with the window.
windowless() {
    sources "${everything[@]}" | grep -v -e '^src/platform/qt/' -e '^src/main\.cpp$' \
        -e '^tests/window/' -e '^bench/window/' -e '^sample/play_sample_day'
}

# The floors of src, lowest first; folders on one line stand beside each other.
floors_of_the_house='
platform/values
platform/files
platform/database
platform/forms
platform/desktop
platform/qt
frame
scan_main
store
work_day
display
hours
entry exchange reports
crew
day
slips
program
main
'

# Prints "<file> <folder> <room> <folder included> <room included>" for each include of ours.
# A room is a header with its source; main.cpp is a folder of its own.
includes() {
    sources src | xargs -r awk '
        function folder(path) { return match(path, /\/[^\/]*$/) ? substr(path, 1, RSTART - 1) : "main" }
        /^#include "[a-z_]+\// {
            path = $2; gsub(/"/, "", path); sub(/\.h$/, "", path)
            file = FILENAME; sub(/^src\//, "", file); sub(/\.(h|cpp)$/, "", file)
            print FILENAME ":" FNR, folder(file), file, folder(path), path
        }'
}

# A folder includes only folders on lower floors, and every folder has its floor.
floors() {
    includes | awk -v floors="$floors_of_the_house" '
        BEGIN {
            count = split(floors, lines, "\n")
            for (i = 1; i <= count; ++i) {
                folders = split(lines[i], names, " ")
                for (n = 1; n <= folders; ++n) floor[names[n]] = i
            }
        }
        $2 == $4 { next }
        !($2 in floor) { print $1 ": " $2 " has no floor"; next }
        !($4 in floor) { print $1 ": " $4 " has no floor"; next }
        floor[$4] >= floor[$2] { print $1 ": " $2 " includes " $4 ", which is not below it" }'
}

# Within a folder, too, no two rooms lean on each other, by however many steps.
rooms-in-order() {
    includes | awk '$2 == $4 && $3 != $5 { print $3, $5 }' | { tsort 2>&1 >/dev/null || true; } |
        sed -n 's/^tsort: //p'
}

qt-only-in-the-window() { windowless | matches '#include [<"](qt6/|Qt|Q[A-Z]|q[a-z]+\.h)'; }

window-seen-by-few() { windowless | matches '#include "platform/qt/'; }

# A statement is known to phone support by module and number. A part of a routine that is handed its
# tail belongs to the module that its file begins with. A number may be handed to such a part, as its
# parameter `line`. The step of a for loop may stand before its body: it runs behind it.
statement-numbers() {
    sources src | grep -v '^src/platform/' | xargs -r awk '
        function module_in(line) {
            if (line !~ /(Tail [A-Za-z_]*[{(]|RunProbed\()/) return ""
            return match(line, /[A-Za-z]+Module/) ? substr(line, RSTART, RLENGTH) : ""
        }
        function breach(text) { print FILENAME ":" FNR ": statement " number " " text }
        BEGIN {
            for (i = 1; i < ARGC; ++i) {
                takers[ARGV[i]] = "statement"
                while ((getline line <ARGV[i]) > 0) {
                    if (home[ARGV[i]] == "") home[ARGV[i]] = module_in(line)
                    if (line ~ /[A-Za-z]( = \[&?\])?\(std::int32_t line[,)]/) {
                        sub(/( = \[&?\])?\(.*/, "", line)
                        sub(/.* /, "", line)
                        takers[ARGV[i]] = takers[ARGV[i]] "|" line
                    }
                }
                close(ARGV[i])
            }
        }
        FNR == 1 || /^}/ { module = home[FILENAME]; last = 0 }
        { code = held $0; held = "" }
        /statement[(,]$/ { held = $0; next }
        module_in(code) != "" { module = module_in(code); last = 0 }
        {
            sub(/\/\/.*/, "", code)
            while (match(code, "(" takers[FILENAME] ")[(,] *[0-9]+")) {
                number = substr(code, RSTART, RLENGTH)
                sub(/.*[(,]/, "", number)
                number += 0
                code = substr(code, RSTART + RLENGTH)
                if (module == "") breach("has no tail of a module in its file")
                is_step = code ~ /^[^;]*\) \{$/ && $1 == "for"
                if (number <= last && !is_step) breach("does not rise above " last)
                if ((module, number) in seen) breach("of " module " stands at " seen[module, number])
                seen[module, number] = FILENAME ":" FNR
                if (!is_step) last = number
            }
        }'
}

no-swallowed-failures() { sources src | matches 'catch *\( *\.\.\. *\)'; }

no-sleeping-tests() {
    sources tests | matches 'sleep_(for|until)|[^a-z]u?sleep *\(|QTest::qWait *\(|QThread::m?sleep'
}

headers-once() {
    sources "${everything[@]}" | grep '\.h$' | xargs -r grep -L '^#pragma once$' || true
}

# An include of ours brings at least one name that the file uses. A header that is used only through
# another one's names belongs into that other one.
no-unused-includes() {
    sources "${everything[@]}" | grep '\.h$' | xargs -r awk -f "$names_awk" |
        awk '
        function room(path) {
            sub(/^(src|tests|bench|fuzz)\//, "", path)
            sub(/\.(h|cpp)$/, "", path)
            return path
        }
        function judge(   i, n, names, used) {
            for (i = 1; i <= includes; ++i) {
                if (!(included[i] in declared)) continue  # another rule has its say on such a one
                n = split(declared[included[i]], names, " ")
                used = 0
                while (n > 0 && !used) used = names[n--] in seen
                if (!used) print place[i] ": nothing of " included[i] ".h is used"
            }
            includes = 0
            split("", seen)
        }
        FILENAME == "-" { declared[room($1)] = declared[room($1)] " " $2; next }
        FNR == 1 { judge() }
        /^#include "/ {
            header = room(substr($2, 2, length($2) - 2))
            if (header != room(FILENAME)) {
                included[++includes] = header
                place[includes] = FILENAME ":" FNR
            }
            next
        }
        {
            gsub(/"([^"\\]|\\.)*"/, "")
            sub(/\/\/.*/, "")
            while (match($0, /[A-Za-z_][A-Za-z0-9_]*/)) {
                seen[substr($0, RSTART, RLENGTH)]
                $0 = substr($0, RSTART + RLENGTH)
            }
        }
        END { judge() }' - $(sources "${everything[@]}")
}

# Two rooms that define one name would meet in an executable, where the linker merges what is inline
# without a word. Programs of a single source do not meet each other.
one-definition() {
    sources "${everything[@]}" | xargs -r awk -f "$names_awk" | awk '
        $3 == "outside" {
            alone = $1 ~ /^(bench|fuzz|sample|docs)\/.*\.cpp$/
            room = $1
            sub(/\.(h|cpp)$/, "", room)
            if (!($2 in home)) {
                home[$2] = room
                single[$2] = alone
            } else if (home[$2] != room && !(alone && single[$2])) {
                print $1 ": " $2 " is defined in " home[$2] ", too"
            }
        }'
}

nothing-left-to-do() {
    sources "${everything[@]}" | xargs -r grep -nE 'TODO|FIXME|XXX' || true
}

if [[ ${1:-} == --rules ]]; then
    printf '%s\n' "${rules[@]}"
    exit 0
fi
rule=${1:?which rule? see check_house.sh --rules}
[[ " ${rules[*]} " == *" $rule "* ]] || { printf 'no such rule: %s\n' "$rule" >&2; exit 2; }
cd "${2:-$(dirname "$(readlink -f "$0")")/..}"
breaches=$("$rule")
[[ -z $breaches ]] || { printf '%s\n' "$breaches"; exit 1; }
