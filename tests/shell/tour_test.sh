#!/usr/bin/env bash
# tour_test LIROVAN COMPANION SAMPLES: the guided tour on a fresh sample library gets through all its steps.
set -euo pipefail
lirovan=$1 companion=$2 samples=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/Notlar"
cp -r "$samples/OKU" "$work/OKU"
"$companion" olustur "$samples/kitaplik" "$work/kitaplar.vq" >/dev/null
"$lirovan" --klasor "$work" --tur "$work/tur"
