#!/usr/bin/env bash
# value_list_pointer.sh VALUE_LIST_STAGE: drives the list of that program with a
# real pointer and keyboard, on a display and in a desktop of its own, and
# expects what it tells, line by line, with nothing in between.
set -u
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
if [ "${2:-}" != --inside ]; then
    TONEWRIGHT_USE_DISPLAY=0 exec "$root/tools/with-display" "$0" "$1" --inside
fi
work=$(mktemp -d)
mkfifo "$work/told"
"$root/tools/wine" explorer "/desktop=rows$$,1280x1024" \
    "Z:$(realpath "$1" | tr / '\\')" >"$work/told" 2>/dev/null </dev/null &
exec 3<"$work/told"
rm -rf "$work"

fail() { echo "value_list_pointer: $*" >&2; exit 1; }
read_told() {
    read -r -t 60 told <&3 || fail "nothing told instead of '$1'"
    told=${told%$'\r'}
}
expect() {
    for line; do
        read_told "$line"
        [ "$told" = "$line" ] || fail "'$told' instead of '$line'"
        echo "$line"
    done
}
# Of pixels of the screen: a row's name, value, mark and right end, and the
# dialog's button.
y_of() { echo $((122 + 21 * $1)); }
over_name() { xdotool mousemove 150 "$(y_of "$1")"; }
over_value() { xdotool mousemove 260 "$(y_of "$1")"; }
over_mark() { xdotool mousemove 126 "$(y_of "$1")"; }
over_end() { xdotool mousemove 375 "$(y_of "$1")"; }
over_beside() { xdotool mousemove 450 120; }

until read_told "stage open" && [ "$told" = "stage open" ]; do :; done

# A field: typed text reaches the row at each stroke; return ends the edit
over_name 1
xdotool click 1
expect "selected 1" "edit 1"
xdotool type new
expect "value 1 n" "value 1 ne" "value 1 new"
xdotool key Return
expect "edit -1"

# Arrows go from row to row
xdotool key Up
expect "selected 0"
xdotool key Down
expect "selected 1" "edit 1"
xdotool key Down
expect "selected 2" "edit 2"

# What was completed stays with return
xdotool type ro
xdotool key Return
expect "value 2 rock" "edit -1"

# and goes with tab, which leads to the next control
xdotool key Up
expect "selected 1" "edit 1"
xdotool key Down
expect "selected 2" "edit 2"
xdotool type fo
xdotool key Tab
expect "value 2 fo" "edit -1" "beside focus"

# The mouse brings the focus and the edit back; leaving by it keeps what was typed
over_name 2
xdotool click 1
expect "edit 2" "beside none"
xdotool type po
over_name 0
xdotool click 1
expect "selected 0" "value 2 po" "edit -1"

# A choice by its first letter, and by the mouse
over_name 3
xdotool click 1
expect "selected 3" "edit 3"
xdotool key f
expect "value 3 Folk"
over_end 3
xdotool click 1
read_told "choices X Y"
[[ $told =~ ^choices\ ([0-9]+)\ ([0-9]+)$ ]] || fail "'$told' instead of an open list"
xdotool mousemove "${BASH_REMATCH[1]}" "${BASH_REMATCH[2]}"
xdotool click 1
expect "value 3 Rock" "choices closed"

# Marks: by the mouse, in the selected row anywhere, and by the space key
over_mark 4
xdotool click 1
expect "value 4 1" "selected 4" "edit -1"
over_value 4
xdotool click 1
expect "value 4 "
over_mark 5
xdotool click 1
expect "value 5 -1" "value 6 1" "selected 5"
xdotool key Down
expect "selected 6"
xdotool key space
expect "value 5 1" "value 6 -1"

# A row's button
over_name 7
xdotool click 1
expect "selected 7"
over_end 7
xdotool click 1
expect "button 7"

# Several lines: return makes one, arrows walk inside and leave at the ends
over_name 8
xdotool click 1
expect "selected 8" "edit 8"
xdotool key End
xdotool key Return
expect 'value 8 ab\r\n'
xdotool key c
expect 'value 8 ab\r\nc'
xdotool key Up
xdotool key Up
expect "selected 7" "edit -1"

# The right button selects before its release is told
over_value 9
xdotool mousedown 3
expect "selected 9"
xdotool mouseup 3
expect "right 9 at 260,$(y_of 9)"

# and the next press is anybody's
over_beside
xdotool mousedown 1
expect "beside focus"
xdotool mouseup 1
expect "beside clicked"

# The wheel scrolls, over an editor too
over_name 1
xdotool click 1
expect "selected 1" "beside none" "edit 1"
over_value 1
xdotool click 5
expect "top 3"
xdotool click 4
expect "top 0"

# Keys that act when they are let go
xdotool key Return
expect "edit -1"
xdotool key Home
expect "selected 0"
xdotool key End
read_told "selected 39"
[ "$told" = "selected 39" ] || fail "'$told' instead of the last row"
read_told "top N"
xdotool key Escape
expect "stage closed"
