#!/bin/bash
# SPDX-License-Identifier: MIT
# package.sh: makes the Debian package of the release build, in build/package, and judges it, what the desktop reads of
# it, and whether all of it is of one version. The last line says where it is.
set -u
cd "$(dirname "$0")/.." || exit 1
# shellcheck source=Tools/setup.sh
. Tools/setup.sh check

check() { # check SAYS COMMAND...
    "${@:2}" || fail "$1"
}

[ -f build/release/build.ninja ] || check "configuring failed (see above)" cmake --preset release
check "building failed (see above)" env NINJA_STATUS='[%f/%t] ' \
    cmake --build build/release --target PixelWeft pixelweft-patch FixtureTool
rm -rf build/package
# The same commit gives the same package.
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct 2>/dev/null) && export SOURCE_DATE_EPOCH
check "packing failed (see above)" cpack --config build/release/CPackConfig.cmake -B build/package
packages=(build/package/*.deb)
package=${packages[0]}

files=build/package/files
dpkg-deb -x "$package" $files
check "the menu entry is wrong" desktop-file-validate $files/usr/share/applications/*.desktop
check "what software centres read is wrong" appstreamcli validate --no-net $files/usr/share/metainfo/*.xml
check "the kinds of files are wrong" env XDG_DATA_DIRS="$PWD/$files/usr/share" PKGSYSTEM_ENABLE_FSYNC=0 \
    update-mime-database -n $files/usr/share/mime
# The version is that of the project in CMakeLists.txt; the build compares it with CHANGELOG.md.
version=$(dpkg-deb -f "$package" Version)
grep -q "<release version=\"${version%-*}\"" $files/usr/share/metainfo/*.xml || fail "software centres read another version"
[ "$(zcat $files/usr/share/doc/pixelweft/changelog.Debian.gz | dpkg-parsechangelog -l - -S Version)" = "$version" ] ||
    fail "the package's changelog is of another version"
for page in "$files"/usr/share/man/man1/*.gz; do
    said=$(man --warnings=w -l "$page" 2>&1 >/dev/null)
    [ -z "$said" ] || fail "$(basename "$page"): $said"
    # Each option of the program's own help is in its page.
    name=$(basename "$page" .1.gz)
    text=$(man -P cat -l "$page" | col -b)
    [ "$("$files/usr/bin/$name" --version)" = "$name ${version%-*}" ] && grep -qF "PixelWeft ${version%-*}" <<<"$text" ||
        fail "$name or its page is of another version than $version"
    for option in $("$files/usr/bin/$name" --help | grep -E '^ +-' | grep -oE -- ' --?[a-z][a-z-]*' | sort -u); do
        grep -qF -- "$option" <<<"$text" || fail "$name --help has $option, and its manual page has not"
    done
done
check "lintian does not like the package" lintian --allow-root --fail-on error,warning --tag-display-limit 0 "$package"

printf 'Package %s kB, installed %s kB.\n' "$(($(stat -c %s "$package") / 1024))" \
    "$(dpkg-deb -f "$package" Installed-Size)"
echo "$package"
