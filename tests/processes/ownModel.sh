#!/usr/bin/env bash
# ownModel.sh BUILD PROJECT [FLAGS]: installs BUILD to a fresh prefix, builds PROJECT against it with the
# compiler flags FLAGS, and compares what its program says.
set -euo pipefail

build=$1
project=$2
flags=${3-}
work=$( mktemp -d )
trap 'rm -rf "$work"' EXIT

# loud COMMAND...: its output is only of interest when it fails.
loud() {
  "$@" > "$work/log" 2>&1 || { cat "$work/log"; exit 1; }
}
loud cmake --install "$build" --prefix "$work/prefix"
# Copied, so that nothing beside it in the tree can be what makes it build.
cp -r "$project" "$work/project"
loud cmake -G Ninja -S "$work/project" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/prefix" \
  -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_FLAGS="$flags"
loud cmake --build "$work/build"
loud ctest --test-dir "$work/build" --output-on-failure --no-tests=error
diff - <( "$work/build/ownModel" ) << 'X'
VLAN 4094
health up
refused: VlanId::value < 1 or > 4094 not allowed
X
