#!/bin/sh
# Usage: check_hardening.sh READELF [--not-fortified] FILE...
# Each program and shared object stands at a random address, has its tables of functions read-only and filled at the
# start, no executable stack, the guard of the stack, checked copies of the standard library's functions, and looks for
# libraries in no folder that depends on where it is started.
readelf=$1
shift
fortified=yes
if [ "$1" = --not-fortified ]; then
    fortified=no
    shift
fi
[ $# -gt 0 ] || { echo "no file to look at" >&2; exit 2; }

failed=0
fault() {
    echo "$file: $1" >&2
    failed=1
}

for file in "$@"; do
    header=$("$readelf" -h "$file") || { fault "cannot be read"; continue; }
    segments=$("$readelf" -lW "$file")
    dynamic=$("$readelf" -dW "$file")
    symbols=$("$readelf" --dyn-syms -W "$file")
    echo "$header" | grep -qE 'Type: +DYN' || fault "stands at a fixed address"
    echo "$segments" | grep -q GNU_RELRO || fault "has no read-only relocations"
    echo "$segments" | grep -qE 'GNU_STACK.* RW +0x' || fault "has an executable stack"
    echo "$dynamic" | grep -qE '\(FLAGS(_1)?\).*(BIND_NOW|NOW)' || fault "binds its functions late"
    echo "$dynamic" | grep -q TEXTREL && fault "has relocations in its code"
    echo "$symbols" | grep -q __stack_chk_fail || fault "has no guard of the stack"
    [ $fortified = no ] || echo "$symbols" | grep -qE 'UND __[a-z]+_chk(@|$)' || fault "calls unchecked functions"
    folders=$(echo "$dynamic" | sed -nE 's/.*\((RUNPATH|RPATH)\).*\[(.*)\]/\2/p')
    # An empty entry is the current folder, like a relative one.
    case ":$folders:" in
    ::) ;; # there is none
    *::*) fault "has an empty entry in its RUNPATH: $folders" ;;
    esac
    for folder in $(echo "$folders" | tr ':' ' '); do
        case $folder in
        /* | \$ORIGIN | \$ORIGIN/*) ;;
        *) fault "has a relative entry in its RUNPATH: $folder" ;;
        esac
    done
done
exit $failed
