#!/bin/bash
# SPDX-License-Identifier: MIT
# package-life.sh [PACKAGE]: the whole life of the Debian package (build/package/*.deb if not said) on a bare Debian 12:
# installed by apt as an older version, used, upgraded, used again, removed and purged. It runs as an ordinary user on a
# virtual display and a stage network; no packet leaves the machine. The pictures of its window are in build/package.
# Ends with status 0, 1 where something is wrong, 77 where this machine can not make a bare Debian, and says why.
set -u
here=$(cd "$(dirname "$0")/.." && pwd)
cd "$here" || exit 1
# shellcheck source=Tools/bare-root.sh
. Tools/bare-root.sh
operator=(setpriv --reuid 1000 --regid 1000 --clear-groups env HOME=/home/lightdesk)
frames=20 # that must arrive at the node

wrong() {
    echo "package-life: $1" >&2
    exit 1
}

ok() {
    echo "ok: $1"
}

if [ "${1:-}" = --on-stage ]; then # --on-stage ROOT PICTURE: the node on the other end, and the program
    root=$2
    "$STAGE_NET" rig build/release/rig print -a 2.0.0.10 -u 0-3 --count $frames --seconds 60 >"$3.received" &
    node=$!
    program=("$0" --in-root "$root" env XDG_RUNTIME_DIR=/tmp/runtime-lightdesk QT_QPA_PLATFORM=xcb pixelweft)
    PICTURE_STAY=1 PICTURE_AFTER=4 Tools/headless.sh "$3" "${program[@]}" &
    window=$!
    wait $node
    status=$?
    # It ends in order, after its picture was taken, and not before.
    for _ in {1..100}; do [ -e "$3" ] && break; sleep 0.1; done
    sed -n 's/^VmRSS:[ \t]*/memory at start: /p' "/proc/$(pidof pixelweft)/status"
    kill -TERM "$(pidof pixelweft)"
    wait $window || { echo "it ended with status $?" >&2; exit 1; }
    exit $status
elif [ "${1:-}" = --in-root ]; then # --in-root ROOT COMMAND...: as the operator
    export DISPLAY=${DISPLAY:-}
    enter_bare_root "$2" "${operator[@]}" DISPLAY="$DISPLAY" "${@:3}"
fi

packages=(build/package/*.deb)
package=$(realpath "${1:-${packages[0]}}")
[ -f "$package" ] || wrong "there is no package; make it by Tools/package.sh"
[ -x build/release/rig ] || wrong "build/release/rig is not built"
root=$here/build/bare-root
life=build/package/life
rm -rf $life && mkdir -p $life
make_bare_root "$root" || exit 77
ok "a bare Debian 12, $(du -sm "$root" | cut -f1) MB"

run() { # in the root, as its administrator; what it said is shown where it fails
    in_bare_root "$root" "$@" >$life/said.txt 2>&1 || { tail -n 20 $life/said.txt >&2; wrong "failed: $*"; }
}

as_operator() {
    in_bare_root "$root" "${operator[@]}" "$@"
}

use() { # use PICTURE: starts it, and waits for frames at the node
    Tools/stage-net desk "$here/Tools/package-life.sh" --on-stage "$root" "$here/$life/$1.png" >$life/"$1".txt 2>&1 || {
        tail -n 20 $life/"$1".txt >&2
        wrong "it did not start, send $frames frames and end in order"
    }
    ok "it starts from PATH as an ordinary user, shows its window and sends; $(grep '^memory' $life/"$1".txt)"
}

# What is the user's and the administrator's, with the times of their files.
belongings() {
    find "$root/home/lightdesk" "$root/etc/pixelweft" -type f -printf '%T@ ' -exec sha256sum {} +
}

# The same package, as if it were an older one.
version=$(dpkg-deb -f "$package" Version)
dpkg-deb -R "$package" $life/older
sed -i 's/^Version: .*/Version: 0.1-1/' $life/older/DEBIAN/control
dpkg-deb --root-owner-group -b $life/older "$root/older.deb" >/dev/null || wrong "the older package can not be packed"
cp "$package" "$root/newer.deb"

run apt-get install -y --no-install-recommends -o Dpkg::Options::=--force-unsafe-io /older.deb
ok "apt installs it with $(grep -c '^Setting up' $life/said.txt) packages, $(du -sm "$root" | cut -f1) MB in all"
[ -x "$root/usr/lib/pixelweft/PixelWeft" ] && [ "$(readlink "$root/usr/bin/pixelweft")" = ../lib/pixelweft/PixelWeft ] ||
    wrong "the program is not where it belongs"
grep -q '^application/x-pixelweft-mapping:\*\.wfm$' "$root/usr/share/mime/globs" || wrong "mappings are not known as such"
run dpkg -V pixelweft

run useradd --create-home --uid 1000 lightdesk
data=$root/home/lightdesk/.local/share/LoomTap2/PixelWeft
mkdir -p "$data" "$root/home/lightdesk/.config/Zentri"
cp Resources/DemoMapping.wfm "$data/mapping.wfm"
printf '[General]\nnetwork=2.X.X.X\n' >"$root/home/lightdesk/.config/Zentri/PixelWeft3.conf"
chown -R 1000:1000 "$root/home/lightdesk"
echo '<Mode value="LMT" /><!-- of this house -->' >"$root/etc/pixelweft/mode.xml"

use older
[ -s "$root/home/lightdesk/.local/share/Zentri PixelWeft2/LEDFixtureLib.wfl" ] || wrong "the library is not in the home"
as_operator pixelweft-patch /home/lightdesk/.local/share/LoomTap2/PixelWeft/mapping.wfm --csv - --pdf /tmp/patch.pdf \
    >$life/patch.csv || wrong "pixelweft-patch does not work"
as_operator pixelweft-fixtures "/home/lightdesk/.local/share/Zentri PixelWeft2/LEDFixtureLib.wfl" >$life/fixtures.txt ||
    wrong "pixelweft-fixtures does not work"
[ "$(as_operator pixelweft --version)" = "pixelweft ${version%-*}" ] || wrong "it is of another version than its package"
ok "the programs for scripts work"

before=$(belongings)
run apt-get install -y --no-install-recommends /newer.deb
[ "$(in_bare_root "$root" dpkg-query -W -f '${Version}' pixelweft)" = "$version" ] || wrong "it was not upgraded"
[ "$(belongings)" = "$before" ] || wrong "the upgrade changed what is the user's or the administrator's"
ok "an upgrade to $version leaves every file of the user and mode.xml as they are"
use newer
run sh -c "dpkg -V pixelweft | grep -v ' c /etc/pixelweft/mode.xml$' | (! grep .)"
[ "$(ls "$root/usr/lib/pixelweft")" = $'PixelWeft\nmode.xml' ] || wrong "it wrote beside its executable"
ok "it wrote nothing where it is installed"

before=$(belongings)
run apt-get remove -y pixelweft
[ ! -e "$root/usr/bin/pixelweft" ] && [ ! -e "$root/usr/lib/pixelweft" ] || wrong "removing it leaves programs behind"
[ "$(belongings)" = "$before" ] || wrong "removing it changed what is the user's or the administrator's"
ok "removed, it leaves mode.xml and the user's files"
run apt-get purge -y pixelweft
left=$(find "$root" -xdev -iname '*pixelweft*' -not -path "$root/home/*" -not -path "$root/tmp/*")
[ -z "$left" ] || wrong "purging it leaves behind: $left"
[ -s "$data/mapping.wfm" ] || wrong "purging it took the user's mapping"
ok "purged, it leaves nothing but the user's files"
rm -rf "$root"
