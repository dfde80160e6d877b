#!/usr/bin/env bash
# delete_keeps_audio.sh SUITE SAMPLE: deleted elements are found by no other
# program, the rest stays, and the sound is the same as before.
. "$(dirname "$0")/common.sh"
file=$work/$2
cp "$samples/$2" "$file" || exit 1
sound=$(foreign audio "$file")
cover=$(foreign cover "$file")

shellhost delete "$file" album comment || fail "delete: exit code $?"
[ -z "$(foreign tag "$file" album)" ] || fail "the album is still found"
expect_foreign title Klang "$file"
[ "$(foreign cover "$file")" = "$cover" ] || fail "the cover has changed"
[ "$(foreign audio "$file")" = "$sound" ] || fail "the sound has changed"

shellhost delete "$file" || fail "delete all: exit code $?"
for name in artist title genre; do
    [ -z "$(foreign tag "$file" "$name")" ] || fail "the $name is still found"
done
[ "$(foreign cover "$file")" = none ] || fail "the cover is still found"
[ "$(foreign audio "$file")" = "$sound" ] || fail "the sound has changed with all deleted"
