#!/bin/bash
# real-capture.sh CAPTURE LEARN: the table of a real capture equals what an independent reader makes of it.
#
# The twin is a few lines of Python over the fields that tshark reads: the same rules, none of our code. Exit status 77,
# with a word why, when there is no tshark or no capture.
set -euo pipefail

if [[ $# -ne 2 ]]; then
  echo "usage: real-capture.sh CAPTURE LEARN" >&2
  exit 2
fi
capture=$1
learn=$2
if [[ ! -r $capture ]]; then
  echo "skipped: no capture $capture"
  exit 77
fi
if ! command -v tshark > /dev/null; then
  echo "skipped: no tshark"
  exit 77
fi

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# tshark reads times to the nanosecond and gives every field as text.
tshark -n -r "$capture" -T fields -E occurrence=f -E separator=/t \
  -e frame.time_epoch -e eth.src -e eth.type -e vlan.id > "$scratch/frames"

# compare AGING: the table at that ageing time.
compare() {
  python3 - "$scratch/frames" "$1" > "$scratch/expected" << 'PYTHON'
import sys
from decimal import Decimal

hosts, aging = {}, int(sys.argv[2])  # of each host: when it was learned, when it was seen last
now = Decimal(0)
for line in open(sys.argv[1]):
    time, source, kind, vlan = line.rstrip('\n').split('\t')
    now = max(now, Decimal(time))
    if aging:
        hosts = {key: h for key, h in hosts.items() if now - h[1] <= aging}
    first = int(source[:2], 16) if source else 1
    if first & 1 or source == '00:00:00:00:00:00' or vlan == '4095':
        continue
    tagged = kind == '0x8100' and int(vlan) != 0
    hosts.setdefault((int(vlan) if tagged else 1, source), [time, now])[1] = now
for (fid, source), (time, _) in sorted(hosts.items()):
    print(fid, source, 'eth1', 'learnedDynamicMac', 0, repr(float(time)))
PYTHON

  "$learn" --capture "eth1=$capture" --aging "$1" --json > "$scratch/table.json"
  python3 - "$scratch/table.json" > "$scratch/got" << 'PYTHON'
import json
import sys

table = json.load(open(sys.argv[1]))
assert table['schema'] == 'lumo.mac-table/1', table['schema']
for e in table['entries']:
    print(e['fid'], e['address'], e['intf'], e['entryType'], e['moves'], repr(e['lastMoveTime']))
PYTHON

  diff -u "$scratch/expected" "$scratch/got"
  echo "$(wc -l < "$scratch/got") addresses at an ageing time of $1, as tshark has them"
}

compare 0
compare 300
