# Shared by the scripts: messages, builds, and the packages that a bare Debian 12 lacks.

set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

build_packages="g++ cmake ninja-build ccache qt6-base-dev qt6-svg-dev libxcb1-dev nlohmann-json3-dev pkgconf qt6-translations-l10n fonts-liberation2 fonts-dejavu-core pybind11-dev python3-dev fp-utils libmspack-dev libedit-dev"
check_packages="libgtest-dev libxcb-damage0-dev strace clang-format clang-tidy locales mypy python3-numpy python3-pyqt6 python3-pyvisa python3-pyvisa-py python3-serial xvfb libumockdev-dev umockdev groff-base tzdata dpkg-dev file desktop-file-utils appstream zsh fish"

# Only for scripts/screenshots: a display, and a small window manager that draws frames.
picture_packages="xvfb openbox"

# For the preset asan, and for fuzz/run.
clang_packages="clang-14 libclang-rt-14-dev llvm-14"

# Only for tests/peers/run: third-party programs.
peer_packages="redis-server memcached gpsd socat ser2net python3"

# The presets share cached objects.
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1

say() { printf '%s: %s\n' "$script_name" "$*"; }
say_stderr() { say "$*" >&2; }

fail() {
  say_stderr "$*"
  exit 1
}

# as_root COMMAND...: uses sudo if the caller is not root.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    fail "packages are missing and neither root nor sudo is at hand; install: $missing"
  fi
}

# need_packages NAME...: installs the missing ones; silent if there are none.
need_packages() {
  missing=""
  for package in "$@"; do
    case "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" in
      installed) ;;
      *) missing="$missing $package" ;;
    esac
  done
  missing=${missing# }
  [ -n "$missing" ] || return 0
  say "installing $missing"
  local log
  log=$(mktemp)
  # shellcheck disable=SC2086
  if ! { as_root env DEBIAN_FRONTEND=noninteractive apt-get -q update &&
    as_root env DEBIAN_FRONTEND=noninteractive apt-get -q install -y --no-install-recommends $missing; } >"$log" 2>&1; then
    tail -n 20 "$log" >&2
    fail "the packages could not be installed (the lines above are apt-get's)"
  fi
  rm -f "$log"
}

# configure PRESET [CMAKE ARGS...]: only once without ARGS; the build itself notices later changes of the CMake files.
configure() {
  local preset=$1
  shift
  [ -f "build/$preset/build.ninja" ] && [ $# -eq 0 ] && return 0
  say "configuring ($preset)"
  local log
  log=$(mktemp)
  if ! cmake --preset "$preset" "$@" >"$log" 2>&1; then
    tail -n 30 "$log" >&2
    fail "configuring failed (the lines above are cmake's)"
  fi
  rm -f "$log"
}

# record_build LOG TEXT: writes ninja's output to LOG, and prints TEXT when ninja builds its first target.
record_build() {
  local line said=no
  while IFS= read -r line; do
    printf '%s\n' "$line"
    [ $said = no ] || continue
    case "$line" in
      *"] Re-"*) ;;
      "["*"] "*)
        said=yes
        say "$2" >&3
        ;;
    esac
  done 3>&1 >"$1"
}

# build PRESET [TARGETS...]: silent if there is nothing to do; prints the compiler's output only if the build fails.
build() {
  local preset=$1 targets="" log
  shift
  [ $# -eq 0 ] || targets="--target $*"
  log=$(mktemp)
  # shellcheck disable=SC2086
  if ! cmake --build "build/$preset" -j "$(nproc)" $targets 2>&1 | record_build "$log" "building ($preset)"; then
    tail -n 60 "$log" >&2
    fail "the build failed (the lines above are the compiler's)"
  fi
  rm -f "$log"
}

# start_window_manager FOLDER: frames the windows of DISPLAY; window_manager_pid is its process. Returns once it does: a
# window that is shown before may never get its frame. FOLDER is for temporary files.
start_window_manager() {
  mkfifo "$1/managed"
  openbox --startup "sh -c 'echo >$1/managed'" >/dev/null 2>&1 &
  # shellcheck disable=SC2034
  window_manager_pid=$!
  read -r _ <"$1/managed"
}
