#!/usr/bin/env bash
# run.sh SECONDS: lets each fuzz target search that long, one after another; fails when one finds a fault.
#
# What a search finds stands in build/fuzz/tests/fuzz/<target>-corpus. To keep what is new of it:
#   build/fuzz/tests/fuzz/fuzzModel -merge=1 -use_counters=0 tests/fuzz/corpus/model build/fuzz/tests/fuzz/fuzzModel-corpus
set -euo pipefail

cd "$( dirname "${BASH_SOURCE[0]}" )/../.."
. cmake/setup.sh

[[ $# -eq 1 && $1 =~ ^[1-9][0-9]*$ ]] || die "usage: run.sh SECONDS"
needPackages "${packagesRun[@]}" "${packagesTest[@]}" "${packagesLong[@]}"
built fuzz --with "-DLUMO_FUZZ_SECONDS=$1" fuzzers
ctest --test-dir build/fuzz -L '^fuzz$' --no-tests=error --output-on-failure
