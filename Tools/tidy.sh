#!/bin/bash
# SPDX-License-Identifier: MIT
# tidy.sh [FILE...]: clang-tidy-14 with the checks of .clang-tidy over these sources, or over all of Sources and
# Tools. Fails when it finds anything.
set -u
cd "$(dirname "$0")/.." || exit 1
mkdir -p build
cmake --preset tidy >build/tidy.log 2>&1 || { cat build/tidy.log >&2; exit 1; }
if [ $# -gt 0 ]; then
    files=("$@")
else
    mapfile -t files < <(git ls-files --cached --others --exclude-standard -- 'Sources/*.cpp' 'Tools/*.cpp')
fi
[ ${#files[@]} -gt 0 ] || { echo "tidy: no sources found" >&2; exit 1; }
# Its counts of what it does not show are no finding: "3116 warnings generated."
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" clang-tidy-14 -p build/tidy --quiet \
    2> >(grep -v ' warnings\? generated\.$' >&2) || exit 1
echo "${#files[@]} sources are tidy."
