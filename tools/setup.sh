#!/usr/bin/env bash
# Installs the packages that the project needs and that are missing: Debian 12 or newer, Ubuntu 24.04 or
# newer. With everything present it calls nothing but dpkg-query, so it works without a network.
#
#   tools/setup.sh run       to build and run the viewer
#   tools/setup.sh test      ... and for ./test.sh
#   tools/setup.sh ci        ... and for .ci/run
#   tools/setup.sh package   to build the Debian package and to check it
#   tools/setup.sh measure   ... and for tools/measure
set -euo pipefail

run_packages=(g++ cmake ninja-build qt6-base-dev libgtest-dev libbenchmark-dev libhwy-dev libutf8proc-dev fontconfig
    fonts-liberation2 pkg-config libcairo2-dev libharfbuzz-dev libcups2-dev
    qt6-tools-dev qt6-documentation-tools libqt6sql6-sqlite python3 python3-markdown)
test_packages=(xvfb xdotool xclip openbox python3 clang clang-format clang-tidy libfuse3-dev fuse3
    libfiu-dev fiu-utils poppler-utils xsettingsd cups-daemon cups-client cups-ipp-utils dbus-daemon dbus-bin
    libglib2.0-bin)
package_packages=(debhelper dpkg-dev fakeroot pkgconf lintian desktop-file-utils appstream man-db)
ci_packages=(g++-mingw-w64-x86-64-posix)
measure_packages=(xvfb xdotool openbox python3 ripgrep strace poppler-utils enscript a2ps paps ghostscript)

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "setup: run this as root, or install sudo" >&2
        return 1
    fi
}

purpose=${1:-run}
case "$purpose" in
run) wanted=("${run_packages[@]}") ;;
test) wanted=("${run_packages[@]}" "${test_packages[@]}") ;;
ci) wanted=("${run_packages[@]}" "${test_packages[@]}" "${ci_packages[@]}") ;;
package) wanted=("${run_packages[@]}" "${package_packages[@]}") ;;
measure) wanted=("${run_packages[@]}" "${measure_packages[@]}") ;;
*)
    echo "setup: what for? One of run, test, ci, package, measure" >&2
    exit 2
    ;;
esac

if ! command -v dpkg-query >/dev/null; then
    echo "setup: this system has no Debian packages; please install the like of: ${wanted[*]}" >&2
    exit 0
fi

installed=$(dpkg-query -W -f=' ${Package}:${db:Status-Status} ' "${wanted[@]}" 2>/dev/null || true)
missing=()
for package in "${wanted[@]}"; do
    [[ $installed == *" $package:installed "* ]] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "setup: installing ${missing[*]}" >&2
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { as_root apt-get update -q &&
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -qy --no-install-recommends "${missing[@]}"; } \
    >"$log" 2>&1 </dev/null; then
    cat "$log" >&2
    echo "setup: could not install ${missing[*]}" >&2
    exit 1
fi
