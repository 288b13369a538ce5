#!/bin/bash
# The application of what was built for Macs elsewhere, if that was built: bundles-cross-build.sh SOURCE BUILD
set -euo pipefail
source=$1
build=$2

for file in corvane libcorvane-app.dylib packaging/macos/Info.plist; do
    if [[ ! -f $build/$file ]]; then
        echo "skipped: there is no $build/$file"
        exit 77
    fi
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
(cd "$build" && cp --parents corvane libcorvane-app.dylib packaging/macos/Info.plist "$work/")
"$source/scripts/bundle-mac" "$work"

# A 64-bit Mach-O file for arm64 of a kind: 2 is a program, 8 what a program loads.
is_mach_o() {
    local head
    head=$(od -A n -t x4 -N 16 --endian=little "$1" | tr -s ' ')
    if [[ $head != " feedfacf 0100000c "*" 0000000$2" ]]; then
        echo "$1 begins with$head"
        return 1
    fi
}
contents=$work/Corvane.app/Contents
is_mach_o "$contents/MacOS/corvane" 2
is_mach_o "$contents/Resources/corvane-helper" 2
is_mach_o "$contents/Frameworks/libcorvane-app.dylib" 8
