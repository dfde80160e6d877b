#!/usr/bin/env bash
# desktop_sheet.sh SUITE DRIVER: the pages in the property sheet of the desktop
# shell, which nobody here wrote, as its menu opens it on real files. To be run
# in a Wine session whose registration is this test's own.
. "$(dirname "$0")/common.sh"
driver=$2
class='{7A1E4C10-93D2-4F6B-8C21-5E0B7D3FA911}'
handler='HKCR\*\shellex\PropertySheetHandlers\Tonewright'
run_quietly() { "$root/tools/wine" "$@" >"$work.log" 2>&1 </dev/null; }
# sheet FILE... -- ACTION...: what the driver prints goes to $work.shown.
sheet() { "$root/tools/wine" "$driver" "$@" >"$work.shown" 2>"$work.errors" </dev/null; }
act() {
    local files=()
    while [ "$1" != -- ]; do
        files+=("$(windows_path "$1")")
        shift
    done
    sheet "${files[@]}" "$@" || fail "the sheet, exit code $?: $(cat "$work.errors" "$work.shown")"
}
shown() { grep -qxF "$1" "$work.shown" || fail "not shown: \"$1\" in $(cat "$work.shown")"; }

module=$(windows_path "$suite/tNWShell.DLL")
trap 'run_quietly regsvr32 /s /u "$module"; run_quietly reg delete "$handler" /f; rm -rf "$work"*' EXIT
run_quietly regsvr32 /s "$module" || fail "regsvr32: $(cat "$work.log")"
run_quietly reg add "$handler" /ve /d "$class" /f || fail "the handler: $(cat "$work.log")"

cp "$samples/sample.flac" "$samples/sample.mp3" "$samples/sample.wav" "$work" || exit 1
before=$(md5sum "$work"/*)

act "$work/sample.flac" -- tabs page "Audio Properties" rows unchanged cancel
[ "$(grep -xF -e "Audio Properties" -e "ID-Tag" "$work.shown" | tr '\n' ,)" = \
    "Audio Properties,ID-Tag," ] || fail "other pages: $(cat "$work.shown")"
shown "Title Klang 音色"
shown "Sample Size 16 bit"
shown "File sample"

# The shell hands over the paths of all files that are selected.
act "$work/sample.mp3" "$work/sample.flac" "$work/sample.wav" -- tabs \
    page "Audio Properties" rows unchanged ok
shown "Audio Properties"
shown "Title Klang 音色"
shown "Track <different>"
shown "Combined Length 3 seconds"

[ "$(md5sum "$work"/*)" = "$before" ] || fail "looking at the files changes them"

# The rows of a text that every tag has, from the page's title on.
artist=1 title=2 album=3 year=5 genre=6 comment=7
flac=$work/sample.flac
mp3=$work/sample.mp3
ask "$flac" audio cover
sound=$(answer audio)
cover=$(answer cover)

# What users have typed in earlier runs would be completed.
genres() { find "$TONEWRIGHT_WINEPREFIX/drive_c/users" -path '*/Tonewright/genres.txt' "$@"; }
genres -delete

# Typed and applied, typed again and closed.
act "$flac" -- page "ID-Tag" unchanged select $album type "Neues Album 新" key return apply \
    unchanged select $genre type "Ethno-Techno" ok
ask "$flac" audio cover title album genre
expect_foreign title "Klang 音色"
expect_foreign album "Neues Album 新"
expect_foreign genre "Ethno-Techno"
[ "$(answer audio)" = "$sound" ] || fail "the sound has changed"
[ "$(answer cover)" = "$cover" ] || fail "the cover has changed"

genres -exec cat {} + | iconv -f UTF-16LE -t UTF-8 | tr -d '\r' | grep -qxF "Ethno-Techno" ||
    fail "the new genre isn't learned"

# A genre is completed from the list; return takes what was completed.
act "$flac" -- page "ID-Tag" select $genre type "Showt" key return ok
ask "$flac" genre
expect_foreign genre "Showtunes"

# What is cancelled leaves the file as it is.
before=$(md5sum <"$flac")
act "$flac" -- page "ID-Tag" select $title type "Verworfen" cancel
[ "$(md5sum <"$flac")" = "$before" ] || fail "a cancelled edit changes the file"

# One text for two files; then one for each, stepping from one to the other.
act "$mp3" "$flac" -- page "ID-Tag" select $comment type "Für beide" ok
act "$mp3" "$flac" -- page "ID-Tag" press "Edit Single" select $artist type "Erste" \
    press Next select $artist type "Zweite" key return ok
for file in "$flac" "$mp3"; do
    ask "$file" artist comment
    expect_foreign comment "Für beide"
    expect_foreign artist "$([ "$file" = "$flac" ] && echo Erste || echo Zweite)"
done

# A new element, and one that goes.
act "$flac" -- page "ID-Tag" press Add type "Mood" key return type "Ruhig wie Öl" apply \
    select $genre press Remove ok
ask "$flac" mood genre title
expect_foreign mood "Ruhig wie Öl"
expect_none genre
expect_foreign title "Klang 音色"

# Picked from lists: a value, and the name of a new element.
act "$flac" -- page "ID-Tag" select $year pick 2001 apply unchanged \
    press Add pick "Conductor" key return type "Kurt Töner" ok
ask "$flac" date conductor
expect_foreign date 2001
expect_foreign conductor "Kurt Töner"

act "$flac" -- page "ID-Tag" press Clear ok
ask "$flac" audio title artist mood
expect_none title
expect_none artist
expect_none mood
[ "$(answer audio)" = "$sound" ] || fail "the sound has changed"

# A file of every format, all at once. What the files hold of the others stays.
rm "$work"/*
cp "$samples"/sample* "$work" || exit 1
act "$work"/* -- page "ID-Tag" select $title type "Neue Töne 新しい" key return \
    select $album type "Plain Album" ok
for file in "$work"/*; do
    ask "$samples/${file##*/}" audio
    sound=$(answer audio)
    ask "$file" audio title album
    expect_foreign title "Neue Töne 新しい"
    expect_foreign album "Plain Album"
    [ "$(answer audio)" = "$sound" ] || fail "the sound of ${file##*/} has changed"
done
