#!/usr/bin/env bash
# ratio.sh ROOT: prints how many of the hand-written lines are tests; judging the figure is for people.
set -euo pipefail
. "$( dirname "${BASH_SOURCE[0]}" )/files.sh"

# numLines FOLDERS-REGEX: lines that are not blank.
numLines() {
  files "^($1)/.*(\.(cpp|h|koi|py|sh|cmake)|/CMakeLists\.txt)$" |
    while IFS= read -r file; do cat "$root/$file"; done | grep -cv '^[[:space:]]*$' || true
}
tests=$( numLines tests )
code=$( numLines 'src|platform|tools|agents|bindings' )
echo "tests $tests, code $code: tests are $(( 100 * tests / ( tests + code + ! ( tests + code ) ) )) % of both"
finished
