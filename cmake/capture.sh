# shellcheck shell=bash
# capture.sh: the real capture that ./run shows and ./test compares with.
#
# Sourced after setup.sh, never run. It is the test data of a Debian package, which is taken apart in
# build/capture and not installed.

captureFile=build/capture/usr/lib/python3/dist-packages/pathspider/tests/data/real.pcap
captureSum=ed2946c38ad35e2cf6ecd970314c92d0893328d78de09f36d5b398019524e3cf

# isTheCapture FILE: whether FILE is the capture, byte for byte.
isTheCapture() {
  [ -r "$1" ] && [ "$( sha256sum < "$1" )" = "$captureSum  -" ]
}

# fetchedPackage: downloads the package into the current folder.
fetchedPackage() {
  apt-get -qq -o Acquire::Retries=3 download pathspider > /dev/null 2>&1
}

# needCapture: makes captureFile be there; false, having said why in one line, when it cannot.
needCapture() {
  if isTheCapture "$captureFile"; then
    return 0
  fi
  rm -rf build/capture
  mkdir -p build/capture
  # Fetching needs no rights, but fresh package lists do: they are asked for only when it fails without.
  if ! ( cd build/capture && { fetchedPackage || { refreshedLists && fetchedPackage; }; } ); then
    echo "${0##*/}: cannot download the Debian package pathspider; is there a network?" >&2
    return 1
  fi
  dpkg-deb --fsys-tarfile build/capture/pathspider_*.deb |
    tar -x -C build/capture "./${captureFile#build/capture/}" 2> /dev/null || true
  rm -f build/capture/pathspider_*.deb
  if ! isTheCapture "$captureFile"; then
    echo "${0##*/}: the capture in the Debian package pathspider is not the expected one" >&2
    return 1
  fi
}
