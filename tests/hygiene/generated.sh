#!/usr/bin/env bash
# generated.sh ROOT FOLDER KOIGEN ARGUMENT...: FOLDER holds what koigen writes from the models, no less
# and no more. In CI that must be what is committed, not what this build has put right.
set -euo pipefail
. "$( dirname "${BASH_SOURCE[0]}" )/files.sh"

folder=$2
koigen=$3
shift 3
"$koigen" --check "$@" || fault "$folder: not what the models say; build once and look at the difference"
while IFS= read -r header; do
  module=$( basename "$header" .h )
  printf '%s\n' "$@" | grep -qE "(^|/)$module\.koi$" || fault "$header: no model writes it"
done < <( files "^$folder/.*\.h$" )
if [ -n "${CI-}" ] && [ -e "$root/.git" ]; then
  while IFS= read -r change; do
    fault "$change: not as committed"
  done < <( git -C "$root" status --porcelain -- "$folder" )
fi
finished
