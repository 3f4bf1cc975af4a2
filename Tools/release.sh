#!/bin/bash
# SPDX-License-Identifier: MIT
# release.sh: what is given out of the version that is checked out, in build/release-VERSION: the sources, the Debian
# package, what is new in it, and the sums to check them by. Uploads nothing. How to make a version is in CONTRIBUTING.md.
set -u
cd "$(dirname "$0")/.." || exit 1
# shellcheck source=Tools/setup.sh
. Tools/setup.sh check

version=$(sed -n 's/^project(PixelWeft VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
[ -n "$version" ] || fail "CMakeLists.txt has no version"
[ -z "$(git status --porcelain)" ] || fail "there are changes that are not committed: a release is made of a commit"

# Which stops where any place has another version.
Tools/package.sh || fail "there is no package to give out (see above)"

folder=build/release-$version
rm -rf "$folder"
mkdir -p "$folder"
cp build/package/*.deb "$folder/"
git archive --prefix="pixelweft-$version/" HEAD | gzip -9n >"$folder/pixelweft-$version.tar.gz"
[ "${PIPESTATUS[*]}" = "0 0" ] || fail "the sources can not be packed"
awk '/^## / { if (++versions == 2) exit } versions == 1' CHANGELOG.md >"$folder/NEWS-$version.md"
(cd "$folder" && sha256sum -- * >SHA256SUMS && sha256sum --check --quiet SHA256SUMS) || fail "the sums can not be made"

printf '\nPixelWeft %s of %s, in %s:\n' "$version" "$(git log -1 --format='%h, %cs')" "$folder"
ls -lh "$folder"
