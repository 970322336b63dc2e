#!/bin/sh
# Usage: check_no_real_end_calls.sh NM PROGRAM...
#
# Fails when a unit test program imports a call that ends the machine's work: run
# as root, a stray one would be real. Programs of the unit ring bring their own.
set -u

if [ $# -lt 2 ]; then
    echo "no program to check" >&2
    exit 1
fi
nm=$1
shift

failures=0
for program in "$@"; do
    if ! imports=$("$nm" -D --undefined-only "$program"); then
        failures=$((failures + 1))
        continue
    fi
    if real=$(printf '%s\n' "$imports" | grep -E ' U (reboot|mount|umount|umount2)(@|$)'); then
        echo "$program imports:" >&2
        echo "$real" >&2
        failures=$((failures + 1))
    fi
done
echo "$# programs checked, $failures at fault"
[ "$failures" -eq 0 ]
