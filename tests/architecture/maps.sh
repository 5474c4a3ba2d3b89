# The sources keep the rules of the house, and the maps of them are true. From the project's root:
#   sh tests/architecture/maps.sh CTAGS TEST
# where TEST ends in the name of a function below.
set -eu
export LC_ALL=C
here=tests/architecture
ctags=$1
test=${2#*.}
mode=${3:-compare}
tab=$(printf '\t')

fail() {
  printf '%s\n' "$*" >&2
  exit 1
}

# A room includes itself and the floors below.
includes() { awk -f $here/includes.awk crv/*/*.[ch]* crv/*/*/*.h; }

# crv.h brings every public header, once.
umbrella() {
  brought=$(sed -n 's/^#include "\(.*\)"$/\1/p' crv/crv.h)
  odd=$(printf '%s\n' "$brought" crv/export.h crv/*/*.h | sort | uniq -c | grep -v ' 2 ' || :)
  [ -z "$odd" ] || fail "not once in the folders and once in crv.h: $odd"
}

# Types, functions and headings, in the order of files and lines, in the columns of methods.awk.
tags() {
  columns=
  for field in input line kind access scope name signature C++.properties typeref; do
    columns="$columns%{$field}$tab"
  done
  "$ctags" --quiet --options=NONE -x --_xformat="$columns" --sort=no -I CRV_API \
    --language-force=C++ --kinds-C++=cfpst --fields=+aSt --fields-C++=+'{properties}' \
    --regex-C++='/^ *\/\/ ---- ([^ ]+\.cpp)/\1/H,heading/' crv/*/*.[ch]* |
    sort -t "$tab" -k 1,1 -k 2,2n
}

# A heading in a header names the source of what is declared below it; every topic has its heading.
headings() {
  tags | awk -f $here/methods.awk >/dev/null
  for topic in crv/*/*_*.cpp; do
    header=${topic%_*}.h
    grep -q "^ *// ---- ${topic##*/}" "$header" || fail "$header has no heading for $topic"
  done
}

# The pages as they should be: what stands above the tables is theirs.
methods_page() {
  sed '/^|---/q' docs/methods.md
  tags | awk -f $here/methods.awk | sort -s -t '`' -k 2,2f -k 4,4
}
tolerances_page() {
  printf '%s\n' "$(sed '/^## /,$d' docs/tolerances.md)"
  for room in foundation bezier curve positionmap; do
    # shellcheck disable=SC2046  # names without spaces
    awk -f $here/tolerances.awk $(ls crv/$room/*.[ch]* crv/$room/*/*.h 2>/dev/null)
  done
}

# agrees PAGE: is it as it should be? With write behind the test's name, it will be.
agrees() {
  expected=$("$1_page")
  if [ "$mode" = write ]; then
    printf '%s\n' "$expected" >"docs/$1.md"
  elif [ "$expected" != "$(cat "docs/$1.md")" ]; then
    fail "docs/$1.md is not what the sources say; build the target docs. In one of them only:
$(printf '%s\n' "$expected" | sort - "docs/$1.md" | uniq -u)"
  fi
}
methods() { agrees methods; }
tolerances() { agrees tolerances; }

# The README shows the first example line for line.
readme() {
  shown=$(sed -n '/^```cpp$/,/^```$/p' README.md)
  [ "$shown" = "$(printf '```cpp\n%s\n```' "$(cat examples/firstResult.cpp)")" ] ||
    fail "README.md shows another program than examples/firstResult.cpp"
}

# Pages link to files that exist.
links() {
  for page in *.md docs/*.md */data/*.md; do
    # shellcheck disable=SC2013  # links without spaces
    for target in $(grep -oE '(\]\(|src=")[^)"#]+' "$page" | sed 's/^](//; s/^src="//; /:/d'); do
      [ -e "$(dirname "$page")/$target" ] || fail "$page: there is no $target"
    done
  done
}

"$test"
