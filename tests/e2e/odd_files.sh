#!/usr/bin/env bash
# odd_files.sh SUITE: files that aren't what they seem, or that a write would
# damage, give a defined answer and lose nothing.
. "$(dirname "$0")/common.sh"
cp "$samples"/odd/* "$work"

# The content counts when the extension lies.
expect_element title "Klang 音色" "$work/flac-named.mp3"
expect_element title "Klang 音色" "$work/mp3-named.flac"
shellhost set "$work/flac-named.mp3" "title=Écrit" || fail "set behind a lying extension"
expect_foreign title "Écrit" "$work/flac-named.mp3"

expect_element artist "Björk Ångström / 王芳" "$work/several-values.flac"
expect_element genre "Ambient / Drone" "$work/several-values.flac"
shellhost set "$work/several-values.flac" "artist=One" || fail "set of one value in place of two"
expect_foreign "my own field" kept "$work/several-values.flac"

# A multi-picture file keeps the others when one is deleted.
expect_element "_albumart_3_Auf der Bühne" "JPEG picture, $(stat -c %s "$samples/odd/back.jpg") bytes" \
    "$work/pictures.flac"
shellhost delete "$work/pictures.flac" _albumart_1 || fail "delete of one picture of three"
[ "$(metaflac --list --block-type=PICTURE "$work/pictures.flac" | grep -c '^METADATA')" = 2 ] ||
    fail "another number of pictures than two is left"

# What can't be read is reported, and stays as it is; so is what a write would
# damage, which can be read.
for name in text-named.mp3 empty.mp3 cut.m4a; do
    shellhost tags "$work/$name" 2>"$work/errors" && fail "$name is taken for audio"
    grep -qF "$name" "$work/errors" || fail "$name: no reason is given"
    shellhost set "$work/$name" title=x 2>/dev/null && fail "$name is written to"
    cmp "$work/$name" "$samples/odd/$name" || fail "$name has changed"
done
expect_element title "Klang 音色" "$work/fragmented.m4a"
shellhost set "$work/fragmented.m4a" title=x 2>/dev/null && fail "fragments are written to"
cmp "$work/fragmented.m4a" "$samples/odd/fragmented.m4a" || fail "fragmented.m4a has changed"

# A file among others that can't be read keeps none of them from being shown.
shellhost tags "$work/text-named.mp3" "$work/mp3-named.flac" >"$work/shown" 2>/dev/null &&
    fail "a file that can't be read goes unreported"
grep -qxF "  title: Klang 音色" "$work/shown" || fail "the file behind it isn't shown"
