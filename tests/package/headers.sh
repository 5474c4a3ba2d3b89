# Headers give a host no warning, whatever it forbids: sh headers.sh COMPILER
set -eu
program='#define min(a, b) a host has such macros
#define max(a, b) a host has such macros
#include "crv/crv.h"
#include "crv/io.h"
int main() {}'
for standard in c++17 c++20 c++2b; do
  for forbidden in "" "-fno-exceptions -fno-rtti -DCRV_NO_GLOBAL_NAMES"; do
    # Unquoted: the options are words.
    printf '%s\n' "$program" | "$1" -x c++ -std=$standard $forbidden -Wall -Wextra -Wconversion \
      -Wshadow -pedantic -Werror -I. -fsyntax-only -
  done
done
