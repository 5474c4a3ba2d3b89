# Read by ./check, ./demo, ./bench and ./site: installs on Debian and Ubuntu what a build needs and is not
# there, says on other systems what to install, and builds presets. POSIX sh. Where nothing is
# missing, nothing is asked of the network.

jobs=$(nproc 2>/dev/null || echo 2)
script=${0##*/}

say() { printf '%s: %s\n' "$script" "$*" >&2; }
die() {
  say "$*"
  exit 1
}

# quietly STAGE COMMAND...: says how far the command is, in tenths of what Ninja or CTest count. Its
# output goes to build/STAGE.log; if it fails, what went well is left out and the rest shown.
quietly() {
  log=build/$1.log
  mkdir -p build
  rm -f build/passed
  printf '%s: %s ...' "$script" "$1" >&2
  shift
  { "$@" 2>&1 </dev/null && : >build/passed; } | tee "$log" | tenths >&2
  [ -e build/passed ] && return
  grep -vE '^ +Start |^ *[0-9]+/[0-9]+ Test .* Passed |^\[[0-9]+/[0-9]+\] ' "$log" >&2
  return 1
}

# Reads "[12/80] ..." and "12/80 Test ..." and writes 10%, 20%, ...
tenths() {
  said=0
  while read -r line; do
    line=${line#[}
    count=${line%%/*}
    all=${line#*/}
    all=${all%%[] ]*}
    case $count,$all in *[!0-9,]* | ,* | *,) continue ;; esac
    [ $((count * 10 / all)) -gt "$said" ] || continue
    said=$((count * 10 / all))
    printf ' %s0%%' "$said"
  done
  echo
}

# is_there PACKAGE: by what the package brings, however it came to this machine.
is_there() {
  case $1 in
    g++) command -v "${CXX:-g++}" ;;
    cmake) printf '3.25\n%s\n' "$(cmake --version | sed -n '1s/[^0-9]*//p')" | sort -CV ;;
    ninja-build) command -v ninja ;;
    googletest) [ -e /usr/src/googletest/CMakeLists.txt ] ;;
    g++-mingw-w64-x86-64-posix) command -v x86_64-w64-mingw32-g++-posix ;;
    emscripten) command -v em++ ;;
    libgtest-dev) has_header gtest/gtest.h ;;
    libbenchmark-dev) has_header benchmark/benchmark.h ;;
    libcli11-dev) has_header CLI/CLI.hpp ;;
    libpugixml-dev) has_header pugixml.hpp ;;
    python3-dev) pkg-config --exists python3 ;;
    pybind11-dev) [ -e /usr/include/pybind11/pybind11.h ] ;;
    python3-numpy) /usr/bin/python3 -c 'import numpy' ;;
    nlohmann-json3-dev) has_header nlohmann/json.hpp ;;
    lib2geom-dev) pkg-config --exists 2geom ;;
    libagg-dev) pkg-config --exists libagg ;;
    doxygen-awesome-css) [ -e /usr/share/doxygen-awesome-css/doxygen-awesome.css ] ;;
    chromium-driver) command -v chromedriver ;;
    nodejs) command -v node ;;
    libclang-rt-dev) echo 'int main() {}' | clang++ -fsanitize=address -x c++ - -o /dev/null ;;
    *) command -v "$1" ;;
  esac >/dev/null 2>&1
}
has_header() { echo "#include <$1>" | "${CXX:-c++}" -std=c++17 -x c++ -fsyntax-only -; }

missing_of() {
  for package; do is_there "$package" || printf '%s ' "$package"; done
}

# need PACKAGE...: returns when all are there; the names are Debian's.
need() {
  missing=$(missing_of "$@")
  [ -n "$missing" ] || return 0
  command -v apt-get >/dev/null || die "please install ${missing}(the names are Debian's; elsewhere" \
    "they are ${others}), then run it again."
  as_root=
  if [ "$(id -u)" != 0 ]; then
    command -v sudo >/dev/null || die "please install ${missing}as root, then run it again."
    as_root=sudo
  fi
  say "missing: $missing"
  quietly installing install || die "could not install $missing"
  missing=$(missing_of "$@")
  [ -z "$missing" ] || die "still missing or too old (CMake must be 3.25 or newer): $missing"
}
others='gcc-c++, clang, compiler-rt, cmake, ninja, gtest, google-benchmark, cli11, pkgconf'

install() {
  apt="$as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300"
  # shellcheck disable=SC2086  # lists of names without spaces
  $apt update && $apt install -y --no-install-recommends $missing
}

# build PRESET TARGET...: configures build/PRESET and builds the targets there. A folder that was
# moved is made anew.
build() {
  preset=$1
  shift
  grep -Fqsx "CMAKE_HOME_DIRECTORY:INTERNAL=$(pwd -P)" "build/$preset/CMakeCache.txt" ||
    rm -rf "build/$preset"
  cmake --preset "$preset" && cmake --build "build/$preset" --parallel "$jobs" --target "$@"
}
