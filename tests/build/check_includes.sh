#!/bin/sh
# Usage: check_includes.sh SOURCE_DIR
# The module sees the platform's interfaces and itself: no file of it names a path of the desktop port, the host or the
# theme, and every header in quotes is one of its own.
cd "$1" || exit 2
failed=0

if grep -rnE 'platform/desktop|(^|[^[:alnum:]_.-])(host|theme)/' src common; then
    echo "the lines above name a folder that the module must not see" >&2
    failed=1
fi

includes=$(grep -rhoE '^[[:space:]]*#[[:space:]]*include[[:space:]]+"[^"]+"' src common | sed 's/.*"\(.*\)"/\1/' | sort -u)
if [ -z "$includes" ]; then
    echo "no include found in src and common" >&2
    exit 1
fi
for header in $includes; do
    case $header in
    *..*) ;;
    *) [ -f "src/$header" ] || [ -f "common/src/$header" ] || [ -n "$(find src common -name "$header")" ] && continue ;;
    esac
    echo "\"$header\" is no header of the module" >&2
    failed=1
done
exit $failed
