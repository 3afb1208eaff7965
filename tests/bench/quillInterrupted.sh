#!/usr/bin/env bash
# quillInterrupted.sh QUILLBENCH: whoever interrupts quillBench finds none of its files and processes
# afterwards, and whoever kills it, which leaves no time to put files away, none of its processes.
set -euo pipefail
bench=$1
place=$( mktemp -d )
trap 'rm -rf "$place"' EXIT
folder=$place/files
mkdir "$folder"

# The last peer has a server, which is a process more to end; not every machine has it.
awaited='shared-map-*'
if "$bench" --help | grep -qw redis && command -v redis-server > /dev/null; then
  awaited=redis.sock
fi

# within SECONDS COMMAND...: does it come true in time?
within() {
  local tries=$(( $1 * 20 ))
  shift
  until "$@"; do
    (( tries-- > 0 )) || return 1
    sleep 0.05
  done
}

measuring() { [ -n "$( find "$folder" -name "$awaited" )" ]; }
# alone: no process has the folder in its command line, a server's title included.
alone() { ! pgrep -f -- "$folder" > /dev/null; }

for signal in INT TERM KILL; do
  # A shell's background job ignores SIGINT, and would hand that on.
  env --default-signal=INT "$bench" --folder "$folder" --seconds 5 --entries 1k > "$place/out" 2>&1 &
  process=$! status=0
  within 30 measuring || { echo "SIG$signal: it did not start: $( cat "$place/out" )"; exit 1; }
  sleep 0.2
  kill "-$signal" "$process"
  wait "$process" 2> /dev/null || status=$?
  [ "$status" -gt 128 ] || { echo "SIG$signal: status $status"; exit 1; }
  within 10 alone || { echo "SIG$signal: still there: $( pgrep -af -- "$folder" )"; exit 1; }
  [ "$signal" = KILL ] || [ -z "$( ls -A "$folder" )" ] ||
    { echo "SIG$signal: left behind: $( find "$folder" )"; exit 1; }
done
