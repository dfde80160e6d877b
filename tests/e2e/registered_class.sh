#!/usr/bin/env bash
# registered_class.sh SUITE: once the module is registered the class is created
# by its id, as the shell does it; unregistered it can't be. In a Wine prefix
# of its own, since the registration is one for all programs of a prefix.
. "$(dirname "$0")/common.sh"
export TONEWRIGHT_WINEPREFIX=$work/prefix
export DISPLAY= # another prefix's windows would take the focus of the display
module=$(windows_path "$suite/tNWShell.DLL")
stop() {
    WINEPREFIX=$TONEWRIGHT_WINEPREFIX wineserver -k
    WINEPREFIX=$TONEWRIGHT_WINEPREFIX wineserver -w
    rm -rf "$work"
}
trap stop EXIT
shell_tags() { "$root/tools/wine" "$suite/shellhost.exe" tags "$@" </dev/null; }

shell_tags "$samples/sample.flac" 2>"$work/errors" && fail "created before it is registered"
grep -qF "the module isn't registered" "$work/errors" || fail "another reason: $(cat "$work/errors")"

"$root/tools/wine" regsvr32 /s "$module" || fail "regsvr32"
shell_tags "$samples/sample.flac" "$samples/sample.mp3" >"$work/shown" || fail "tags: exit code $?"
[ "$(grep -cxF "  title: Klang 音色" "$work/shown")" = 2 ] || fail "two titles aren't shown"

"$root/tools/wine" regsvr32 /s /u "$module" || fail "regsvr32 /u"
shell_tags "$samples/sample.flac" 2>/dev/null && fail "created after it is unregistered"
exit 0
