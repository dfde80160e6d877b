#!/usr/bin/env bash
# cover_is_written.sh SUITE SAMPLE: a picture that is set is found by another
# program with the same bytes, in place of the old one, and the sound stays.
. "$(dirname "$0")/common.sh"
file=$work/$2
cp "$samples/$2" "$file" || exit 1
cp "$samples/odd/back.jpg" "$work/Bild ä.jpg"
ask "$file" audio
sound=$(answer audio)

shellhost set "$file" "_albumart_1_Front Album Cover=@$(windows_path "$work/Bild ä.jpg")" ||
    fail "set: exit code $?"
ask "$file" cover audio title
[ "$(answer cover)" = "$(md5sum <"$samples/odd/back.jpg" | cut -c1-32)" ] ||
    fail "another program finds another picture"
[ "$(answer audio)" = "$sound" ] || fail "the sound has changed"
expect_foreign title Klang
