#!/usr/bin/env bash
# atomics.sh ROOT: atomics and memory orders have two homes: counts and shared memory.
set -euo pipefail
. "$( dirname "${BASH_SOURCE[0]}" )/files.sh"

homes='^(platform/koi/Ptr\.h|platform/mem/Words\.h)$'
while IFS= read -r file; do
  while IFS= read -r line; do
    fault "$file:$line"
  done < <( grep -nE '<atomic>|std::atomic|memory_order|__atomic_|__sync_' "$root/$file" || true )
done < <( files '^(platform|src|tools|agents|bindings)/.*\.(h|cpp|koi)$' '^generated-includes/' | grep -vE "$homes" )
finished
