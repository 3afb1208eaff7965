#!/usr/bin/env bash
# run.sh ROOT: ./run as a user meets it: what goes to stdout, what to stderr, and its exit status.
# Status 77 (skipped) when the real capture is not there.
set -euo pipefail

cd "$1"
. cmake/setup.sh
. cmake/capture.sh
work=$( mktemp -d )
trap 'rm -rf "$work"' EXIT
wrong=0

# ran STATUS ARGUMENT...: runs ./run with its outputs in $work/out and $work/err.
ran() {
  local expected=$1 status=0
  shift
  ./run "$@" > "$work/out" 2> "$work/err" || status=$?
  if [ "$status" -ne "$expected" ]; then
    wrong "./run $*: status $status, not $expected: $( head -c 500 "$work/err" )"
  fi
}

wrong() {
  echo "$1"
  wrong=1
}

# A machine without network: the package tool is pointed at a port where nobody listens.
printf '%s\n' 'Acquire::http::Proxy "http://127.0.0.1:9";' 'Acquire::https::Proxy "http://127.0.0.1:9";' \
  'Acquire::Retries "0";' > "$work/apt.conf"
mkdir "$work/away"
(
  cd "$work/away"
  if APT_CONFIG=$work/apt.conf needCapture 2> "$work/err"; then
    wrong "a capture without network"
  fi
  [ "$( wc -l < "$work/err" )" -eq 1 ] || wrong "not one line: $( cat "$work/err" )"
  exit "$wrong"
) || wrong=1

ran 2 --capture "eth1=$work/nowhere.pcap"
[ -s "$work/err" ] || wrong "a missing file is not complained of"

isTheCapture "$captureFile" || { echo "no capture here"; exit 77; }
head -c 1000000 "$captureFile" > "$work/cut.pcap"
if isTheCapture "$work/cut.pcap"; then
  wrong "a damaged capture is taken for the real one"
fi

ran 0
cp "$work/out" "$work/table"
[ ! -s "$work/err" ] || wrong "something on stderr: $( cat "$work/err" )"
ran 0 --capture "eth1=$captureFile" --aging 0
tail -n +3 "$work/table" | head -n "$( wc -l < "$work/out" )" > "$work/real"   # below its heading
cmp "$work/out" "$work/real" || wrong "the real capture is not what ./run shows first"
for line in 'Hosts: 19, VLANs: 1, moves: 0, aged out: 0' 'Hosts: 7, VLANs: 3, moves: 2, aged out: 1' \
            '  10  00:00:5e:00:53:01  configured       eth2      0  -'; do
  grep -qxF -- "$line" "$work/table" || wrong "./run does not print: $line"
done
for mode in direct keyshadow shadow status; do
  grep -qE "^$mode +19 +0  the learner's\$" "$work/table" || wrong "./run does not show what $mode saw"
done
grep -qE '^Killed when the table had ([5-9]|1[0-9]) hosts\.$' "$work/table" || wrong "./run kills no learner"
ran 0 --json
cp "$work/out" "$work/table.json"
ran 0 --capture "eth1=$captureFile" --aging 0 --json
cmp "$work/out" "$work/table.json" || wrong "./run --json shows something else than the real capture"
addresses=$( grep -c '"address"' "$work/out" || true )
[ "$addresses" -gt 1 ] || addresses=$( grep -o '"address"' "$work/out" | wc -l )
[ "$addresses" -eq 19 ] || wrong "$addresses addresses, not 19"
exit "$wrong"
