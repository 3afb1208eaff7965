# shellcheck shell=bash
# programs.sh: the programs that run beside a demonstration. When one ends that should not, the demonstration does.
#
# Sourced, never run. A demonstration is a shell of its own, which these functions may end.

declare -A running  # what they are called, by process id

# thereAre PROGRAM...: ends this shell with status 1, having said which, when one of them is not there.
thereAre() {
  local program
  for program; do
    [ -x "$program" ] || { echo "There is no program $program." >&2; exit 1; }
  done
}

# began NAME: the job that was started last is called so; it is to run until stops() is told of it.
began() { running[$!]=$1; }

# stops PID: that one may end from now on.
stops() { unset "running[$1]"; }

# needAll: ends this shell with status 1, having said which, when one of them has ended.
needAll() {
  local pid status=0
  for pid in "${!running[@]}"; do
    kill -0 "$pid" 2> /dev/null && continue
    wait "$pid" || status=$?
    echo "The program ${running[$pid]} has ended, with status $status." >&2
    exit 1
  done
}

# pausing TENTHS: waits so many tenths of a second, and needs all.
pausing() {
  local left
  needAll
  for (( left = $1; left > 0; --left )); do
    sleep 0.1
    needAll
  done
}

# awaited COMPLAINT COMMAND...: waits until the command succeeds, and needs all; ends this shell with status 1, having
# said the complaint, when it does not within 10 s.
awaited() {
  local complaint=$1 left
  shift
  for (( left = 100; left > 0; --left )); do
    if "$@"; then
      return 0
    fi
    pausing 1
  done
  echo "$complaint" >&2
  exit 1
}

# finished PID: waits until that job has ended by itself, and needs all; its status.
finished() {
  while kill -0 "$1" 2> /dev/null; do
    pausing 1
  done
  wait "$1"
}

# endAll SIGNAL: sends that to every job that there is, and waits until they have ended.
endAll() {
  local pids
  pids=$( jobs -pr )
  [ -n "$pids" ] || return 0
  # shellcheck disable=SC2086   # process ids
  {
    kill "-$1" $pids || true
    wait $pids || true
  } 2> /dev/null
}
