#!/bin/bash
# SPDX-License-Identifier: MIT
# setup-time.sh COMMAND [ARG...]: how long a command of the last commit takes on a fresh machine, such as
# `setup-time.sh ./run demo --seconds 5` or `setup-time.sh ./test`: in a bare Debian 12 that has no package of ours and
# nothing built. Says the time, the processors' time, and how loaded the machine was. Measure on a quiet one.
set -u
cd "$(dirname "$0")/.." || exit 1
# shellcheck source=Tools/bare-root.sh
. Tools/bare-root.sh
root=$PWD/build/fresh-machine
make_bare_root "$root" || exit 77
mkdir "$root/pixelweft"
git archive HEAD | tar -x -C "$root/pixelweft" || exit
echo "Load before: $(cut -d' ' -f1-3 /proc/loadavg) on $(nproc) processors"
in_bare_root "$root" bash -c 'cd /pixelweft && TIMEFORMAT="%0R s, of processors %0U s and %0S s in the system" && time "$@"' \
    fresh "$@"
status=$?
echo "Load after: $(cut -d' ' -f1-3 /proc/loadavg)"
rm -rf "$root"
exit $status
