#!/usr/bin/env bash
# demos.sh ROOT VLAN-INTERFACES VLAN-SOURCE LUMO LEARN MAC-READER: a demonstration whose program does not start, or ends,
# says which one it was, and ends with status 1. Nothing that it started is left.
set -euo pipefail

cd "$1"
agent=$2 source=$3 lumo=$4 learn=$5 reader=$6
work=$( mktemp -d )
trap 'rm -rf "$work"' EXIT
wrong=0

# brief NAME PROGRAM ARGUMENT: makes the program NAME, which is killed after a second when it has such an argument.
brief() {
  printf '#!/bin/sh\ncase "$*" in *%s*) exec timeout -s KILL 1 "%s" "$@" ;; esac\nexec "%s" "$@"\n' \
    "$3" "$2" "$2" > "$work/$1"
  chmod +x "$work/$1"
}
brief agent "$agent" --capture
brief reader "$reader" shadow
mkfifo "$work/frames"
exec 8<> "$work/frames"  # whoever reads them waits

# ends REGEX ROOM COMMAND...: the command of that room's demonstration ends with a line like that.
ends() {
  local regex=$1 room=$2 status=0
  shift 2
  # shellcheck disable=SC2016   # expanded by that shell
  timeout 30 bash -c '. "agents/$0/demo.sh"; "$@"' "$room" "$@" > "$work/out" 2> "$work/err" || status=$?
  if [ "$status" -ne 1 ] || ! grep -qE "$regex" "$work/err"; then
    echo "$*: status $status, and: $( cat "$work/err" )"
    wrong=1
  fi
}

ends '^There is no program /nowhere\.$' vlan-interfaces contended "$agent" "$source" /nowhere
ends '^The program vlan-interfaces has ended, with status 1\.$' vlan-interfaces contended /bin/false "$source" "$lumo"
ends '^The program vlan-source [a-z]+ has ended, with status 0\.$' \
  vlan-interfaces contended "$agent" /bin/true "$lumo"
ends '^The program vlan-interfaces has ended, with status 137\.$' \
  vlan-interfaces contended "$work/agent" "$source" "$lumo"
ends '^There is no program /nowhere\.$' vlan-endpoints pingedInVlans /nowhere
ends '^There is no program /nowhere\.$' mac-reader followed "$learn" /nowhere /dev/null
ends '^The program learn has ended, with status 1\.$' mac-reader followed /bin/false "$reader" /dev/null
ends '^The program mac-reader --mode (key)?shadow has ended, with status 137\.$' \
  mac-reader followed "$learn" "$work/reader" "$work/frames"
if pgrep -f "$work/"; then
  echo "something is left behind"
  wrong=1
fi
exit "$wrong"
