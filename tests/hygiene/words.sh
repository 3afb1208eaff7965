#!/usr/bin/env bash
# words.sh ROOT: the project speaks for itself: it cites no document outside it, names no place of one
# machine, and no host that packages come from.
set -euo pipefail
. "$( dirname "${BASH_SOURCE[0]}" )/files.sh"

# The patterns are put together from pieces, or this file would be the first fault.
document="spec""ification"
place="(wo""rk|ho""me|ro""ot|t""mp)"
patterns=(
  "\\b${document}s?\\b" "\\bthe ${document:0:4}\\b" "\\b${document:0:4}(\\.md|-notes|-text)\\b"
  "\\bP""arts? [0-9]+\\.[0-9]+\\b" "\\bissue #?[0-9]+\\b" "\\bO""-[0-9]+\\b" "\\bhouse[ -]st""yle\\b"
  "(^|[^A-Za-z0-9_./}])/$place/[A-Za-z0-9_.-]"
  "\\b(debi""an\\.org|npm""js\\.|py""pi\\.|pythonhos""ted\\.)"
)
while IFS= read -r file; do
  while IFS= read -r line; do
    fault "$file:$line"
  done < <( grep -InEi "$( IFS='|'; echo "${patterns[*]}" )" "$root/$file" || true )
  if grep -qEi "${patterns[0]}|\\b${document:0:4}\\b" <<< "$file"; then
    fault "$file: its name"
  fi
done < <( files . )
finished
