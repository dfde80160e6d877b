#!/usr/bin/env bash
# edit_keeps_audio.sh SUITE SAMPLE: elements that are set are found by another
# program, and the sound and the cover are the same as before.
. "$(dirname "$0")/common.sh"
file=$work/$2
cp "$samples/$2" "$file" || exit 1
sound=$(foreign audio "$file")
cover=$(foreign cover "$file")
[[ $sound == MD5=* ]] || fail "the sample can't be decoded"

shellhost set "$file" "title=Neue Töne 新しい" "album=Plain Album" "composer=Zoë Ünal" \
    "artist=Anna Ångström" "artist=王芳" || fail "set: exit code $?"

expect_foreign title "Neue Töne 新しい" "$file"
expect_foreign album "Plain Album" "$file"
expect_foreign composer "Zoë Ünal" "$file"
expect_foreign artist "Anna Ångström" "$file"
expect_foreign artist "王芳" "$file"
expect_element genre Ambient "$file"
[ "$(foreign audio "$file")" = "$sound" ] || fail "the sound has changed"
[ "$(foreign cover "$file")" = "$cover" ] || fail "the cover has changed"
[ "$(ls "$work")" = "$2" ] || fail "left behind: $(ls "$work")"

# A second time the file has nothing to be changed.
before=$(md5sum <"$file")
shellhost set "$file" "title=Neue Töne 新しい" || fail "set again: exit code $?"
[ "$(md5sum <"$file")" = "$before" ] || fail "setting what is there changes the file"
