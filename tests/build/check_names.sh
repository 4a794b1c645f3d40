#!/bin/sh
# Usage: check_names.sh NM OBJECT PROGRAM
# The program links, so all names have a definition with external linkage outside of namespaces. Its own object holds
# its tables (with what the sanitizers add to them) and nothing else: an inline or static function of a header would
# stand there too.
[ -x "$3" ] || { echo "$3 is missing" >&2; exit 1; }
defined=$("$1" --demangle --defined-only --format=posix "$2") || exit 1
own=$(echo "$defined" | grep -vE '^(main|(__odr_asan\.)?names_[a-z_]+|_sub_[DI]_[0-9_]+) ')
[ -z "$own" ] && exit 0
echo "defined in every program that includes the module's headers:" >&2
echo "$own" >&2
exit 1
