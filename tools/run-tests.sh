#!/bin/sh
# Runs ctest with the given options and fails when a test was skipped, which ctest counts as passed.
set -u

if [ "${1-}" = "--help" ]; then
    echo "usage: tools/run-tests.sh CTEST-OPTION...    such as: tools/run-tests.sh --preset release -R screen"
    exit 0
fi

results=$(mktemp)
trap 'rm -f "$results"' EXIT
ctest "$@" --output-junit "$results" || exit $?
skipped=$(grep -c '<skipped' "$results")
[ "$skipped" -eq 0 ] && exit 0
echo "run-tests: $skipped tests were skipped; a skipped test fails the run" >&2
exit 1
