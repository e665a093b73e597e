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

# build_preset PRESET [TARGET...]: configures and builds one preset, in build-PRESET, or only the targets.
build_preset() {
  preset=$1
  shift
  say "$preset: build"
  cmake --preset "$preset" >"build-$preset.log" 2>&1 ||
    { cat "build-$preset.log"; fail "$preset does not configure"; }
  cmake --build --preset "$preset" ${1:+--target "$@"} -- -j "$(nproc)" >>"build-$preset.log" 2>&1 ||
    { tail -n 60 "build-$preset.log"; fail "$preset does not build"; }
}

# test_preset PRESET [OPTION...]: runs the tests of a preset that is built; they must all pass. The options are ctest's.
test_preset() {
  preset=$1
  shift
  say "$preset: test"
  ctest --preset "$preset" -j "$(nproc)" --progress --no-tests=error "$@"
}

run_preset() {
  build_preset "$1"
  test_preset "$1"
}
