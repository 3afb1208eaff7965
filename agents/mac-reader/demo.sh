# shellcheck shell=bash
# demo.sh: one process learns from a capture and publishes the table, four follow it, each in its own way; the
# learner is killed in the middle of the capture and started again.
#
# Sourced from the top of the tree, never run. Everything it starts and makes is gone when it returns.
# shellcheck source=../programs.sh
. agents/programs.sh

# followed LEARN MAC-READER CAPTURE: shows what each reader saw; false when one saw another table than the learner, or
# an entry go, or when a program ended.
followed() (
  publisher=$1 follower=$2 capture=$3 modes=(direct keyshadow shadow status)
  thereAre "$publisher" "$follower"
  root=$( mktemp -d /dev/shm/lumo-run.XXXXXX )
  pids=()
  # shellcheck disable=SC2317   # called by trap
  ended() {
    endAll KILL
    rm -rf "$root"
  }
  trap ended EXIT
  # No line of the shell's about whom it saw killed.
  exec 3>&2 2> /dev/null

  # entries: how many there are in the table now.
  entries() { "$follower" --root "$root" --mode direct --for 0.1 --json | grep -c '"address"' || true; }
  # learning: reads the capture some hundred times faster than it came, in the background.
  learning() {
    "$publisher" --root "$root" --table quillFdbStatus --capture "eth1=$capture" --aging 0 --pace 900 > "$root/learner" &
    learner=$!
  }

  echo "The same capture, and the table in shared memory: four processes follow it, each in its own way. The learner is"
  echo "killed (SIGKILL) in the middle of the capture, and started again:"
  echo
  for mode in "${modes[@]}"; do
    "$follower" --root "$root" --mode "$mode" > "$root/$mode" &
    pids+=( $! )
    began "mac-reader --mode $mode"
  done
  learning
  began learn
  for (( i = 0; i < 100 && $( entries ) < 5; ++i )); do needAll 2>&3; done
  stops "$learner"
  kill -KILL "$learner" || true
  wait "$learner" || true
  echo "Killed when the table had $( entries ) hosts."
  learning
  finished "$learner" 2>&3 || { echo "The program learn failed." >&3; exit 1; }
  needAll 2>&3
  status=0
  for pid in "${pids[@]}"; do
    stops "$pid"
    kill -TERM "$pid"
    wait "$pid" || status=1
  done

  echo
  printf '%-10s  %5s  %11s  %s\n' Reader Hosts 'Seen to go' Table
  printf '%-10s  %5s  %11s  %s\n' ---------- ----- ----------- -----------------
  # The learner's table ends where its totals begin, a reader's where it says what went.
  sed '/^$/,$d' "$root/learner" > "$root/expected"
  for mode in "${modes[@]}"; do
    gone=$( sed -n 's/^Entries seen to go: //p' "$root/$mode" )
    sed '/^$/,$d' "$root/$mode" > "$root/table"
    same="is another"
    cmp -s "$root/table" "$root/expected" && same="the learner's"
    [ "$gone" = 0 ] && [ "$same" = "the learner's" ] || status=1
    printf '%-10s  %5d  %11s  %s\n' "$mode" "$(( $( wc -l < "$root/table" ) - 2 ))" "$gone" "$same"
  done
  exit "$status"
)
