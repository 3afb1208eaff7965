#!/usr/bin/env bash
# faultsAreFound.sh: each check accepts a clean tree and names the fault that is then put into it.
set -euo pipefail
here=$( cd "$( dirname "${BASH_SOURCE[0]}" )" && pwd )
tree=$( mktemp -d )
trap 'rm -rf "$tree"' EXIT
wrong=0

# expect STATUS CHECK WHAT: runs a check on the tree.
expect() {
  local status=0 said
  said=$( "$here/$2.sh" "$tree" 2>&1 ) || status=$?
  if [ "$status" -ne "$1" ]; then
    echo "$2: status $status, not $1: $3: $said"
    wrong=1
  fi
}

# put FILE: writes stdin to it.
put() {
  mkdir -p "$( dirname "$tree/$1" )"
  cat > "$tree/$1"
}

cp "$here/../../.clang-format" "$tree"

put src/quill/Slot.h <<'X'
// Slot.h: a sample.
//
// Ordering
// --------
// O1  value before link   Writer::link() -> Reader::look()
//     A reader of the link sees the value; see O2.
// O2  link before news    Writer::link() -> Reader::look()
X
put src/quill/Slot.cpp <<'X'
void link() {
  // O1: the value is whole.
  store();  // O1, O2: the link.
  tell();   // O2: after it. An O(1) step.
}
X
for check in format lengths atomics orderings words; do
  expect 0 "$check" "a clean tree"
done
sed -i 's/O2: after/after/' "$tree/src/quill/Slot.cpp"
expect 1 orderings "one end is missing"
sed -i 's/ after it/ O2: after it, O1: and O3: too/' "$tree/src/quill/Slot.cpp"
expect 1 orderings "a tag in no ledger"
sed -i 's/ and O3: too//; s/$/ /' "$tree/src/quill/Slot.cpp"
expect 1 format "blanks at the line's end"
sed -i 's/ $//' "$tree/src/quill/Slot.cpp"
expect 0 orderings "put right again"
cp "$tree/src/quill/Slot.h" "$tree/src/quill/Again.h"
expect 1 orderings "declared twice"
rm "$tree/src/quill/Again.h"

{ echo "// Long.h: a sample."; for (( i = 0; i < 300; ++i )); do echo "//"; done; } | put src/Long.h
expect 1 lengths "301 lines"
sed -i '1s/$/ It has many lines because it is a table./' "$tree/src/Long.h"
expect 0 lengths "301 lines with a reason"

echo 'std::atomic< int > count;' | put src/Count.h
expect 1 atomics "an atomic outside its homes"
mkdir -p "$tree/platform/koi"
mv "$tree/src/Count.h" "$tree/platform/koi/Ptr.h"
expect 0 atomics "an atomic at home"

for text in "as the spe""c says" "see P""art 2.1" "/ho""me/me/file" "/wo""rk/x" "deb.debi""an.org"; do
  echo "// $text" | put src/Said.h
  expect 1 words "$text"
done
for text in "a part of 2.1" "std::pair" "special" "https://example.com/wo""rk/x"; do
  echo "// $text" | put src/Said.h
  expect 0 words "$text"
done
exit "$wrong"
