#!/bin/bash
# SPDX-License-Identifier: MIT
# Fails, and says where, when a source is not as clang-format-14 with .clang-format would write it.
set -u
cd "$(dirname "$0")/.." || exit 1
files=()
# What git does not know yet but will not ignore counts too: it is about to be committed.
while IFS= read -r -d '' file; do
    [ ! -f "$file" ] || files+=("$file")
done < <(git ls-files -z --cached --others --exclude-standard -- \
    'Sources/*.cpp' 'Sources/*.h' 'Tests/*.cpp' 'Tests/*.h' \
    'Tools/*.cpp' 'Tools/*.h' 'Benchmarks/*.cpp' 'Benchmarks/*.h')
[ ${#files[@]} -gt 0 ] || { echo "format-check: no sources found" >&2; exit 1; }
clang-format-14 --dry-run -Werror "${files[@]}" || exit 1
echo "${#files[@]} files are well formatted."
