# The short examples compile against the installed package without a warning in every mode that a host
# may choose, and run: sh programs.sh COMPILER PREFIX LIBDIR
set -eu
program=$(mktemp)
trap 'rm -f "$program"' EXIT
for source in examples/short/*.cpp; do
  for standard in c++17 c++20 c++2b; do
    for forbidden in "" -fno-exceptions -fno-rtti; do
      # Unquoted: an option or none.
      "$1" -std=$standard $forbidden -Wall -Wextra -Wconversion -Wshadow -pedantic -Werror \
        -I"$2/include" -fsyntax-only "$source"
    done
  done
  "$1" -std=c++17 -I"$2/include" "$source" -o "$program" -L"$2/$3" -lCRV -Wl,-rpath,"$2/$3"
  "$program" >/dev/null || { echo "$source fails"; exit 1; }
done
