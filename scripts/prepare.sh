# Read by ./check, ./demo and ./bench at the root of the project: finds what a build needs, installs
# what is missing, builds presets. POSIX sh; nothing is asked of the network when nothing is missing.

cmake_wanted=3.25  # the library asks for 3.24, the workflow presets for 3.25
jobs=$(nproc 2>/dev/null || echo 2)
script=${0##*/}

say() { printf '%s: %s\n' "$script" "$*" >&2; }
die() {
  say "$*"
  exit 1
}
have() { command -v "$1" >/dev/null 2>&1; }

# quietly LOG COMMAND...: the command's output goes to build/LOG, and is shown if it fails.
quietly() {
  mkdir -p build
  log=build/$1
  shift
  "$@" >"$log" 2>&1 </dev/null && return
  cat "$log" >&2
  return 1
}

# ---- What is there ---------------------------------------------------------------------------

compiles() { "${CXX:-c++}" -std=c++17 -x c++ -fsyntax-only - >/dev/null 2>&1; }
has_header() { printf '#if !__has_include(<%s>)\n#error missing\n#endif\n' "$1" | compiles; }

is_there() {
  case $1 in
    compiler) printf '#include <optional>\nstd::optional<int> any;\n' | compiles ;;
    cmake)
      have cmake && have ctest &&
        printf '%s\n' "$cmake_wanted" "$(cmake --version | sed -n '1s/[^0-9]*//p')" | sort -CV
      ;;
    ninja) have ninja || have make ;;
    gtest) has_header gtest/gtest.h ;;
    benchmark) has_header benchmark/benchmark.h ;;
    gcc) have g++ ;;
    clang) have clang++ ;;
    clang-rt)
      printf 'extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }\n' |
        clang++ -fsanitize=fuzzer,address,undefined -x c++ - -o /dev/null >/dev/null 2>&1
      ;;
    *) have "$1" ;;
  esac
}

# ---- What is missing -------------------------------------------------------------------------

# The package of each thing, for: apt-get, dnf, pacman, zypper, apk.
packages='
compiler    g++               gcc-c++                 gcc        gcc-c++          g++
gcc         g++               gcc-c++                 gcc        gcc-c++          g++
clang       clang             clang                   clang      clang            clang
clang-rt    libclang-rt-dev   compiler-rt             compiler-rt clang           compiler-rt
cmake       cmake             cmake                   cmake      cmake            cmake
ninja       ninja-build       ninja-build             ninja      ninja            ninja
gtest       libgtest-dev      gtest-devel             gtest      gtest            gtest-dev
benchmark   libbenchmark-dev  google-benchmark-devel  benchmark  benchmark-devel  benchmark-dev
pkg-config  pkg-config        pkgconf-pkg-config      pkgconf    pkgconf          pkgconf
'

# packages_of COLUMN THING...
packages_of() {
  column=$1
  shift
  for thing; do
    printf '%s' "$packages" | awk -v thing="$thing" -v column="$column" '$1 == thing { print $column }'
  done | sort -u | tr '\n' ' ' | sed 's/ $//'
}

missing_of() {
  for thing; do
    is_there "$thing" || printf '%s ' "$thing"
  done
}

# need THING...: returns when all are there; otherwise installs them or says what to install.
need() {
  missing=$(missing_of "$@")
  [ -n "$missing" ] || return 0

  column=1
  for manager in apt-get dnf pacman zypper apk none; do
    column=$((column + 1))
    have $manager && break
  done
  # shellcheck disable=SC2086  # lists of names without spaces
  if [ $manager = none ]; then
    die "please install $(packages_of 2 $missing) (named as in Debian), then run it again."
  else
    wanted=$(packages_of $column $missing)
  fi

  as_root=
  if [ "$(id -u)" != 0 ]; then
    have sudo || die "please install $wanted ($manager needs root, and there is no sudo), then run it again."
    as_root=sudo
  fi

  say "installing $wanted with $manager ..."
  quietly install.log install_packages ||
    die "$manager could not install $wanted; please install them, then run it again."
  missing=$(missing_of "$@")
  case "$missing" in
    '') ;;
    *cmake*) die "CMake $cmake_wanted or newer is needed, this system's package is older; please install a newer one, then run it again." ;;
    *) die "still missing after installing $wanted: $missing" ;;
  esac
}

install_packages() {
  # shellcheck disable=SC2086
  case $manager in
    apt-get)
      apt="$as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300"
      $apt update && $apt install -y --no-install-recommends $wanted
      ;;
    dnf) $as_root dnf install -y $wanted ;;
    pacman) $as_root pacman -Sy --noconfirm --needed $wanted ;;
    zypper) $as_root zypper --non-interactive install $wanted ;;
    apk) $as_root apk add $wanted ;;
  esac
}

# ---- Building --------------------------------------------------------------------------------

# build PRESET TARGET...: configures build/PRESET and builds the targets there. A build folder that
# another generator made, or that was moved, is made anew.
build() {
  preset=$1
  shift
  generator=Ninja
  have ninja || generator='Unix Makefiles'
  cache=build/$preset/CMakeCache.txt
  if [ -f "$cache" ] && ! { grep -Fqx "CMAKE_GENERATOR:INTERNAL=$generator" "$cache" &&
    grep -Fqx "CMAKE_HOME_DIRECTORY:INTERNAL=$(pwd -P)" "$cache"; }; then
    rm -rf "build/$preset"
  fi
  cmake --preset "$preset" -G "$generator" && cmake --build "build/$preset" --parallel "$jobs" --target "$@"
}
