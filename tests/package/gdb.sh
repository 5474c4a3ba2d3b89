# gdb shows the values of a program that uses the installed library: sh gdb.sh COMPILER PREFIX LIBDIR
set -eu
here=tests/package
program=$(mktemp)
trap 'rm -f "$program" "$program.txt"' EXIT
"$1" -std=c++17 -g -O0 -I"$2/include" $here/debugged.cpp -o "$program" -L"$2/$3" -lCRV -Wl,-rpath,"$2/$3"
gdb -batch -nx -iex "add-auto-load-safe-path $2" \
  -iex "add-auto-load-scripts-directory $2/share/gdb/auto-load" \
  -ex "break $(grep -n 'break here' $here/debugged.cpp | cut -d: -f1)" -ex run \
  -ex 'print p' -ex 'print v' -ex 'print position' -ex 'print list' -ex 'print curve' \
  -ex 'print none' "$program" >"$program.txt" 2>&1 || { cat "$program.txt"; exit 1; }
grep '^\$' "$program.txt" | diff $here/debugged.txt - || { cat "$program.txt"; exit 1; }
