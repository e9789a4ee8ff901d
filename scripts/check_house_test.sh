#!/usr/bin/env bash
# Plants one breach of each rule of the house in a tree of its own and expects the rule to find it
# there, and every other rule to stay silent.
set -euo pipefail
house=$(dirname "$(readlink -f "$0")")/check_house.sh
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT

# sound_tree: a tree that keeps every rule.
sound_tree() {
    rm -rf "$tree"
    mkdir -p "$tree"/{src/platform/{values,qt},src/{entry,exchange,frame},tests/window,bench,fuzz,sample,docs}
    cat >"$tree/src/entry/save.cpp" <<'CODE'
#include "entry/save.h"
void Save() {
  FailureTail statement{ScannerModule, "Save"};
  statement(10, [] {});
  const auto showSum = [&](std::int32_t line) { statement(line, [] {}); };
  showSum(12);
  statement(20, [] {});  // statement(20, is only mentioned here
}
bool At(std::int32_t line, bool first);
void GoHome(std::int32_t line) {
  statement(line, [] {});
}
void CountPart(const FailureTail& statement) {
  statement(5, [] {});
  Say(statement, 7);
}
void Count() {
  const FailureTail statement(PrinModule, "Count");
  statement(10, [] {});
  for (bool on = At(15, true); on; on = At(25, false)) {
    statement(
        20, [] {});
  }
}
CODE
    printf '#pragma once\n#include "frame/state.h"\n' >"$tree/src/entry/save.h"
    printf '#pragma once\n#include "platform/values/text.h"\n' >"$tree/src/frame/state.h"
    printf '#pragma once\n' >"$tree/src/platform/values/text.h"
    printf '#pragma once\nint Number();\n' >"$tree/src/platform/values/number.h"
    printf '#include "platform/values/number.h"\nint two = 2 * Number();\n' \
        >"$tree/src/platform/values/text.cpp"
    printf '#pragma once\n' >"$tree/src/exchange/import.h"
    printf '#pragma once\n#include <QWidget>\n' >"$tree/src/platform/qt/window.h"
    printf '#include <QApplication>\n#include "platform/qt/window.h"\n' >"$tree/src/main.cpp"
}

failures=0
complain() { printf '%s\n' "$*"; failures=$((failures + 1)); }

# breach <rule> <file> <line>: appends the line to the file of a sound tree.
breach() {
    local rule
    sound_tree
    mkdir -p "$(dirname "$tree/$2")"
    [[ $2 != *.h || -e $tree/$2 ]] || printf '#pragma once\n' >"$tree/$2"
    printf '%s\n' "$3" >>"$tree/$2"
    for rule in $("$house" --rules); do
        if [[ $rule == "$1" ]]; then
            ! "$house" "$rule" "$tree" >/dev/null || complain "$1 did not find in $2: $3"
        else
            "$house" "$rule" "$tree" || complain "$rule found a breach of $1 in $2: $3"
        fi
    done
}

sound_tree
for rule in $("$house" --rules); do
    "$house" "$rule" "$tree" || complain "$rule found a breach in a sound tree"
done
breach floors src/platform/values/text.cpp '#include "entry/other.h"'
breach floors src/frame/state.h '#include "entry/save.h"'
breach floors src/frame/state.cpp '#include "exchange/import.h"'
breach floors src/exchange/import.h '#include "entry/save.h"'
breach floors src/entry/save.cpp '#include "cellar/wine.h"'
breach floors src/cellar/wine.h '#include "frame/state.h"'
breach rooms-in-order src/platform/values/number.cpp '#include "platform/values/text.h"'
breach qt-only-in-the-window src/entry/save.h '#include <QtWidgets/QLabel>'
breach qt-only-in-the-window src/platform/values/text.h '#include "QString"'
breach window-seen-by-few src/entry/save.cpp '#include "platform/qt/window.h"'
breach statement-numbers src/entry/save.cpp 'FailureTail statement{PrinModule, "A"}; statement(20, f);'
breach statement-numbers src/entry/other.cpp 'statement(30, [] {});'
breach statement-numbers src/entry/other.cpp \
    'SilentTail statement{PrinModule, "A"}; statement(40, f); statement(30, f);'
breach statement-numbers src/entry/save.cpp '  Say(statement, 5);'
breach statement-numbers src/entry/save.cpp '  GoHome(5);'
breach statement-numbers src/entry/other.cpp \
    'FailureTail statement{PrinModule, "A"}; statement(25, f);'
breach statement-numbers src/entry/save.cpp '  showSum(12);'
breach no-swallowed-failures src/entry/save.cpp '} catch (...) {'
breach no-sleeping-tests tests/save_test.cpp 'std::this_thread::sleep_for(1ms);'
sound_tree
printf '#include <string>\n' >"$tree/tests/support.h"
! "$house" headers-once "$tree" >/dev/null || complain "headers-once did not find a header without it"
breach no-unused-includes src/entry/save.cpp '#include "platform/values/number.h"'
breach one-definition tests/support.h 'inline constexpr int two[] = {1, 2};'
breach one-definition tests/battery/day.cpp 'struct Pair { int two; }; void Save() {}'
breach nothing-left-to-do src/entry/save.cpp '// TODO: more'
((failures == 0))
