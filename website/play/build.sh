#!/bin/sh
# website/play/build.sh [FOLDER]   builds index.html there, or in build/site/play: one page with everything in it, see
#                                  page.html. Asks nothing of the network.
set -eu
cd "$(dirname "$0")/../.."
. scripts/prepare.sh
need g++ cmake ninja-build emscripten

page=website/play
out=${1:-build/site/play}
work=build/play-wasm
mkdir -p "$out" $work

toolchain=$(find /usr/share/emscripten /usr/lib/emscripten "${EMSDK:-/nowhere}" -name Emscripten.cmake 2>/dev/null | head -n 1)
library() {
  cmake -S . -B $work -G Ninja -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=MinSizeRel \
    "-DCMAKE_CXX_FLAGS_MINSIZEREL=-Oz -DNDEBUG" -DBUILD_SHARED_LIBS=OFF -DCRV_BUILD_PLAYGROUND=ON \
    -DCRV_BUILD_TESTS=OFF -DCRV_BUILD_EXAMPLES=OFF -DCRV_BUILD_BENCHMARKS=OFF -DCRV_INSTALL=OFF &&
    cmake --build $work --parallel "$jobs" --target play
}
quietly "building play-wasm" library

# entries FILE=NAME...: the numbers of files as the members of an object.
entries() {
  for each; do printf "  '%s': '%s',\n" "${each#*=}" "$(tr '\n' ' ' <"tests/data/${each%%=*}.txt")"; done
}
data() {
  echo 'const OUTLINES = {'
  entries 'outlines/roman-capital-s-thirds=letter S' 'outlines/roman-g-outer=letter g' \
    'outlines/sans-k-thirds=letter k' 'outlines/italic-f-thirds=letter f' \
    'outlines/italic-ampersand-outer-thirds=letter &' 'outlines/roman-at-thirds=letter @' \
    'outlines/bold-w-ends=letter W' 'outlines/math-infinity-outer=infinity'
  echo '};'
  echo 'const STROKES = {'
  entries 'strokes/pen-waves=pen waves' 'strokes/pen-sweeps=pen sweeps' \
    'strokes/pen-hatching=pen hatching' 'strokes/glyph-script-r=script R' 'strokes/island-malta=Malta'
  echo '};'
  echo 'const RECORDED = ['
  sed "s/^\([^ ]*\) \([^ ]*\) \([^ ]*\) \([^ ]*\)$/  ['\1', \2, \3, '\4'],/" $page/bits.txt
  echo '];'
  printf "const WASM = '%s';\n" "$(gzip -9nc $work/website/play/play.wasm | base64 | tr -d '\n')"
}
# script PART...: without indents and comments that have lines of their own, an eighth of the script.
script() {
  for part; do
    sed -e 's/^ *//' -e '/^\/\//d' -e '/^\/\*\*.*\*\/$/d' -e '/^\/\*\*/,/\*\/$/d' $page/$part.js
  done
}
{
  script library
  data
  script curves stage operations edits state page recorded input
} >$work/script.js
sed -e "/^@STYLE@$/{
r $page/style.css
d
}" -e "/^@SCRIPT@$/{
r $work/script.js
d
}" $page/page.html >"$out/index.html"
say "$out/index.html: $(gzip -9c "$out/index.html" | wc -c) bytes when compressed"
