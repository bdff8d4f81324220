# Shared by bench/report and bench/soak: a separate screen. Needs scripts/lib.sh.

bench_packages="xvfb openbox libxcb-damage0-dev libgtest-dev lxi-tools xxd"

# start_display: starts an X server on a free number and sets DISPLAY; it ends with the script.
start_display() {
  local number_file
  scratch=$(mktemp -d)
  number_file=$scratch/display
  # The X server reports its number as soon as it is ready.
  mkfifo "$number_file"
  Xvfb -displayfd 3 -screen 0 1400x900x24 -nolisten tcp 3>"$number_file" >/dev/null 2>&1 &
  display_pid=$!
  window_manager_pid=""
  trap stop_display EXIT
  DISPLAY=:$(head -n 1 "$number_file")
  export DISPLAY
  mkdir -m 700 "$scratch/run"
  export XDG_RUNTIME_DIR=$scratch/run XDG_CONFIG_HOME=$scratch/config XDG_STATE_HOME=$scratch/state \
    XDG_CACHE_HOME=$scratch/cache
  export QT_QPA_PLATFORM=xcb
}

stop_display() {
  [ -z "$window_manager_pid" ] || kill "$window_manager_pid" 2>/dev/null || true
  kill "$display_pid" 2>/dev/null || true
  wait 2>/dev/null || true
  rm -rf "$scratch"
}
