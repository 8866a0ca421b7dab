#!/bin/sh
# Puts the Tiler that follows this script in the place of the one in the current folder, or in a
# folder that is named: sh tiler-....run ~/tiler. Tiler itself starts it so after a download. It
# waits until Tiler has been left, replaces the program's files, leaves all others, and starts Tiler.
set -eu
sum=@SHA256@
lines=@LINES@
self="$(realpath "$0")"
folder="$(realpath "${1:-.}")"
program="$folder/vantrel"

fail() {
    echo "$1" >&2
    exit 1
}
[ -f "$program" ] || fail "There is no Tiler in $folder."

# Started by Tiler it has no terminal to say what is wrong.
if [ ! -t 2 ] && mkdir -p "$folder/log"; then
    exec 2>>"$folder/log/update.txt"
fi
new="$(mktemp -d "$folder/.update.XXXXXX")"
trap 'rm -rf "$new"' EXIT
tail -n "+$((lines + 1))" "$self" >"$new/archive"
echo "$sum  $new/archive" | sha256sum --check --status || fail "The download is damaged."
mkdir "$new/tiler"
tar -xJf "$new/archive" -C "$new/tiler" --strip-components=1

runs() {
    for process in /proc/[0-9]*/exe; do
        [ "$(readlink "$process" 2>/dev/null)" != "$program" ] || return 0
    done
    return 1
}
while runs; do
    sleep 0.2
done
# Each file is made anew: what still has an old one open keeps that.
cp -a --remove-destination "$new/tiler/." "$folder/"
rm -rf "$new"
cd "$folder"
"$program" >/dev/null 2>&1 </dev/null &
exit 0
