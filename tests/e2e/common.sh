# shellcheck shell=bash disable=SC2034
# To be sourced with the suite's folder as $1: what the tests of the finished
# programs share. Each test works in a folder of its own, "$work", on copies.
set -u
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../.." && pwd)
suite=$1
samples=$root/build/samples
"$root/tools/make-samples" || exit 1
mkdir -p "$root/build/e2e"
# A blank and letters beyond ASCII are in every path.
work=$(mktemp -d "$root/build/e2e/Prüfung 音.XXXXXX")
trap 'rm -rf "$work"' EXIT

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

# The Wine drive Z: is the root of this machine.
windows_path() {
    local path=Z:${1//\//\\}
    printf '%s' "$path"
}

# The module beside the program, whether it's registered or not.
shellhost() {
    "$root/tools/wine" "$suite/shellhost.exe" --module "$(windows_path "$suite/tNWShell.DLL")" "$@" </dev/null
}

# expect_element NAME VALUE FILE: the element's line is shown.
expect_element() {
    local shown
    shown=$(shellhost tags "$3")
    grep -qxF "  $1: $2" <<<"$shown" || {
        echo "$shown"
        fail "no line \"$1: $2\""
    }
}

foreign() { /usr/bin/python3 "$here/foreign_reader.py" "$@"; }

# expect_foreign NAME TEXT FILE: another program finds the text, as a value or
# as a part of one.
expect_foreign() {
    local found
    found=$(foreign tag "$3" "$1")
    [[ $found == *"$2"* ]] || {
        echo "$found"
        fail "no other program finds \"$2\" as $1"
    }
}
