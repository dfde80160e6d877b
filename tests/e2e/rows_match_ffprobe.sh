#!/usr/bin/env bash
# rows_match_ffprobe.sh SUITE: rate, channels, length and bit rate of each sample
# as the page Audio Properties shows them, against what ffprobe finds.
. "$(dirname "$0")/common.sh"

# The units in which nothing is rounded away. The key is the user's own, here
# that of this project's Wine prefix.
units='HKCU\Software\Quillmarsh\Tonewright\Ref'
set_unit() { "$root/tools/wine" reg add "$units" /v "$1" /t REG_DWORD /d "$2" /f >/dev/null </dev/null; }
trap 'rm -rf "$work"; "$root/tools/wine" reg delete "$units" /f >/dev/null 2>&1 </dev/null' EXIT
set_unit UnitsChannels 1 && set_unit UnitsBitRate 2 && set_unit UnitsFreq 1 &&
    set_unit UnitsTime 3 || fail "setting the units"

compared=0
wrong=0
for sample in "$samples"/sample*; do
    shellhost rows "$sample" >"$work/rows" || fail "rows: exit code $? for $sample"
    /usr/bin/python3 "$here/rows_match_ffprobe.py" "$work/rows" "$sample" || wrong=$((wrong + 1))
    compared=$((compared + 1))
done
[ $compared -ge 20 ] || fail "$compared samples only"
[ $wrong -eq 0 ] || fail "$wrong of $compared samples differ from ffprobe"
