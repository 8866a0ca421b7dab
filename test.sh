#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every check: ./test.sh
# The build must be free of warnings, every include as the table of rooms tells, the sources
# formatted and free of clang-tidy's findings, and all tests must pass, those of the threads under the
# thread sanitizer, too.
set -euo pipefail
[ $# -eq 0 ] || { echo "usage: ./test.sh" >&2; exit 2; }
cd "$(dirname "$0")"
. tools/dependencies.sh

step() { echo; echo "== $*"; }

step "Packages"
need build kit emulator run display check windows service

step "Format"
tools/check-format.sh

step "Includes"
tools/check-includes.py

step "Windows"
tools/check-windows.sh

step "Build"
cmake --preset dev -DBUILD_TESTING=ON -DTILER_WERROR=ON
cmake --build --preset dev

step "Tests"
ctest --preset dev -j "$(nproc)" --no-tests=error

step "Threads"
cmake --preset tsan -DBUILD_TESTING=ON -DTILER_WERROR=ON
cmake --build --preset tsan --target buildthread_test logthreadstest
ctest --preset tsan -R '^(buildthread_test|logthreadstest)$' --no-tests=error

step "clang-tidy"
tools/check-tidy.sh build

echo
echo "All checks passed."
