#!/bin/bash
# Installs a build below a prefix of its own, twice, and checks that it is listed what belongs to it, and only that.
#
#   installs-below-a-prefix.sh CMAKE BUILD STAGE PREFIX
set -euo pipefail
umask 022
cmake=$1 build=$2 stage=$3 prefix=$4

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

rm -rf "$stage"
list=$stage$prefix/libexec/corvane/installed-files
expect_listed() {
    local differences
    differences=$(diff <(sort "$list") <(cd "$stage$prefix" && find . -not -type d -printf '%P\n' | sort)) ||
        fail "the list is not of what is there ($1): $differences"
}

DESTDIR=$stage "$cmake" --install "$build" --prefix "$prefix" >/dev/null
[[ $(cd "$stage" && find . -not -type d -not -path ".$prefix/*") == "" ]] || fail "there is something outside the prefix"
expect_listed "at first"

# What an older version had and this one has not is still Corvane's; what others have put there is not.
echo "share/corvane/from-an-older-version" >>"$list"
install -D --mode 644 /dev/null "$stage$prefix/share/corvane/from-an-older-version"
touch "$stage$prefix/theirs"
DESTDIR=$stage "$cmake" --install "$build" --prefix "$prefix" >/dev/null
rm "$stage$prefix/theirs"
expect_listed "over an older version"

escaped=${prefix//&/&amp;}
for script in install-helper uninstall; do
    grep --quiet --fixed-strings ">$escaped/libexec/corvane/$script<" \
        "$stage$prefix/share/polkit-1/actions/de.tavrin.corvane.policy" || fail "polkit's action names another script"
done
