#!/usr/bin/env bash
# format.sh ROOT: every hand-written C++ file is as clang-format leaves it.
set -euo pipefail
. "$( dirname "${BASH_SOURCE[0]}" )/files.sh"

# koigen's pages are not C++ yet, and its expected outputs are as it writes them.
while IFS= read -r file; do
  clang-format-14 --dry-run -Werror --style="file:$root/.clang-format" "$root/$file" 2> /dev/null ||
    fault "$file: not formatted (clang-format-14 -i)"
done < <( files '^(platform|src|tools|agents|bench|examples|tests)/.*\.(h|cpp)$' |
          grep -vE '/(pages|golden)/' )
finished
