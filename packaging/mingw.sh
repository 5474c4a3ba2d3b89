# Builds the library and the examples for Windows with Debian's cross compiler, shared and static, and
# runs the examples where wine is installed. From the project's root: sh packaging/mingw.sh
set -eu

# The examples' option parser consists of headers, which stand among those of Linux: a folder of its own
# keeps these out.
headers=$PWD/build/mingw-headers
mkdir -p "$headers"
ln -sfn /usr/include/CLI "$headers/CLI"
cat >"$headers/CLI11Config.cmake" <<'CONFIG'
add_library(CLI11::CLI11 INTERFACE IMPORTED)
target_include_directories(CLI11::CLI11 INTERFACE ${CMAKE_CURRENT_LIST_DIR})
CONFIG

for shared in ON OFF; do
  build=build/mingw-shared-$shared
  cmake -S . -B "$build" -G Ninja --toolchain "$PWD/cmake/toolchains/mingw-w64.cmake" \
    -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=$shared -DCLI11_DIR="$headers" \
    -DCRV_BUILD_TESTS=OFF -DCRV_BUILD_BENCHMARKS=OFF -DCRV_WERROR=ON
  cmake --build "$build"
  command -v wine64 >/dev/null || continue
  for program in "$build"/examples/*.exe; do
    (cd "$build" && WINEDEBUG=-all WINEPATH="/usr/lib/gcc/x86_64-w64-mingw32/12-posix;/usr/x86_64-w64-mingw32/lib;." \
      wine64 "examples/$(basename "$program")")
  done
done
