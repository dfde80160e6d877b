#!/usr/bin/env bash
# edit_keeps_audio.sh SUITE SAMPLE: elements that are set are found by another
# program, and the sound and the cover are the same as before.
. "$(dirname "$0")/common.sh"
file=$work/$2
cp "$samples/$2" "$file" || exit 1
ask "$file" audio cover
sound=$(answer audio)
cover=$(answer cover)
[[ $sound == MD5=* ]] || fail "the sample can't be decoded"

shellhost set "$file" "title=Neue Töne 新しい" "album=Plain Album" "composer=Zoë Ünal" \
    "artist=Anna Ångström" "artist=王芳" || fail "set: exit code $?"

ask "$file" audio cover title album composer artist
expect_foreign title "Neue Töne 新しい"
expect_foreign album "Plain Album"
expect_foreign composer "Zoë Ünal"
expect_foreign artist "Anna Ångström"
expect_foreign artist "王芳"
expect_element genre Ambient "$file" "$(shellhost tags "$file")"
[ "$(answer audio)" = "$sound" ] || fail "the sound has changed"
[ "$(answer cover)" = "$cover" ] || fail "the cover has changed"
[ "$(ls "$work")" = "$2" ] || fail "left behind: $(ls "$work")"

# A second time the file has nothing to be changed.
before=$(md5sum <"$file")
shellhost set "$file" "title=Neue Töne 新しい" || fail "set again: exit code $?"
[ "$(md5sum <"$file")" = "$before" ] || fail "setting what is there changes the file"
