#!/usr/bin/env bash
# Takes pictures of everything that the program shows, in both languages and on several screens:
#   tools/gallery.sh [<folder>]
# build/gallery by default. Beside the folder of each language and screen lie its sheets, with
# twelve pictures on each. GALLERY_SCREENS="1280x768 1920x1200@1.5" takes these screens alone.
set -euo pipefail
cd "$(dirname "$0")/.."
. tools/dependencies.sh
. tools/virtual-display.sh
folder="$(realpath -m "${1:-build/gallery}")"
need build run display service
cmake --preset dev >/dev/null
cmake --build --preset dev --target gallery | tail -n 1
program="$PWD/build/tests/gallery/gallery.d/gallery"

home="$(mktemp -d)"
trap 'stop_display; rm -rf "$home"' EXIT
chmod 700 "$home"
mkdir "$home/tmp"
rm -rf "$folder"
mkdir -p "$folder"
for screen in ${GALLERY_SCREENS:-1280x768 1366x768 1920x1080 1920x1200@1.5}; do
    for language in C zh_CN; do
        name="$screen-$([ "$language" = C ] && echo en || echo zh)"
        start_display "${screen%@*}"
        env -u LC_ALL -u LANGUAGE -u QT_QPA_PLATFORM HOME="$home" XDG_CONFIG_HOME="$home/config" \
            XDG_RUNTIME_DIR="$home" TMPDIR="$home/tmp" LANG="$language.UTF-8" \
            QT_SCALE_FACTOR="$([[ "$screen" = *@* ]] && echo "${screen#*@}" || echo 1)" \
            timeout 300 "$program" "$folder/$name" 2>"$home/log" || {
            cat "$home/log" >&2
            exit 1
        }
        stop_display
        echo "$name: $(find "$folder/$name" -name '*.png' | wc -l) pictures"
    done
done
