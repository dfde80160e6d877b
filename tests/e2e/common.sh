# shellcheck shell=bash disable=SC2034
# To be sourced with the suite's folder as $1: what the tests of the finished
# programs share. Each test works in a folder of its own, "$work", on copies of
# the samples, which tools/make-samples has made.
set -u
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
root=$(cd "$here/../.." && pwd)
suite=$1
samples=$root/build/samples
mkdir -p "$root/build/e2e"
# A blank and letters beyond ASCII are in every path.
work=$(mktemp -d "$root/build/e2e/Prüfung 音.XXXXXX")
trap 'rm -rf "$work"' EXIT

# A failure forgets what it was told, so that the next run asks again.
asked=()
fail() {
    rm -f "${asked[@]}"
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

# ask FILE QUESTION...: what programs of others find, for `answer`. Each start of
# one costs, so all questions between two changes are asked at once, and what was
# answered once of the same bytes isn't asked again.
ask() {
    local file=$1 known
    shift
    known=$root/build/e2e/answers/$(cat "$file" "$here/foreign_reader.py" | md5sum | cut -c1-32)
    known+=".${file##*.}.$(md5sum <<<"$*" | cut -c1-32)"
    if [ ! -e "$known" ]; then
        answers=$(/usr/bin/python3 "$here/foreign_reader.py" "$file" "$@") ||
            fail "the foreign reader"
        mkdir -p "${known%/*}"
        printf '%s\n' "$answers" >"$known.$$"
        mv "$known.$$" "$known"
    fi
    asked+=("$known")
    answers=$(cat "$known")
}

# answer QUESTION: the answers of the last ask, one a line.
answer() { sed -n "s/^$1: //p" <<<"$answers"; }

# expect_foreign NAME TEXT: another program has found the text, as a value or as
# a part of one.
expect_foreign() {
    [[ $(answer "$1") == *"$2"* ]] || {
        echo "$answers"
        fail "no other program finds \"$2\" as $1"
    }
}

# expect_none NAME: no other program has found an element of that name.
expect_none() { [ -z "$(answer "$1")" ] || fail "the $1 is still found"; }

# expect_element NAME VALUE FILE SHOWN: the element's line is in the file's part
# of what `shellhost tags` has shown.
expect_element() {
    awk -v path="$(windows_path "$3" | sed 's/\\/\\\\/g')" \
        '/^[^ ]/ { inside = $0 == path } inside' <<<"$4" | grep -qxF "  $1: $2" || {
        echo "$4"
        fail "no line \"$1: $2\" for $3"
    }
}
