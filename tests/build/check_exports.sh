#!/bin/sh
# Usage: check_exports.sh NM SHARED_OBJECT
# The two entry points are all that leaves the shared object.
exported=$("$1" -D --defined-only --format=just-symbols "$2" | sort | tr '\n' ' ')
[ "$exported" = "UG_MODULE_EXIT UG_MODULE_INIT " ] && exit 0
echo "$2 exports: $exported" >&2
exit 1
