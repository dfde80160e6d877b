#!/usr/bin/env bash
# every_sample_is_tested.sh SUITE SAMPLE...: no sample is without its tests.
. "$(dirname "$0")/common.sh"
shift
made=$(cd "$samples" && printf '%s\n' sample* | sort)
tested=$(printf '%s\n' "$@" | sort)
[ "$made" = "$tested" ] || fail "made but not tested, or the reverse:
$(diff <(echo "$made") <(echo "$tested"))"
