#!/usr/bin/env bash
# Draws the pictures of the icon anew from its two SVGs, each at the sizes that it was drawn for. The
# pictures are kept in the tree, so that a plain build needs no tool for them.
set -euo pipefail
cd "$(dirname "$(readlink -f "$0")")"
draw() { rsvg-convert -w "$2" -h "$2" "$1.svg" -o "ostrel-payroll-$2.png"; }
for size in 16 24; do draw ostrel-payroll-small "$size"; done
for size in 32 48 64 128 256; do draw ostrel-payroll "$size"; done
icotool -c -o ostrel-payroll.ico ostrel-payroll-{16,24,32,48,64}.png --raw=ostrel-payroll-256.png
