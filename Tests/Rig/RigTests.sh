#!/bin/bash
# SPDX-License-Identifier: MIT
# RigTests.sh RIG - the rig against itself and against an outside dissector, on a private network.
set -u
rig=$(readlink -f "$1")
here=$(cd "$(dirname "$0")" && pwd)
if [ -z "${STAGE_NET:-}" ]; then
    exec "$here/../../Tools/stage-net" desk "$here/RigTests.sh" "$rig"
fi

command -v tshark >/dev/null || { echo "tshark is missing (Tools/packages.txt)"; exit 1; }
work=$(mktemp -d)
cleanup() {
    local left
    mapfile -t left < <(jobs -p)
    [ ${#left[@]} = 0 ] || kill "${left[@]}" 2>/dev/null
    rm -rf "$work"
}
trap cleanup EXIT
failures=0
expect() { # expect WHAT WANTED GOT
    if [ "$2" = "$3" ]; then
        echo "ok: $1"
    else
        printf 'FAILED: %s\n  wanted: %s\n  got:    %s\n' "$1" "$2" "$3"
        failures=$((failures + 1))
    fi
}

tshark -q -i art0 -f "udp port 6454" -w "$work/wire.pcap" >"$work/tshark.txt" 2>&1 &
tshark=$!
for _ in {1..100}; do [ -s "$work/wire.pcap" ] && break; sleep 0.1; done
"$STAGE_NET" rig "$rig" print -a 2.0.0.10 2.0.0.11 -u 0-4,16 --stride 256 --name Lamp \
    --seconds 30 --count 4 --changes >"$work/far.txt" &
far=$!
sleep 0.5
expect "a broadcast poll finds both nodes with all ports" \
"reply from=2.0.0.10 to=2.0.0.1 bind=1 universes=0,1,2,3 name=Lamp 1
reply from=2.0.0.10 to=2.0.0.1 bind=2 universes=4 name=Lamp 1
reply from=2.0.0.10 to=2.0.0.1 bind=3 universes=16 name=Lamp 1
reply from=2.0.0.11 to=2.0.0.1 bind=1 universes=256,257,258,259 name=Lamp 2
reply from=2.0.0.11 to=2.0.0.1 bind=2 universes=260 name=Lamp 2
reply from=2.0.0.11 to=2.0.0.1 bind=3 universes=272 name=Lamp 2" \
    "$("$rig" poll --to 2.255.255.255 --seconds 1 | sort)"
expect "a unicast poll finds the one node" "3" \
    "$("$rig" poll --to 2.0.0.11 --seconds 1 | grep -c 'from=2.0.0.11 ')"
"$rig" poll --to 2.0.0.12 --seconds 1 >"$work/none.txt"
expect "an address without a node is silent, and poll says so" "1:" "$?:$(cat "$work/none.txt")"

"$rig" send --to 2.0.0.10 -u 3,32767 --values ff0080 --rate 20 --seconds 1
"$rig" send --to 2.255.255.255 -u 3 --values 0102 --rate 20 --seconds 0.5
full=$(printf '%02x' {0..255} {0..255})
"$rig" send --to 2.0.0.11 -u 256 --values "$full" --rate 20 --seconds 0.5
wait "$far"
expect "print ended by its count" 0 $?
expect "what send sends, print prints" \
"dmx universe=3 from=2.0.0.1 to=2.0.0.10 length=4 data=ff008000
dmx universe=32767 from=2.0.0.1 to=2.0.0.10 length=4 data=ff008000
dmx universe=3 from=2.0.0.1 to=2.255.255.255 length=2 data=0102
dmx universe=256 from=2.0.0.1 to=2.0.0.11 length=512 data=$full" "$(grep ^dmx "$work/far.txt")"

# A node that broadcasts its replies, as older ones do, and draws what it hears.
"$STAGE_NET" rig "$rig" watch -a 2.0.0.13 --broadcast-replies --to 2.255.255.255 --seconds 3 >"$work/screen.txt" &
watch=$!
sleep 0.5
expect "a broadcast reply without ports" \
    "reply from=2.0.0.13 to=2.255.255.255 bind=1 universes= name=Rig node" \
    "$("$rig" poll --to 2.255.255.255 --seconds 1)"
"$rig" send --to 2.0.0.10 -u 7 --values 0a141e --rate 20 --seconds 1
wait "$watch"
expect "watch ended in time" 0 $?
expect "the cell has its colour" 1 "$(grep -c -m1 '7  2.0.0.1 .*48;2;10;20;30m' "$work/screen.txt")"

# The outside dissector reads the same.
sleep 1
kill -INT "$tshark"
wait "$tshark"
dissect() { # dissect FILTER FIELD...
    local filter=$1 fields=() field
    shift
    for field in "$@"; do fields+=(-e "artnet.$field"); done
    tshark -r "$work/wire.pcap" -Y "$filter" -T fields "${fields[@]}" -E separator=' ' 2>/dev/null
}
expect "no packet is malformed" 0 "$(dissect '_ws.malformed || _ws.expert.severity >= error' header.opcode | wc -l)"
expect "polls are 14 bytes behind 42 of Ethernet, IP and UDP" "0x2000 14" \
    "$(dissect 'artnet.poll && frame.len == 56' header.opcode header.protver | sort -u)"
expect "a node's first reply" "2.0.0.11 0x01 0x00 4 Lamp 2 6454" \
    "$(dissect 'artnet.poll_reply && ip.src == 2.0.0.11' poll_reply.ip_address poll_reply.netswitch \
        poll_reply.subswitch poll_reply.num_ports poll_reply.long_name poll_reply.port_nr | head -1)"
mapfile -t sent < <(dissect 'artnet.output && frame.len == 64 && artnet.output.universe == 32767' output.length)
expect "20 frames a second for a second, within three" yes \
    "$([ ${#sent[@]} -ge 17 ] && [ ${#sent[@]} -le 23 ] && echo yes || echo "${#sent[@]}")"

for words in "send -u 1" "send --to 2.0.0.10" "print --seconds -1" "-u 32768" "--nodes 2" \
    "print --count" "send --to 2.0.0.10 -u 1 --values f" "sing"; do
    # shellcheck disable=SC2086 # words are meant to be split
    "$rig" $words 2>/dev/null >&2
    expect "nonsense is refused: rig $words" 64 $?
done

[ "$failures" = 0 ] || { echo "$failures failed"; exit 1; }
