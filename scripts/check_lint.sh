#!/usr/bin/env bash
# clang-tidy over every source of the development build. A source is looked at again only when it,
# a header of ours that it includes, the configuration or the tool has changed.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

readonly build=build/dev stamps=build/lint
mkdir -p "$stamps"

# "<source> <source or header of ours>" for each pair, from what the compiler saw.
dependencies() {
    ninja -C $build -t deps | awk -v root="$PWD/" '
        /^[^ ].*: #deps/ { source = ""; next }
        /^ / {
            path = $1
            if (index(path, root) != 1 || index(path, root "build/") == 1) next
            path = substr(path, length(root) + 1)
            if (source == "") source = path
            print source, path
        }' | sort -u
}

# "<stamp> <source>": the stamp is the hash of all that the verdict on the source rests on.
verdicts() {
    local tool
    tool=$({ clang-tidy --version && cat .clang-tidy tests/.clang-tidy CMakePresets.json; } | sha256sum)
    dependencies >"$stamps/dependencies"
    cut -d ' ' -f 2 "$stamps/dependencies" | sort -u | xargs sha256sum >"$stamps/hashes"
    awk -v tool="$tool" '
        NR == FNR { hash[$2] = $1; next }
        { text[$1] = text[$1] $2 hash[$2] }
        END { for (source in text) print source, tool text[source] }
    ' "$stamps/hashes" "$stamps/dependencies" | sort |
        while read -r source text; do
            printf '%s %s\n' "$(sha256sum <<<"$text" | cut -c -32)" "$source"
        done
}

lint() {
    local stamp=$1 source=$2 words
    [[ -e $stamps/$stamp ]] && return 0
    if words=$(clang-tidy --quiet --extra-arg=-Wno-unknown-warning-option -p $build "$source" 2>&1); then
        touch "$stamps/$stamp"
    else
        printf '%s\n' "$words"
        return 1
    fi
}
export -f lint
export stamps build

verdicts >"$stamps/verdicts"
xargs -P "$(nproc)" -L 1 bash -c 'lint "$1" "$2"' lint <"$stamps/verdicts"
