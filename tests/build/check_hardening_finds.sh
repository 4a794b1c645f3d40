#!/bin/sh
# Usage: check_hardening_finds.sh READELF CC
# check_hardening.sh passes a sound shared object and names the fault of each that has one.
here=$(dirname "$0")
work=$(mktemp -d) || exit 2
trap 'rm -rf "$work"' EXIT
failed=0

cat >"$work/sample.c" <<'SAMPLE'
#include <stdio.h>
#include <string.h>
int sample(const char *text)
{
    char copy[32];
    strcpy(copy, text);
    return puts(copy);
}
SAMPLE

sound="-shared -fPIC -O2 -w -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -Wl,-z,relro -Wl,-z,now"

# look EXPECTED OPTIONS...: the sample with these options on top of the sound ones; EXPECTED is the fault or "sound".
look() {
    expected=$1
    shift
    # shellcheck disable=SC2086
    "$compiler" $sound "$@" -o "$work/sample.so" "$work/sample.c" || { failed=1; return; }
    if said=$(sh "$here/check_hardening.sh" "$readelf" "$work/sample.so" 2>&1); then
        said=sound
    fi
    case $said in
    *"$expected"*) ;;
    *)
        echo "with $*: expected \"$expected\", but: $said" >&2
        failed=1
        ;;
    esac
}

readelf=$1
compiler=$2
look sound
look sound "-Wl,-rpath,\$ORIGIN/../lib:/usr/lib"
look "empty entry" "-Wl,-rpath,/usr/lib::"
look "empty entry" "-Wl,-rpath,:/usr/lib"
look "relative entry" "-Wl,-rpath,lib"
look "read-only relocations" -Wl,-z,norelro
look "binds its functions late" -Wl,-z,lazy
look "executable stack" -Wl,-z,execstack
look "guard of the stack" -fno-stack-protector
look "unchecked functions" -U_FORTIFY_SOURCE
exit $failed
