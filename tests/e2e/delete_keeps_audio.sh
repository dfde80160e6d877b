#!/usr/bin/env bash
# delete_keeps_audio.sh SUITE SAMPLE: deleted elements are found by no other
# program, the rest stays, and the sound is the same as before.
. "$(dirname "$0")/common.sh"
file=$work/$2
cp "$samples/$2" "$file" || exit 1
ask "$file" audio cover
sound=$(answer audio)
cover=$(answer cover)

shellhost delete "$file" album comment || fail "delete: exit code $?"
ask "$file" audio cover album title
expect_none album
expect_foreign title Klang
[ "$(answer cover)" = "$cover" ] || fail "the cover has changed"
[ "$(answer audio)" = "$sound" ] || fail "the sound has changed"

shellhost delete "$file" || fail "delete all: exit code $?"
ask "$file" audio cover artist title genre
for name in artist title genre; do
    expect_none $name
done
[ "$(answer cover)" = none ] || fail "the cover is still found"
[ "$(answer audio)" = "$sound" ] || fail "the sound has changed with all deleted"
