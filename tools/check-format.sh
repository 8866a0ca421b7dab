#!/usr/bin/env bash
# Fails when a source isn't formatted as .clang-format says; with --fix formats it.
set -euo pipefail
cd "$(dirname "$0")/.."
mapfile -t sources < <(find module actions logging tests benchmarks -name '*.cpp' -o -name '*.h' 2>/dev/null | sort)
if [ "${1:-}" = --fix ]; then
    clang-format -i "${sources[@]}"
else
    clang-format --dry-run -Werror "${sources[@]}"
fi
