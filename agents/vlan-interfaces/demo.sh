# shellcheck shell=bash
# demo.sh: one process makes VLAN interfaces, three others ask for them, each with a priority of its own; all say what
# becomes of that as it happens.
#
# Sourced from the top of the tree, never run. Everything it starts and makes is gone when it returns.
# shellcheck source=../programs.sh
. agents/programs.sh

# contended VLAN-INTERFACES VLAN-SOURCE LUMO: shows who prevails and why; false when it ends otherwise than it should,
# or a program ended.
contended() (
  agent=$1 source=$2 lumo=$3 demo=agents/learn/demo
  thereAre "$agent" "$source" "$lumo"
  root=$( mktemp -d /dev/shm/lumo-run.XXXXXX )
  # shellcheck disable=SC2317   # called by trap
  ended() {
    endAll TERM
    rm -rf "$root"
  }
  trap ended EXIT
  trap 'exit 130' INT TERM

  # asking NAME: one source, which does what is written to its file descriptor ${to[NAME]}.
  declare -A to
  asking() {
    local fd
    mkfifo "$root/$1"
    timeout -k 1 60 "$source" "$1" --root "$root" < "$root/$1" &
    began "vlan-source $1"
    exec {fd}<> "$root/$1"  # waits for nobody, as opening one end of a pipe does
    to[$1]=$fd
  }
  # say NAME COMMAND...: shows the command, gives it to the source, and waits for what comes of it.
  say() {
    local name=$1 line
    shift
    for line; do
      printf '%-10s > %s\n' "$name" "$line"
      echo "$line" >&"${to[$name]}"
    done
    pausing 4
  }
  echo "An agent makes VLAN interfaces. Three sources ask for them, each in a process of its own; of every interface one"
  echo "prevails, by priority and then by name. Behind '>' stands what a source is told to do:"
  echo
  mkfifo "$root/frames"
  timeout -k 1 60 "$agent" --root "$root" --config "$demo/config.json" --capture "eth1=$root/frames" > "$root/said" &
  began vlan-interfaces
  exec 9<> "$root/frames"
  awaited "vlan-interfaces does not serve." grep -qs '^serving' "$root/said"
  for name in bridging mlag telemetry; do
    asking "$name"
  done
  pausing 4
  say mlag "announce vlan10 description peer link"
  say telemetry "announce vlan10"
  say bridging "announce vlan10"
  say telemetry "priority high"
  say bridging "announce vlan20" "announce vlan30 mtu 20"
  say mlag "announce vlan40 cli"
  say telemetry "withdraw vlan10"
  say mlag "priority medium"
  cat "$demo/eth1.pcap" >&9
  exec 9>&-
  pausing 12
  echo
  echo "What the agent decided meanwhile:"
  echo
  sed -n 's/^\(vlan.*\)/  \1/p' "$root/said"
  echo
  echo "lumo show vlan-interface, and what a capture on eth1 has brought to their counters:"
  echo
  "$lumo" show vlan-interface --root "$root" > "$root/shown" || { echo "lumo failed." >&2; exit 1; }
  cat "$root/shown"
  echo
  "$lumo" show counters interface --root "$root" || { echo "lumo failed." >&2; exit 1; }
  echo
  needAll
  status=0
  # The peer link has vlan10, for its priority; vlan30 is nobody's, for its MTU.
  grep -qE '^vlan10 .* mlag +medium +yes' "$root/shown" || status=1
  grep -qE '^vlan30 .* bridging +low +failed' "$root/shown" || status=1
  exit "$status"
)
