#!/usr/bin/env bash
# scripts.sh ROOT: shellcheck has nothing to say. Status 77 (skipped) where it is not installed.
set -euo pipefail
. "$( dirname "${BASH_SOURCE[0]}" )/files.sh"

command -v shellcheck > /dev/null || { echo "no shellcheck here"; exit 77; }
mapfile -t scripts < <( files '\.sh$' '^(run|test|\.ci/run)$' )
cd "$root"
shellcheck -x -P SCRIPTDIR "${scripts[@]}" || fault "shellcheck has complaints"
finished
