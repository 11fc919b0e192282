#!/usr/bin/env bash
# tour_test TOUR COMPANION SAMPLES: the guided tour on a fresh sample library gets through all its steps, and
# nothing is printed meanwhile that a reader should not read.
set -euo pipefail
tour=$1 companion=$2 samples=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/Notlar"
cp -r "$samples/OKU" "$work/OKU"
"$companion" olustur "$samples/kitaplik" "$work/kitaplar.vq" >/dev/null
"$tour" "$work" "$work/tur" 2>"$work/printed"
cat "$work/printed" >&2
# What the toolkit says of a screen that is none.
! grep -v -e '^$' -e propagateSizeHints -e 'OpenGL context creation failed' -e 'No suitable graphics backend' "$work/printed"
