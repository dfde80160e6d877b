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
shown "Audio Properties"
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
