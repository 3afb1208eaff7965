#!/usr/bin/env bash
# setup.sh: installs what quillBench and followBench are compared with, and what plot.py draws with.
# Configure again after it. Without it they have those peers that are there.
set -euo pipefail
cd "$( dirname "${BASH_SOURCE[0]}" )/../.."
. cmake/setup.sh

needPackages "${packagesRun[@]}" pkg-config \
  libabsl-dev libdpdk-dev libck-dev liburcu-dev liblmdb-dev \
  libhiredis-dev redis-server openvswitch-switch python3-matplotlib
