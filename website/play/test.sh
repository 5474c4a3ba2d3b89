#!/bin/sh
# Builds the page and tries it in a browser; pictures of it are left in build/play-test.
set -eu
cd "$(dirname "$0")/../.."
. scripts/prepare.sh
need g++ cmake ninja-build emscripten chromium chromium-driver nodejs

sh website/play/build.sh
program() {
  cmake -S . -B build/play-native -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_SHARED_LIBS=OFF \
    -DCRV_BUILD_PLAYGROUND=ON -DCRV_BUILD_TESTS=OFF -DCRV_BUILD_EXAMPLES=OFF -DCRV_BUILD_BENCHMARKS=OFF \
    -DCRV_INSTALL=OFF &&
    cmake --build build/play-native --parallel "$jobs" --target play
}
quietly "building play-native" program

pictures=$PWD/build/play-test
mkdir -p "$pictures"
node website/play/test.mjs "$PWD/build/site/play/index.html" build/play-native/website/play/play "$pictures"

# The programs that the page offers print what it shows.
"${CXX:-c++}" -std=c++17 -DCRV_STATIC -ffp-contract=off -I. "$pictures/programs.cpp" build/play-native/libCRV.a \
  -o "$pictures/programs"
"$pictures/programs" | node -e '
  const {readFileSync} = require("fs");
  const printed = readFileSync(0, "utf8").trim().split("\n").map(Number);
  const expected = JSON.parse(readFileSync(process.argv[1], "utf8"));
  require("assert").deepStrictEqual(printed, expected);
  console.log(`the programs print the ${printed.length} numbers that the page shows`);' "$pictures/expected.json"
