#!/usr/bin/env bash
# Fails when a source isn't formatted as .clang-format says; with --fix formats it. Fails also when a
# comment of the product marks a trait that is kept on purpose in another form than "Meant: ...".
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t sources < <(find module actions logging tests benchmarks -name '*.cpp' -o -name '*.h' 2>/dev/null | sort)
if [ "${1:-}" = --fix ]; then
    clang-format -i "${sources[@]}"
else
    clang-format --dry-run -Werror "${sources[@]}"
fi
if grep -rnE --include='*.cpp' --include='*.h' \
    '\bmeant\b|\bMeant([^:]|$)|[Dd]eliberate|[Oo]n purpose' module actions logging; then
    echo 'Write "Meant: <what>, <reason>." (docs/architecture.md, "Comments").' >&2
    exit 1
fi
