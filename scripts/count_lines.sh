#!/usr/bin/env bash
# How large the tests are against everything else: lines as they stand, and lines with code on them
# (neither empty nor all comment). Tests are at most a third of the code; ./test prints the figures.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

# Sources and scripts; what only the tests use counts with them, the planted faults of the checks too.
listed() {
    find "$@" -type f '(' -name '*.h' -o -name '*.cpp' -o -name '*.sh' -o -name '*.awk' ')' | sort
}
tests() { { listed tests && printf '%s\n' scripts/check_house_test.sh fuzz/control.cpp; } | sort; }
code() { { listed src bench fuzz sample docs scripts && printf '%s\n' run test; } | sort | comm -23 - <(tests); }

# counted <title>: one line of figures of the files named on the standard input.
counted() {
    xargs awk -v title="$1" '
        { ++raw }
        !/^[ \t]*($|\/\/|#([^a-z]|$))/ { ++lines }
        END { print title, raw, lines }'
}

{ code | counted code && tests | counted tests; } | awk '
    { raw[$1] = $2; lines[$1] = $3 }
    END {
        printf "tests: %d of %d raw lines (%.1f %%), %d of %d with code on them (%.1f %%)\n",
            raw["tests"], raw["code"], 100 * raw["tests"] / raw["code"],
            lines["tests"], lines["code"], 100 * lines["tests"] / lines["code"]
    }'
