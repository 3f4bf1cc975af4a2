#!/bin/bash
# SPDX-License-Identifier: MIT
# tidy.sh [FILE...]: clang-tidy-14 with the checks of .clang-tidy over these sources, or over all of Sources and
# Tools. Fails when it finds anything.
set -u
cd "$(dirname "$0")/.." || exit 1
mkdir -p build
# Reading the headers takes most of the time. Over everything, the sources of a target are therefore read some at a
# time, in the files that CMake makes of them for a unity build.
options=(--preset tidy)
tree=build/tidy
checks=
if [ $# = 0 ]; then
    tree=build/tidy-batches
    options+=(-B $tree -D CMAKE_UNITY_BUILD=ON)
    checks=-bugprone-suspicious-include # A batch includes sources; they themselves are judged below.
fi
cmake "${options[@]}" >build/tidy.log 2>&1 || { cat build/tidy.log >&2; exit 1; }
if [ $# -gt 0 ]; then
    files=("$@")
    says="${#files[@]} sources are tidy."
else
    mapfile -t sources < <(git ls-files --cached --others --exclude-standard -- 'Sources/*.cpp' 'Tools/*.cpp')
    mapfile -t files < <(sed -n 's,^ *"file": "\(.*/'$tree'/\(Sources\|Tools\)/.*/Unity/.*\)"\,\?$,\1,p' \
        $tree/compile_commands.json)
    # What moc would make of our headers is not ours to judge.
    grep -ho "\"$PWD/$tree/.*/moc_.*\.cpp\"" /dev/null "${files[@]}" | xargs -r touch
    # What stands in no batch is read by itself.
    for source in "${sources[@]}"; do
        cat /dev/null "${files[@]}" | grep -qF "\"$PWD/$source\"" || files+=("$source")
    done
    says="${#sources[@]} sources are tidy."
    ! grep -n '#include .*\.cpp[">]' "${sources[@]}" || exit 1
fi
[ ${#files[@]} -gt 0 ] || { echo "tidy: no sources found" >&2; exit 1; }
# Its counts of what it does not show are no finding: "3116 warnings generated."
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" clang-tidy-14 -p $tree --quiet --checks="$checks" \
    2> >(grep -v ' warnings\? generated\.$' >&2) || exit 1
echo "$says"
