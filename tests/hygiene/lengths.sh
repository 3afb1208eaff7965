#!/usr/bin/env bash
# lengths.sh ROOT: no header is over 300 lines and no source over 600, unless its first paragraph says
# why it is that long (in a sentence with the word "lines").
set -euo pipefail
. "$( dirname "${BASH_SOURCE[0]}" )/files.sh"

while IFS= read -r file; do
  most=600
  [[ $file == *.h ]] && most=300
  length=$( wc -l < "$root/$file" )
  if [ "$length" -gt "$most" ] &&
     ! awk '!/^\/\// || /^\/\/ *$/ { exit } { print }' "$root/$file" | grep -qw lines; then
    fault "$file: $length lines, and its first paragraph does not say why over $most"
  fi
done < <( files '^(platform|src|tools|agents|bench|examples|bindings|tests)/.*\.(h|cpp)$' | grep -vE '/(pages|golden)/' )
finished
