#!/usr/bin/env bash
# orderings.sh ROOT: every tag of an ordering ledger stands at both its ends.
#
# A ledger is the comment that follows "// Ordering" at the head of a file; an entry of it reads
#   // O3  what before what     Writer::grow() -> Reader::doResize()
# The tags of one folder are one sequence, whichever of its files they are declared in. Each is met at
# two places or more, as a comment with "O3" followed by a colon or by the comment's end; no place
# has a tag that no ledger of its folder declares.
set -euo pipefail
. "$( dirname "${BASH_SOURCE[0]}" )/files.sh"

declare -A declared uses
while IFS=$'\t' read -r kind folder tag place; do
  key="$folder $tag"
  if [ "$kind" = use ]; then
    uses[$key]+="$place "
  elif [ -n "${declared[$key]-}" ]; then
    fault "$place: $tag is declared already at ${declared[$key]}"
  else
    declared[$key]=$place
  fi
done < <(
  files '^(platform|src|agents)/.*\.(h|cpp)$' | while IFS= read -r file; do
    awk -v file="$file" -v folder="$( dirname "$file" )" '
      /^\/\/ Ordering *$/ { ledger = 1; next }
      ledger && !/^\/\// { ledger = 0 }
      ledger {
        if( match( $0, /^\/\/ O[0-9]+ / ) )
          print "ledger\t" folder "\t" $2 "\t" file ":" FNR
        next
      }
      {
        at = index( $0, "//" )
        if( !at )
          next
        comment = substr( $0, at )
        while( match( comment, /(^|[^A-Za-z0-9])O[0-9]+(:|, O[0-9]|\.?$)/ ) ) {
          tag = substr( comment, RSTART )
          sub( /^[^O]*/, "", tag )
          match( tag, /^O[0-9]+/ )
          print "use\t" folder "\t" substr( tag, 1, RLENGTH ) "\t" file ":" FNR
          comment = substr( tag, RLENGTH + 1 )
        }
      }' "$root/$file"
  done
)

for key in "${!declared[@]}"; do
  read -ra places <<< "${uses[$key]-}"
  if [ "${#places[@]}" -lt 2 ]; then
    fault "${declared[$key]}: ${key#* } stands at ${#places[@]} places (${places[*]:-none}); it has two ends"
  fi
done
for key in "${!uses[@]}"; do
  if [ -z "${declared[$key]-}" ]; then
    fault "${uses[$key]% }: ${key#* } is in no ledger of ${key% *}"
  fi
done
finished
