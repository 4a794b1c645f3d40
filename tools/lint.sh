#!/usr/bin/env bash
# Format and lint of the C++ sources. clang-tidy reads each of them as clang compiles it, whose warnings are errors too.
set -euo pipefail
cd "$(dirname "$0")/.."

if [ "${1-}" = "--help" ]; then
    echo "usage: tools/lint.sh        check the format of all sources and lint them"
    echo "       tools/lint.sh --fix  bring all sources into the project's format"
    exit 0
fi

mapfile -t sources < <(git ls-files '*.cpp' '*.h')
if [ "${1-}" = "--fix" ]; then
    clang-format -i "${sources[@]}"
    exit 0
fi
clang-format --dry-run --Werror "${sources[@]}"

printf '%s\n' "${sources[@]}" | grep '\.cpp$' |
    xargs -P "$(nproc)" -n 4 clang-tidy -p build/release --quiet --warnings-as-errors='*' 2>/dev/null
echo "format and lint: ${#sources[@]} sources, no finding"
