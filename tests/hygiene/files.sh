# shellcheck shell=bash
# files.sh: which files a check looks at, and how it speaks.
#
# Sourced by every check. A check is called with the root of a tree; it prints one line for each fault
# and ends with status 1 if there was any.

root=$( cd "$1" && pwd )
faults=0

# fault TEXT: reports one.
fault() {
  echo "$1"
  faults=$(( faults + 1 ))
}

# files REGEX...: the project's own files, by path from the root, whose path matches one of them.
files() {
  local list patterns=()
  # Where git cannot answer (an unpacked archive, another user's clone) everything but build/ is ours.
  if ! { [ -e "$root/.git" ] && list=$( git -C "$root" ls-files -co --exclude-standard 2> /dev/null ); }; then
    list=$( cd "$root" && find . -path ./build -prune -o -path ./.git -prune -o -type f -printf '%P\n' )
  fi
  for pattern in "$@"; do
    patterns+=( -e "$pattern" )
  done
  # A file that is deleted and not yet committed is still listed by git.
  grep -E "${patterns[@]}" <<< "$list" | sort -u | while IFS= read -r file; do
    [ ! -f "$root/$file" ] || echo "$file"
  done
}

# finished: the check's exit status.
finished() {
  [ "$faults" -eq 0 ]
}
