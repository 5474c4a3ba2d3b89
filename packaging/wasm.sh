# Builds the library for WebAssembly with Debian's emscripten and asks in node whether it sorts in the
# same order, gives the bits that are recorded, and reads and writes SVG. From the project's root:
# sh packaging/wasm.sh
set -eu

# Debian keeps the modules of emscripten's scripts where only Debian's node looks.
export NODE_PATH="${NODE_PATH:+$NODE_PATH:}/usr/share/nodejs"

# The tests read files and throw. GoogleTest's source comes with its Debian package. An emscripten that
# is older than its node would fetch the program from a URL, unless told to read it at once.
flags=-fexceptions
link="-sNODERAWFS=1 -sALLOW_MEMORY_GROWTH=1 -sTOTAL_STACK=8MB -sWASM_ASYNC_COMPILATION=0"
prefix=$PWD/build/wasm-gtest/prefix
emcmake cmake -S /usr/src/googletest -B build/wasm-gtest -G Ninja -DCMAKE_BUILD_TYPE=Release \
  -DBUILD_GMOCK=OFF -DCMAKE_CXX_FLAGS=$flags -DCMAKE_INSTALL_PREFIX="$prefix"
cmake --build build/wasm-gtest --target install

emcmake cmake -S . -B build/wasm -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF \
  -DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST \
  -DGTest_DIR="$prefix/lib/cmake/GTest" -DCMAKE_CXX_FLAGS=$flags \
  -DCMAKE_EXE_LINKER_FLAGS="$flags $link" -DCRV_BUILD_EXAMPLES=OFF -DCRV_BUILD_BENCHMARKS=OFF
cmake --build build/wasm --target crv_foundation_tests crv_property_tests crv_svg_tests
node build/wasm/tests/crv_foundation_tests.js
node build/wasm/tests/crv_property_tests.js --gtest_filter='SameBits.*'
node build/wasm/tests/crv_svg_tests.js
