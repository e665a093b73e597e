# shellcheck shell=sh disable=SC2034
# What the scripts share: sourced, not run. Sets `root` to the project's directory.

root=$(cd "$(dirname "$0")/.." && pwd)

say() { printf '== %s\n' "$*"; }

fail() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# install_packages PACKAGE...: installs those that are missing, as root or through sudo.
install_packages() {
  missing=
  for package in "$@"; do
    status=$(dpkg-query -W -f '${Status}' "$package" 2>/dev/null) || status=
    case $status in
      *"ok installed"*) ;;
      *) missing="$missing $package" ;;
    esac
  done
  [ -n "$missing" ] || return 0
  command -v apt-get >/dev/null || fail "please install:$missing"
  as_root=
  if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || fail "not root and no sudo here, please install:$missing"
    as_root=sudo
  fi
  say "installing$missing"
  # Word splitting is wanted: a list of package names, none of which holds a blank.
  # shellcheck disable=SC2086
  $as_root env DEBIAN_FRONTEND=noninteractive sh -c \
    'apt-get update -qq && exec apt-get install -y -qq --no-install-recommends "$@"' sh $missing \
    >"${TMPDIR:-/tmp}/tarvendo-packages.log" 2>&1 ||
    fail "apt-get could not install$missing; see ${TMPDIR:-/tmp}/tarvendo-packages.log"
}

# --- Steps and their times ------------------------------------------------------------------------

# A script that others call as a part of theirs adds its steps to their table, the file that TARVENDO_STEPS names.
steps=${TARVENDO_STEPS:-}
step_name=

# begin_steps: from here on steps are measured. Returns whether the table is this script's own.
begin_steps() {
  [ -z "$steps" ] || return 1
  steps=$root/build-steps.log
  : >"$steps"
  TARVENDO_STEPS=$steps
  export TARVENDO_STEPS
}

# Sets `now` to the time and `used` to the processors' seconds of all commands that have ended here.
read_clocks() {
  now=$(date +%s)
  clocks=$steps.$$.$lane
  times >"$clocks"
  used=$(tr 'ms' '  ' <"$clocks" | awk '{ sum += $1 * 60 + $2 + $3 * 60 + $4 } END { printf "%.1f", sum }')
  rm -f "$clocks"
}

# step NAME: says what is done next, and ends the step before. Goes no further when a lane has failed.
step() {
  end_step
  look_at_lanes
  say "$1"
  [ -n "$steps" ] || return 0
  read_clocks
  step_name=$1
  step_began=$now
  step_used=$used
}

# end_step: what comes next is no step of this script.
end_step() {
  [ -n "$step_name" ] || return 0
  read_clocks
  echo "$step_name|$((now - step_began))|$step_used|$used" >>"$steps"
  step_name=
}

# print_steps: the table of all steps, in the order of their ends. A lane's work is that of its own steps, and stands once
# more in the step during which the lane ends. What a test leaves to itself (Wine's server) counts nowhere.
print_steps() {
  end_step
  read_clocks
  say "seconds by the clock, seconds of the processors"
  awk -F '|' '{ printf "%6d %8.1f  %s\n", $2, $4 - $3, $1 }' "$steps"
}

# --- Lanes ----------------------------------------------------------------------------------------

# Tests mostly wait, so the machine builds meanwhile: a lane runs beside what follows it.
lanes=
lane=

# begin_lane NAME COMMAND...: runs the command in a lane, its output in build-NAME-lane.log. Its steps stand in the table.
begin_lane() {
  end_step
  lanes="$lanes $1"
  rm -f "build-$1-lane.failed"
  (
    lane=$1
    shift
    trap '[ $? -eq 0 ] || touch "build-$lane-lane.failed"' EXIT
    "$@"
    end_step
  ) >"build-$1-lane.log" 2>&1 &
  # What a lane has started is not left behind.
  trap wait EXIT
}

# look_at_lanes: fails with what a lane has printed, if one has failed.
look_at_lanes() {
  for name in $lanes; do
    [ ! -e "build-$name-lane.failed" ] || { cat "build-$name-lane.log"; fail "$name: failed"; }
  done
}

# end_lanes: waits for all lanes, and prints what they printed.
end_lanes() {
  wait
  look_at_lanes
  for name in $lanes; do cat "build-$name-lane.log"; done
  lanes=
}

# --- Builds and tests -----------------------------------------------------------------------------

# configure_preset PRESET: configures build-PRESET. With TARVENDO_EVERYDAY set it is the build of every day, from which is
# left out what another build of the same day has, or what seldom fails and takes long; CONTRIBUTING.md tells all of it.
configure_preset() {
  option=
  if [ -n "${TARVENDO_EVERYDAY:-}" ]; then
    case $1 in
      # The address sanitizer sees all unit tests; these try the more cases the quicker the program is.
      release) option=-DTARVENDO_UNIT_TESTS=pairing ;;
      asan-ubsan) option=-DTARVENDO_SANITIZE_POINTERS=OFF ;;
      # What the compiler makes of it hardly counts under Wine.
      windows64) option="-DCMAKE_CXX_FLAGS_RELEASE=-O1 -DNDEBUG" ;;
      # No test of it can be run.
      windows32) option=-DBUILD_TESTING=OFF ;;
    esac
    set -- "$1" -DTARVENDO_BENCHMARKS=OFF ${option:+"$option"}
  fi
  cmake --preset "$@" >"build-$1.log" 2>&1 || { cat "build-$1.log"; fail "$1 does not configure"; }
}

# make_preset PRESET [TARGET...]: configures and builds one preset, in build-PRESET, or only the targets. Tests that run
# meanwhile come first.
make_preset() {
  preset=$1
  shift
  {
    # Another lane may want the same.
    flock 9
    configure_preset "$preset"
    nice cmake --build --preset "$preset" ${1:+--target "$@"} -- -j "$(nproc)" >>"build-$preset.log" 2>&1 ||
      { tail -n 60 "build-$preset.log"; fail "$preset does not build"; }
  } 9>"build-$preset.lock"
}

# read_sources BUILD-FOLDER: the compiler reads every source of a folder that is configured, and makes nothing of it.
read_sources() {
  python3 "$root/tests/architecture/read_sources.py" "$1" >"$1.log" 2>&1 || { cat "$1.log"; fail "$1: what is above"; }
}

# build_preset PRESET: a step that builds one preset.
build_preset() {
  step "$1: build"
  make_preset "$1"
}

# run_tests PRESET [OPTION...]: runs the tests of a preset that is built; they must all pass. The options are ctest's.
# With TARVENDO_LONG set the samples are large.
run_tests() {
  preset=$1
  shift
  ctest --preset "$preset${TARVENDO_LONG:+-long}" -j "$(nproc)" --progress --no-tests=error "$@"
}

# test_preset PRESET [OPTION...]: a step that does it.
test_preset() {
  step "$1: test"
  run_tests "$@"
}

# run_preset PRESET: both.
run_preset() {
  build_preset "$1"
  test_preset "$1"
}
