# shellcheck shell=bash
# demo.sh: stations in VLANs of one device are pinged over a wire between two network namespaces.
#
# Sourced from the top of the tree, never run. Needs root. The namespaces and all that runs in them are gone when it
# returns.
# shellcheck source=../programs.sh
. agents/programs.sh

# pingedInVlans VLAN-ENDPOINTS: shows who answers in which VLAN, and the counters; false when somebody did not,
# somebody did who should not, or the program ended.
pingedInVlans() (
  program=$1 folder=agents/vlan-endpoints
  thereAre "$program"
  near=lumo-near-$$ far=lumo-far-$$
  said=$( mktemp )
  # shellcheck disable=SC2317   # called by trap
  ended() {
    endAll TERM
    ip netns del "$near" 2> /dev/null || true
    ip netns del "$far" 2> /dev/null || true
    rm -f "$said"
  }
  trap ended EXIT
  trap 'exit 130' INT TERM

  # Nothing of the system's own is to be on the wire: no neighbour or router discovery.
  for namespace in "$near" "$far"; do
    ip netns add "$namespace"
    ip netns exec "$namespace" sh -c 'echo 1 > /proc/sys/net/ipv6/conf/default/disable_ipv6' 2> /dev/null || true
  done
  ip -n "$near" link add name port0 type veth peer name port0 netns "$far"
  ip -n "$near" link set port0 up
  ip -n "$far" link set port0 up
  # Right after its ends were set up a wire drops what is sent.
  for (( i = 0; i < 100; ++i )); do
    [[ $( ip -n "$near" -br link show port0 ) == *" UP "* && $( ip -n "$far" -br link show port0 ) == *" UP "* ]] && break
    sleep 0.05
  done

  echo "A program with a station in each of three VLANs, and one for frames without a tag, on one device (AF_PACKET); at"
  echo "the other end of the wire frames are tagged by hand, for the system has no VLAN devices here:"
  echo
  timeout -k 1 60 ip netns exec "$near" "$program" port0 --untagged 192.0.2.2 --vlan 10=192.0.2.10 --vlan 20=192.0.2.20 \
    --vlan 4094=192.0.2.94 > "$said" &
  stations=$!
  began vlan-endpoints
  awaited "vlan-endpoints is not ready." grep -q ready "$said"
  status=0
  timeout -k 1 60 ip netns exec "$far" python3 "$folder/ping.py" port0 5 0=192.0.2.2 10=192.0.2.10 20=192.0.2.20 \
    4094=192.0.2.94 30=- 10=- &
  finished $! || status=1
  echo
  needAll
  stops "$stations"
  kill -TERM "$stations"
  wait "$stations" || status=1
  sed 1d "$said"
  exit "$status"
)
