# shellcheck shell=bash
# demo.sh: one process learns from a capture and publishes the table, four follow it, each in its own way; the
# learner is killed in the middle of the capture and started again.
#
# Sourced, never run. Everything it starts and makes is gone when it returns.

# followed LEARN MAC-READER CAPTURE: shows what each reader saw; false when one saw another table than the learner, or
# an entry go.
followed() (
  publisher=$1 follower=$2 capture=$3 modes=(direct keyshadow shadow status)
  root=$( mktemp -d /dev/shm/lumo-run.XXXXXX )
  pids=()
  # shellcheck disable=SC2317   # called by trap
  ended() {
    [ "${#pids[@]}" -eq 0 ] || kill -KILL "${pids[@]}" 2> /dev/null || true
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
  done
  learning
  for (( i = 0; i < 100 && $( entries ) < 5; ++i )); do :; done
  kill -KILL "$learner" || true
  wait "$learner" || true
  echo "Killed when the table had $( entries ) hosts."
  learning
  wait "$learner" || { echo "The learner failed." >&3; exit 1; }
  kill -TERM "${pids[@]}"
  wait "${pids[@]}"
  pids=()

  echo
  printf '%-10s  %5s  %11s  %s\n' Reader Hosts 'Seen to go' Table
  printf '%-10s  %5s  %11s  %s\n' ---------- ----- ----------- -----------------
  status=0
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
