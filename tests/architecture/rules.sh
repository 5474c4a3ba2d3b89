# The rules of the house that a script can read. From the project's root:
#   sh tests/architecture/rules.sh RULE
# where RULE is the name of a function below. What a rule prints is what breaks it.
set -eu
export LC_ALL=C

# A room includes itself and the floors below.
includes() { awk -f tests/architecture/includes.awk crv/*/*.[ch]* crv/*/*/*.[ch]*; }

# Headings in headers name the sources.
headings() { awk -f tests/architecture/headings.awk crv/*/*.h crv/*/*.cpp; }

# crv.h brings every public header, once.
umbrella() {
  { sed -n 's/^#include "\(.*\)"$/\1/p' crv/crv.h && ls crv/export.h crv/svg.h crv/*/*.h; } | sort | uniq -c |
    grep -v '^ *2 ' || :
}

# The README shows the first example line for line.
readme() {
  awk '/^```cpp$/ { shown = 1; next } /^```$/ { shown = 0 } shown' README.md |
    diff - examples/firstResult.cpp
}

# Pages link to files that exist.
links() {
  grep -oE '(\]\(|src=")[^)"#:]+[)"#]' ./*.md ./*/*.md ./*/data/*.md docs/guide/*.md | while IFS= read -r link; do
    target=${link#*[(\"]}
    [ -e "$(dirname "${link%%:*}")/${target%?}" ] || printf '%s\n' "$link"
  done
}

# Every name that the guide offers in place of another library's stands in a public header.
names() {
  awk -F'|' 'NF > 4 { print $3 }' docs/guide/porting.md | grep -oE '`[^`]+`' |
    grep -oE '[A-Za-z][A-Za-z0-9]*' | sort -u | while IFS= read -r name; do
    grep -qw -- "$name" crv/*.h crv/*/*.h || printf 'porting.md: %s\n' "$name"
  done
}

broken=$("$1") || [ -n "$broken" ] || broken="$1 failed"
[ -z "$broken" ] || { printf '%s\n' "$broken" >&2 && exit 1; }
