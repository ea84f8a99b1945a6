#!/usr/bin/env bash
# Builds the viewer if anything has changed, and runs it:  ./run.sh [options] [file]
# Without a file it shows samples/report.txt. Without a display it draws the first screen off-screen, saves
# it as a picture, and says where.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
build=$root/build/release
"$root/tools/setup.sh" run

# A terminal sees how far the build is; errors are shown in full; a build with nothing to do says nothing.
build_target() {
    local log="$build.log"
    mkdir -p "$root/build"
    if [ ! -f "$build/build.ninja" ] && ! (cd "$root" && cmake --preset release) >"$log" 2>&1; then
        cat "$log" >&2
        exit 1
    fi
    [ -x "$build/bin/$1" ] || echo "Building $1 (a minute or two, the first time) ..." >&2
    if ! cmake --build "$build" --target "$1" >"$log" 2>&1; then
        grep -v '^\[[0-9]*/[0-9]*\] \(Building\|Linking\|Re-checking\|Automatic\)' "$log" >&2
        exit 1
    fi
}

has_file=no
before=
for word in "$@"; do
    case "$before" in
    --at | --find | --find-hex) word=+value ;; # no file, but the value of an option
    esac
    before=$word
    case "$word" in
    --help | --version | --list | --send*) # needs neither a file nor a display
        build_target quorl
        exec "$build/bin/quorl" "$@"
        ;;
    - | --service) has_file=yes ;;
    -* | +*) ;;
    *) has_file=yes ;;
    esac
done
[ $has_file = yes ] || set -- "$@" "$root/samples/report.txt"

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    build_target quorl
    exec "$build/bin/quorl" "$@"
fi

build_target quorl-snapshot
picture=$root/build/first-screen.png
"$build/bin/quorl-snapshot" -o "$picture" -- "$@"
echo "There is no display here. The first screen is in $picture"
