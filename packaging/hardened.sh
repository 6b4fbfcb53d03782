#!/usr/bin/env bash
# Whether programs are closed against faults of memory: packaging/hardened.sh PROGRAM...
# Tells each protection that one lacks; ends with 1 then.
set -euo pipefail

status=0
lacks() { # PROGRAM WHAT
    echo "$1 lacks: $2" >&2
    status=1
}

elf() { # PROGRAM
    local headers symbols
    headers=$(readelf -Wldh "$1")
    symbols=$(readelf -W --dyn-syms "$1")
    grep -q 'Flags:.*PIE' <<<"$headers" || lacks "$1" "a random place in memory (PIE)"
    grep -q GNU_RELRO <<<"$headers" || lacks "$1" "read-only tables (RELRO)"
    grep -q 'BIND_NOW' <<<"$headers" || lacks "$1" "tables filled at the start (BIND_NOW)"
    grep -q 'GNU_STACK.* RW ' <<<"$headers" || lacks "$1" "a stack without code"
    grep -q '__stack_chk_fail' <<<"$symbols" || lacks "$1" "the stack protector"
    # Of calls that the library has in a checked form none is left in the other one.
    if grep -qE ' (printf|fprintf|sprintf|snprintf|vsnprintf|strcpy|strcat|fgets)@' <<<"$symbols"; then
        lacks "$1" "checked library calls (fortify)"
    fi
    # The checked form of the one call that all of our logic makes, which spells numbers.
    case ${1##*/} in
    kervan-transfer | kervan-aktar)
        grep -q __snprintf_chk <<<"$symbols" || lacks "$1" "checked library calls (fortify)"
        ;;
    esac
    grep -q '__glibcxx_assert_fail' <<<"$symbols" || lacks "$1" "checked bounds (_GLIBCXX_ASSERTIONS)"
    # The first step of main() is a place where a jump may end.
    grep -q endbr64 <<<"$(objdump -d --no-show-raw-insn "$1" --disassemble=main)" ||
        lacks "$1" "marked targets of jumps (cf-protection)"
}

# By the names that the header of a Windows program has for them.
portable_executable() { # PROGRAM
    local headers
    headers=$(x86_64-w64-mingw32-objdump -p "$1")
    for flag in HIGH_ENTROPY_VA DYNAMIC_BASE NX_COMPAT; do
        grep -q "$flag" <<<"$headers" || lacks "$1" "$flag"
    done
}

for program in "$@"; do
    case $(head -c 2 "$program") in
    MZ) portable_executable "$program" ;;
    *) elf "$program" ;;
    esac
done
exit $status
