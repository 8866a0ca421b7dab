#!/usr/bin/env bash
# Runs clang-tidy over the program's sources: tools/check-tidy.sh <build directory>
# A source is looked at again only when it, a header or the rules have changed. Those that aren't
# built on this system are left out.
set -euo pipefail
cd "$(dirname "$0")/.."
build="$1"
stamps="$build/tidy"
mkdir -p "$stamps"
rules="$(cat .clang-tidy $(find module actions logging -name '*.h' 2>/dev/null | sort) | sha256sum)"
mapfile -t sources < <(find module actions logging -name '*.cpp' 2>/dev/null | sort |
    while read -r source; do
        ! grep -qF "/$source\"" "$build/compile_commands.json" || echo "$source"
    done)
[ "${#sources[@]}" != 0 ] || {
    echo "check-tidy.sh: $build has no list of sources" >&2
    exit 1
}

one() {
    local source="$1" stamp
    stamp="$2/$(echo "$source" | tr / _)"
    local now
    now="$3 $(sha256sum <"$source")"
    if [ -f "$stamp" ] && [ "$(cat "$stamp")" = "$now" ]; then
        return 0
    fi
    # The compiler's own options that clang doesn't know are of no matter here.
    clang-tidy --quiet -p "$4" --extra-arg=-Wno-unknown-warning-option "$source" 2>/dev/null || {
        echo "clang-tidy: $source" >&2
        return 1
    }
    echo "$now" >"$stamp"
}
export -f one
printf '%s\n' "${sources[@]}" |
    xargs -P "$(nproc)" -I{} bash -c 'one "$1" "$2" "$3" "$4"' _ {} "$stamps" "$rules" "$build"
echo "${#sources[@]} sources looked at."
