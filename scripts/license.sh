# Enters the licence that the owner has chosen: sh scripts/license.sh SPDX-IDENTIFIER "YEAR HOLDER"
# The text of the licence stands in LICENSES/SPDX-IDENTIFIER.txt.
set -eu

# rewrite FILE COMMAND...: the file as the command writes it; permissions stay.
rewrite() {
  file=$1
  shift
  "$@" <"$file" >build/rewritten
  cat build/rewritten >"$file"
}

# mark COMMENT PATTERN...: a line at the head of each file, below its interpreter, in place of an older one.
mark() {
  tag="$1 SPDX-License-Identifier: $licence"
  shift
  git ls-files -- "$@" | while read -r source; do
    rewrite "$source" awk -v tag="$tag" '
      NR == 1 && /^#!/ { print; print tag; next }
      NR == 1 { print tag }
      NR < 3 && index($0, " SPDX-License-Identifier: ") { next }
      { print }'
  done
}

# A function is read as a whole before it rewrites this file, too.
main() {
  [ $# = 2 ] || { sed -n 1p "$0"; exit 1; }
  cd "$(dirname "$0")/.."
  licence=$1
  holder=$2
  text=LICENSES/$licence.txt
  [ -s "$text" ] || { echo "put the text of the licence into $text first" >&2; exit 1; }
  find LICENSES -name "*.txt" ! -name "$licence.txt" -delete
  mkdir -p build

  mark // '*.h' '*.cpp'
  mark '#' '*.sh' '*.cmake' '*CMakeLists.txt' '*.py' bench check demo site
  rewrite packaging/vcpkg/crv/vcpkg.json sed "s/\"license\": .*/\"license\": \"$licence\",/"
  rewrite packaging/conan/conanfile.py \
    sed "/^    license = /d; s/^    name = .*/&\n    license = \"$licence\"/"
  rewrite packaging/debian/copyright sed "s/^Copyright: .*/Copyright: $holder/; /^License: /,\$d"
  {
    echo "License: $licence"
    sed 's/^$/./; s/^/ /' "$text"
  } >>packaging/debian/copyright
  # The paragraph under the README's heading.
  rewrite README.md awk -v sentence="Copyright $holder. CRV is under the licence [$licence]($text)." '
    /^## Licence$/ { print; print ""; print sentence; isOld = 1; next }
    isOld && /^$/ && ++blanks == 2 { isOld = 0 }
    !isOld { print }'
  exit
}
main "$@"
