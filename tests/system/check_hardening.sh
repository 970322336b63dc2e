#!/bin/sh
# The program runs as root on input from a process that just crashed. Checks that
# the binary that ships has what the linker and the compiler offer against misuse.
#
#   check_hardening.sh PROGRAM
set -u
program=$1
failed=0

expect() { # WHAT COMMAND...
    what=$1
    shift
    if ! "$@" >/dev/null; then
        echo "not hardened: $what" >&2
        failed=1
    fi
}

headers=$(readelf --wide --file-header --program-headers --dynamic --dyn-syms "$program") || exit 1
has() { printf '%s\n' "$headers" | grep -E "$1"; }
executable_stack() { ! has 'GNU_STACK .* RWE '; }

expect "position-independent executable" has 'Type: +DYN \(Position-Independent Executable'
expect "relocations read-only after start" has 'GNU_RELRO'
expect "no lazy binding" has 'BIND_NOW|FLAGS.*NOW'
expect "stack protector" has '__stack_chk_fail'
expect "checked libc calls" has '__[a-z]+_chk@'
expect "no executable stack" executable_stack
exit $failed
