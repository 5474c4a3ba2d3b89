# Builds the library, the examples and the test of recorded bits for Windows with Debian's cross
# compiler, shared and static, and runs them where wine is installed. From the project's root:
# sh packaging/mingw.sh
set -eu

# GoogleTest's source comes with its Debian package. The examples' option parser consists of headers,
# which stand among those of Linux: a folder of its own keeps these out.
toolchain=$PWD/cmake/toolchains/mingw-w64.cmake
gtest=$PWD/build/mingw-gtest/prefix
cmake -S /usr/src/googletest -B build/mingw-gtest -G Ninja --toolchain "$toolchain" \
  -DCMAKE_BUILD_TYPE=Release -DBUILD_GMOCK=OFF -DCMAKE_INSTALL_PREFIX="$gtest"
cmake --build build/mingw-gtest --target install
headers=$PWD/build/mingw-headers
mkdir -p "$headers"
ln -sfn /usr/include/CLI "$headers/CLI"
cat >"$headers/CLI11Config.cmake" <<'CONFIG'
add_library(CLI11::CLI11 INTERFACE IMPORTED)
target_include_directories(CLI11::CLI11 INTERFACE ${CMAKE_CURRENT_LIST_DIR})
CONFIG

WINEPATH=$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++-6.dll)
WINEPATH="${WINEPATH%/*};/usr/x86_64-w64-mingw32/lib;."
export WINEPATH WINEDEBUG=-all WINEPREFIX="$PWD/build/wine"
for shared in ON OFF; do
  build=build/mingw-shared-$shared
  cmake -S . -B "$build" -G Ninja --toolchain "$toolchain" -DCMAKE_BUILD_TYPE=Release \
    -DBUILD_SHARED_LIBS=$shared -DCRV_WERROR=ON -DCRV_BUILD_BENCHMARKS=OFF \
    -DCLI11_DIR="$headers" -DGTest_DIR="$gtest/lib/cmake/GTest" \
    -DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST
  cmake --build "$build" --target CRV crv_examples
  command -v wine >/dev/null || continue
  for program in "$build"/examples/*.exe; do
    program=examples/${program##*/}
    case $program in
      */gallery.exe) (cd "$build" && wine $program gallery ../play/index.html) ;;
      *) (cd "$build" && wine $program) ;;
    esac
  done
done
cmake --build build/mingw-shared-OFF --target crv_property_tests crv_svg_tests
command -v wine >/dev/null || exit 0
wine build/mingw-shared-OFF/tests/crv_property_tests.exe --gtest_filter='SameBits.*'
wine build/mingw-shared-OFF/tests/crv_svg_tests.exe
