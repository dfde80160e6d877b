#!/usr/bin/env bash
# button_pointer.sh BUTTON_STAGE: drives the buttons of that program with a real
# pointer and keyboard, on a display and in a desktop of its own, and expects
# what it tells, line by line, with nothing in between.
set -u
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
if [ "${2:-}" != --inside ]; then
    TONEWRIGHT_USE_DISPLAY=0 exec "$root/tools/with-display" "$0" "$1" --inside
fi
work=$(mktemp -d)
mkfifo "$work/told"
"$root/tools/wine" explorer "/desktop=buttons$$,1280x1024" \
    "Z:$(realpath "$1" | tr / '\\')" >"$work/told" 2>/dev/null </dev/null &
exec 3<"$work/told"
rm -rf "$work"

fail() { echo "button_pointer: $*" >&2; exit 1; }
expect() {
    for line; do
        read -r -t 60 told <&3 || fail "nothing told instead of '$line'"
        [ "${told%$'\r'}" = "$line" ] || fail "'$told' instead of '$line'"
        echo "$line"
    done
}
expect_in_any_order() {
    local lines=$* all=" " told
    for line; do
        read -r -t 60 told <&3 || fail "nothing told instead of one of $lines"
        all+="${told%$'\r'} "
    done
    for line; do
        [[ $all == *" $line "* ]] || fail "'$all' instead of $lines"
        echo "$line"
    done
}
# Of pixels of the screen: the dialog's place, the button's, and a little.
over() { xdotool mousemove $((151 + 60 * $1)) 151; }
beside() { xdotool mousemove 300 250; }

beside
expect "stage open"

# Hover
over 0
expect "first hovered"
beside
expect "first idle"

# Click with either button
over 0
expect "first hovered"
xdotool mousedown 1
expect "first pressed" "first focus"
xdotool mouseup 1
expect "first click left" "first hovered"
xdotool mousedown 3
expect "first pressed"
xdotool mouseup 3
expect "first click right" "first hovered"

# Leave while pressed, come back, leave for good: no click
xdotool mousedown 1
expect "first pressed"
beside
expect "first idle"
over 0
expect "first pressed"
xdotool mousemove 700 600 # out of the dialog, whose capture tells of it
expect "first idle"
xdotool mouseup 1
over 1
expect "second hovered"
beside
expect "second idle"

# Keys
xdotool key Tab
expect "second focus"
xdotool keydown space
expect "second pressed"
xdotool keyup space
expect "second click left" "second idle"
xdotool keydown Return
expect "second pressed"
xdotool keyup Return
expect "second click left" "second idle"

# A menu by the mouse: the right button chooses in it too
over 2
expect "third hovered"
xdotool mousedown 1
expect "third pressed" "menu shown"
xdotool mouseup 1
xdotool mousemove 285 165
xdotool mousedown 3
xdotool mouseup 3
expect "third idle" "command one"
beside

# and by the keyboard
xdotool key Tab
expect "third focus"
xdotool key space
expect "menu shown" "third pressed"
xdotool key Down
xdotool key Return
expect "command one" "third idle"

# A tip: up after its delay, gone when the cursor has left, and so again
for round in 1 2; do
    over 3
    expect "fourth hovered" "tip up"
    beside
    expect_in_any_order "fourth idle" "tip gone"
done

# Closed with the tip up
over 3
expect "fourth hovered" "tip up"
xdotool key Escape
expect_in_any_order "tip gone" "stage closed"
