#!/bin/sh
# Usage: check_undefined.sh SHARED_OBJECT [PLATFORM]
# The shared object loads by itself, or in a program that has loaded a platform: every library is found and every symbol
# is in one of them.
resolved=$(${2:+env LD_PRELOAD="$2"} ldd -r "$1" 2>&1) || { echo "$resolved" >&2; exit 1; }
missing=$(echo "$resolved" | grep -E 'undefined symbol|not found')
[ -z "$missing" ] && exit 0
echo "$missing" >&2
exit 1
