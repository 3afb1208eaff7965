#!/usr/bin/env bash
# demo.sh ROOT PROGRAM: what ./run frames shows: every ping that should be is answered, and nothing is left behind.
# Status 77 (skipped) where there can be no network namespaces.
set -euo pipefail

cd "$1"
. agents/vlan-endpoints/demo.sh

if [ "$( id -u )" -ne 0 ] || ! { ip netns add "lumo-probe-$$" && ip netns del "lumo-probe-$$"; } 2> /dev/null; then
  echo "this user can have no network namespaces"
  exit 77
fi
said=$( pingedInVlans "$2" ) || { echo "$said"; exit 1; }
wrong=0
# expect REGEX: a line of what was said.
expect() {
  grep -qE "$1" <<< "$said" || { echo "no line like: $1"; wrong=1; }
}
expect '^No tag: +192\.0\.2\.2 is at 00:00:5e:00:53:0a, 5 of 5 echoes came back$'
for vlan in 10 20 4094; do
  expect "^VLAN $vlan: +192\.0\.2\.[0-9]+ is at 00:00:5e:00:53:0a, 5 of 5 echoes came back\$"
done
expect '^VLAN 30: +nobody answers for 192.0.2.254, as it should be$'
# An ARP frame has 60 bytes, an echo 90.
expect '^untagged +6 +510 +6 +510 +6$'
expect '^ +10 +7 +570 +6 +510 +6$'
expect '^Of unknown VLANs: 1 frames, 64 octets\. Dropped: 0 frames\.$'
if ip netns list | grep -E "lumo-(near|far)-$$"; then
  echo "namespaces are left behind"
  wrong=1
fi
[ "$wrong" -eq 0 ] || echo "$said"
exit "$wrong"
