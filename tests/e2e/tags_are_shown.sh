#!/usr/bin/env bash
# tags_are_shown.sh SUITE SAMPLE: the tag that the sample's maker
# wrote is shown, and the file isn't touched by that.
. "$(dirname "$0")/common.sh"
file=$work/$2
cp "$samples/$2" "$file" || exit 1
chmod a-w "$file"

shellhost tags "$file" >"$work/shown" || fail "tags: exit code $?"
cmp "$file" "$samples/$2" || fail "showing has changed the file"
head -n 1 "$work/shown" | grep -qxF "$(windows_path "$file")" || fail "the path isn't shown"
expect_line() { grep -qxF "  $1" "$work/shown" || { cat "$work/shown"; fail "no line \"$1\""; }; }
expect_line "artist: Björk Ångström"
expect_line "album: Über den Dächern"
expect_line "genre: Ambient"
expect_line "year: 2019"
expect_line "comment: Grüße aus Zürich"
if [ "$2" = sample-id3v1.mp3 ]; then
    expect_line "title: Klang"
    expect_line "track: 3"
    exit 0
fi
expect_line "title: Klang 音色"
if [ "$2" = sample.wav ]; then
    # ffmpeg writes the track's number under a name of its own, and an INFO
    # list holds no more.
    expect_line "_riff_IPRT: 3/12"
    exit 0
fi
expect_line "track: 3/12"
expect_line "composer: Antonín Dvořák"
expect_line "album artist: Various Tones"
expect_line "disc: 1/2"
grep -q "^  _albumart_1.*: PNG picture, $(stat -c %s "$samples/odd/front.png") bytes$" "$work/shown" ||
    fail "the cover isn't shown"
