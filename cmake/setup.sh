# shellcheck shell=bash disable=SC2034   # the lists are read by who sources this
# setup.sh: what ./run and ./test share: the packages they need, and a quiet build.
#
# Sourced, never run. A fresh Debian 12 with nothing but git and apt is enough; when all is there no
# package tool is started. All that is said here goes to stderr.

packagesRun=(
  cmake g++ ninja-build                                   # the build
  libboost1.81-dev                                        # the library
  libcli11-dev tao-pegtl-dev                              # the generator
  libfmt-dev libpcap-dev nlohmann-json3-dev               # the programs
  googletest                                              # named by the build; compiled by tests only
)
packagesTest=(
  clang-format-14 git                                     # the checks of the tree
  g++-multilib                                            # 32 bits
  iproute2 python3-scapy                                  # devices for tests; frames that are not ours
  libbenchmark-dev libmurmurhash-dev python3 tshark       # benchmarks; readers and hashes that are not ours
)
packagesLong=( clang-14 libclang-rt-14-dev )

# die TEXT: one line, and the exit status of a machine that cannot do what was asked.
die() {
  echo "${0##*/}: $1" >&2
  exit 2
}

# asRoot COMMAND...: runs it as root, or fails when there is no way to become root.
asRoot() {
  if [ "$( id -u )" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo -- "$@"
  else
    return 1
  fi
}

# missingPackages PACKAGE...: prints those that are not installed.
missingPackages() {
  local installed package
  installed=" $( dpkg-query -W -f '${Package}/${db:Status-Status} ' "$@" 2>/dev/null || true )"
  for package in "$@"; do
    [[ $installed == *" $package/installed "* ]] || echo "$package"
  done
}

# refreshedLists: brings the package lists up to date; another package tool is waited for.
refreshedLists() {
  local tries said
  for (( tries = 0; tries < 60; ++tries )); do
    if said=$( asRoot apt-get -qq -o Acquire::Retries=3 update 2>&1 ); then
      return 0
    fi
    [[ $said == *"Could not get lock"* ]] || break
    sleep 5
  done
  # One foreign source that is down is no reason to stop: installing says what cannot be had.
  return 1
}

# needPackages PACKAGE...: installs what is missing, saying so in one line; exits when it cannot.
needPackages() {
  command -v dpkg-query >/dev/null || die "this set-up knows Debian's packages only; it needs: $*"
  local missing said
  mapfile -t missing < <( missingPackages "$@" )
  [ "${#missing[@]}" -gt 0 ] || return 0

  if [ "$( id -u )" -ne 0 ] && ! command -v sudo >/dev/null; then
    die "neither root nor sudo here; please install: ${missing[*]}"
  fi
  echo "${0##*/}: installing ${missing[*]}" >&2
  refreshedLists || true
  if ! said=$( asRoot env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq \
                 --no-install-recommends -o DPkg::Lock::Timeout=300 -o Acquire::Retries=3 \
                 "${missing[@]}" 2>&1 ); then
    said=$( grep -m 1 '^E: ' <<< "$said" || tail -n 1 <<< "$said" )
    die "cannot install them (${said#E: }); is there a network?"
  fi
}

# numJobs: one compiler for each core, as long as each can have a gigabyte of memory.
numJobs() {
  local cores gigabytes
  cores=$( nproc )
  gigabytes=$( awk '/^MemAvailable/ { print int( $2 / 1048576 ) }' /proc/meminfo )
  echo "$(( gigabytes < 1 ? 1 : cores < gigabytes ? cores : gigabytes ))"
}

# progress LOG: copies stdin to LOG; on a terminal its newest line is shown and at the end erased.
progress() {
  local line
  if [ ! -t 2 ]; then
    cat > "$1"
    return
  fi
  while IFS= read -r line; do
    printf '%s\n' "$line" >&3
    [[ $line == \[* ]] && printf '\r\033[K%.*s' "$(( ${COLUMNS:-80} - 1 ))" "$line" >&2
  done 3> "$1"
  printf '\r\033[K' >&2
}

# quietly LOG COMMAND...: runs it with its output in LOG; when it fails, shows what it had to say.
quietly() {
  local log=$1
  shift
  if "$@" 2>&1 | progress "$log"; then
    return 0
  fi
  grep -v '^\[[0-9]*/[0-9]*\]' "$log" >&2 || true
  return 1
}

# built PRESET [--with CMAKE-OPTION]... [TARGET...]: configures (once) and builds; false when either fails.
built() {
  local preset=$1 options=()
  shift
  while [ "${1-}" = --with ]; do
    options+=( "$2" )
    shift 2
  done
  mkdir -p "build/$preset"
  if [ "${#options[@]}" -gt 0 ] || [ ! -e "build/$preset/build.ninja" ] ||
     [ CMakePresets.json -nt "build/$preset/build.ninja" ]; then
    quietly "build/$preset/configure.log" cmake --preset "$preset" "${options[@]}" || return 1
  fi
  quietly "build/$preset/build.log" \
    cmake --build "build/$preset" --parallel "$( numJobs )" ${1:+--target "$@"}
}
