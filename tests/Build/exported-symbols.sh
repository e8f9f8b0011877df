#!/bin/sh
# The shared library exports its five entries and nothing else.
# usage: exported-symbols.sh LIBRARY
set -eu
expected="CALCULATETANGENTIALRADIALFORCE
CYLINDERPRESSURETOHARMONIC
OSCILLATINGMASSFOURIERCOEFFICIENTS
THEORETICALCYLINDERPRESSURE
VERENWICKSOLVER"
exported=$(nm -D --defined-only "$1" | awk '{ print $3 }' | LC_ALL=C sort)
if [ "$exported" != "$expected" ]; then
  printf 'exported:\n%s\nexpected:\n%s\n' "$exported" "$expected"
  exit 1
fi
