# Builds the Debian packages, lets lintian judge them, installs them in a fresh Debian, builds and runs
# the README's program there in every way that the README names, looks at it with gdb, and removes the
# packages. Needs root, lintian and debootstrap; what is downloaded stays in build/packages-of-debian.
# From the project's root: sh packaging/debian.sh
set -eu

build=build/package
library="-G Ninja -DCMAKE_BUILD_TYPE=Release -DCRV_BUILD_TESTS=OFF -DCRV_BUILD_BENCHMARKS=OFF
  -DCRV_BUILD_EXAMPLES=OFF"
# Unquoted here and below: the options are words.
cmake -S . -B $build $library -DCMAKE_INSTALL_PREFIX=/usr \
  -DCMAKE_INSTALL_LIBDIR="lib/$(gcc -print-multiarch)"
cmake --build $build
rm -rf $build/packages
cpack --config $build/CPackConfig.cmake
rm -rf $build/packages/_CPack_Packages
lintian --allow-root --fail-on error $build/packages/*.deb
cmake -S . -B $build-static $library -DBUILD_SHARED_LIBS=OFF
cmake --build $build-static

# The release and the mirror are those of this machine, unless DEBIAN_MIRROR names one.
release=$(sed -n 's/^VERSION_CODENAME=//p' /etc/os-release)
mirror=${DEBIAN_MIRROR:-$(apt-get indextargets --format '$(REPO_URI)' 'Created-By: Packages' \
  "Codename: $release" 'Component: main' | head -n 1)}
downloads=$PWD/build/packages-of-debian
mkdir -p "$downloads"
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
debootstrap --variant=minbase --cache-dir="$downloads" "$release" "$root" "$mirror"
# gdb wants /proc, which is there as long as the command runs.
in_root() {
  env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C DEBIAN_FRONTEND=noninteractive \
    unshare --mount sh -euc 'mount -t proc proc "$0/proc"; exec chroot "$0" "$@"' "$root" "$@"
}
in_root apt-get install -y --no-install-recommends -o Dpkg::Options::=--force-unsafe-io \
  g++ make cmake pkg-config gdb
files_in_root() (cd "$root" && find etc usr -not -type d -not -name '*.pyc' | sort)
files_in_root >$build/before.txt

host=$root/tmp/host
mkdir "$host"
cmake --install $build-static --prefix "$host/static"
cp $build/packages/*.deb examples/firstResult.cpp "$host"
cp -r --parents tests/package "$host"
cat >"$host/CMakeLists.txt" <<'CMAKE'
cmake_minimum_required(VERSION 3.22)
project(host LANGUAGES CXX)
find_package(CRV 0.2 REQUIRED)
add_executable(host firstResult.cpp)
target_link_libraries(host PRIVATE CRV::CRV)
CMAKE
in_root sh -euxc '
  cd /tmp/host
  dpkg -i ./*.deb
  cmake -B by-cmake
  cmake --build by-cmake
  by-cmake/host
  c++ -std=c++17 firstResult.cpp $(pkg-config --cflags --libs CRV) -o by-pkg-config
  ./by-pkg-config
  sh tests/package/gdb.sh c++ /usr lib/$(gcc -print-multiarch)
  dpkg --purge $(dpkg-query -W -f "\${Package} " "libcrv*")

  export PKG_CONFIG_PATH=$PWD/static/lib/pkgconfig
  cmake -B static-by-cmake -DCMAKE_PREFIX_PATH=$PWD/static
  cmake --build static-by-cmake
  static-by-cmake/host
  c++ -std=c++17 firstResult.cpp $(pkg-config --cflags --libs CRV) -o static-by-pkg-config
  ./static-by-pkg-config'

files_in_root | diff $build/before.txt - || { echo "the removed packages left files"; exit 1; }
