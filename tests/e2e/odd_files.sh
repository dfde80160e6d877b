#!/usr/bin/env bash
# odd_files.sh SUITE: files that aren't what they seem, or that a write would
# damage, give a defined answer and lose nothing.
. "$(dirname "$0")/common.sh"
cp "$samples"/odd/* "$work"
pictures=$work/pictures.flac
several=$work/several-values.flac

expect_pictures() {
    [ "$(metaflac --list --block-type=PICTURE "$pictures" | grep -c '^METADATA')" = "$1" ] ||
        fail "another number of pictures than $1 is left"
}

shown=$(shellhost tags "$work/flac-named.mp3" "$work/mp3-named.flac" "$several" "$pictures" \
    "$work/fragmented.m4a") || fail "tags: exit code $?"

# The content counts when the extension lies.
expect_element title "Klang 音色" "$work/flac-named.mp3" "$shown"
expect_element title "Klang 音色" "$work/mp3-named.flac" "$shown"
shellhost set "$work/flac-named.mp3" "title=Écrit" || fail "set behind a lying extension"
ask "$work/flac-named.mp3" title
expect_foreign title "Écrit"

expect_element artist "Björk Ångström / 王芳" "$several" "$shown"
expect_element genre "Ambient / Drone" "$several" "$shown"
shellhost set "$several" "artist=One" || fail "set of one value in place of two"
ask "$several" "my own field"
expect_foreign "my own field" kept

# A multi-picture file keeps the others when one is deleted.
expect_element "_albumart_3_Auf der Bühne" \
    "JPEG picture, $(stat -c %s "$samples/odd/back.jpg") bytes" "$pictures" "$shown"
shellhost delete "$pictures" _albumart_1 || fail "delete of one picture of three"
expect_pictures 2
shellhost delete "$pictures" _albumart_1 _albumart_2 || fail "delete of both pictures"
expect_pictures 0

# What can't be read is reported, and stays as it is; so is what a write would
# damage, which can be read.
for name in text-named.mp3 empty.mp3 cut.m4a; do
    shellhost tags "$work/$name" 2>"$work/errors" && fail "$name is taken for audio"
    grep -qF "$name" "$work/errors" || fail "$name: no reason is given"
    shellhost set "$work/$name" title=x 2>/dev/null && fail "$name is written to"
    cmp "$work/$name" "$samples/odd/$name" || fail "$name has changed"
done
expect_element title "Klang 音色" "$work/fragmented.m4a" "$shown"
shellhost set "$work/fragmented.m4a" title=x 2>/dev/null && fail "fragments are written to"
cmp "$work/fragmented.m4a" "$samples/odd/fragmented.m4a" || fail "fragmented.m4a has changed"

# A file among others that can't be read keeps none of them from being shown.
shown=$(shellhost tags "$work/text-named.mp3" "$work/mp3-named.flac" 2>/dev/null) &&
    fail "a file that can't be read goes unreported"
expect_element title "Klang 音色" "$work/mp3-named.flac" "$shown"

# What can't be shown has failed, though it could be read.
shellhost tags "$work/mp3-named.flac" >/dev/full 2>"$work/errors" && fail "lost output goes unreported"
grep -qF "the output can't be written" "$work/errors" || fail "no reason is given for lost output"
