#!/usr/bin/env bash
# compile-cost.sh: what the compiler needs: the memory and time of each source, the release build's wall
# time from nothing, and what a change to one leaf module's header costs. Without the compiler cache.
set -euo pipefail

cd "$( dirname "${BASH_SOURCE[0]}" )/.."
. cmake/setup.sh
needPackages "${packagesRun[@]}" time

tree=build/compile-cost
record=$PWD/$tree/record
leaf=generated-includes/Lumo/PseudowireIntfId.h

# seconds COMMAND...: its wall time; what it says goes to stderr.
seconds() {
  local from=$EPOCHREALTIME
  "$@" >&2
  awk -v a="$from" -v b="$EPOCHREALTIME" 'BEGIN { printf "%.1f", b - a }'
}

rm -rf "$tree"
mkdir -p "$tree"
cmake --preset release -B "$tree" -DLUMO_TESTS=OFF \
  "-DCMAKE_CXX_COMPILER_LAUNCHER=/usr/bin/time;-a;-o;$record;-f;%M %e %C" > "$tree/configure.log"
build=( cmake --build "$tree" --parallel "$( numJobs )" )
whole=$( seconds "${build[@]}" )
largest=$( awk '{ sub( ".* -c ", $1 " " $2 " " ); print }' "$record" | sort -k1,1nr )
touch "$leaf"
again=$( seconds "${build[@]}" )

grep -m 1 'model name' /proc/cpuinfo | sed 's/.*: //'
echo "$( nproc ) cores, $( c++ --version | head -n 1 ), commit $( git rev-parse --short HEAD 2> /dev/null || echo none )"
echo "release build from nothing: $whole s"
echo "after a change to $leaf: $again s"
echo "memory in MB, seconds, source:"
awk -v root="$PWD/" '{ sub( root, "", $3 ); printf "%6.0f %6.1f  %s\n", $1 / 1024, $2, $3 }' <<< "$largest"
