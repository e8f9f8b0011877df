#!/bin/sh
# The library alone, built and installed with a C++ compiler and LAPACK, serves programs in C and
# C++ that find it by CMake or by pkg-config; and one that takes it in as a subdirectory.
# usage: consumers.sh PROJECT
set -eu
project=$1
hosts=$project/examples/hosts
consumer=$project/tests/Build/consumer
version=$(sed -n 's/^#define VERENWICK_VERSION "\(.*\)"/\1/p' "$project/include/verenwick.h")
minor=${version%.*}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 1' HUP INT TERM

# quietly COMMAND...: shows what it printed if it fails
quietly() {
  "$@" >"$work/log" 2>&1 || { cat "$work/log"; echo "failed: $*"; exit 1; }
}

# serves WHAT REFUSED RUN: the programs of a consumer do what they should
serves() {
  "$2" | grep -qx "status 0 of version $version"
  rm -rf "$work/results"
  mkdir "$work/results"
  "$3" "$project/examples/two-stroke-ship" input.txt "$work/results" >"$work/torques"
  grep -q '^shaft 9: 6[0-9]\{5\} N m in load case 7$' "$work/torques" ||
    { cat "$work/torques"; echo "wrong torques $1"; exit 1; }
}

without=""
for package in CLI11 fmt nlohmann_json HDF5 PkgConfig GTest benchmark Python3; do
  without="$without -DCMAKE_DISABLE_FIND_PACKAGE_$package=ON"
done
# shellcheck disable=SC2086
quietly cmake -S "$project" -B "$work/library" $without -DCMAKE_UNITY_BUILD=ON \
  -DVERENWICK_BUILD_PROGRAM=OFF -DVERENWICK_BUILD_TESTS=OFF
grep -q '^CMAKE_BUILD_TYPE:STRING=Release$' "$work/library/CMakeCache.txt"
if grep -E '^(CMAKE_(C|Fortran)_COMPILER|NPM|NODE):' "$work/library/CMakeCache.txt"; then
  echo "the library alone looks for more than a C++ compiler"
  exit 1
fi
quietly cmake --build "$work/library" --parallel 2
quietly cmake --install "$work/library" --prefix "$work/first"
mv "$work/first" "$work/prefix" # an installation can be moved

quietly cmake -S "$consumer" -B "$work/by-package" -DHOSTS="$hosts" \
  -DCMAKE_PREFIX_PATH="$work/prefix" -DWANTED="$minor"
quietly cmake --build "$work/by-package"
serves "by find_package" "$work/by-package/refused" "$work/by-package/run"
for other in 0.1 "${minor%.*}.$((${minor#*.} + 1))"; do
  if cmake -S "$consumer" -B "$work/other" -DHOSTS="$hosts" \
    -DCMAKE_PREFIX_PATH="$work/prefix" -DWANTED="$other" >"$work/log" 2>&1; then
    echo "version $version is taken for $other"
    exit 1
  fi
  rm -rf "$work/other"
done

PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name verenwick.pc)")
export PKG_CONFIG_PATH
[ "$(pkg-config --modversion verenwick)" = "$version" ]
# shellcheck disable=SC2046
quietly cc "$consumer/refused.c" $(pkg-config --cflags --libs verenwick) -o "$work/refused"
# shellcheck disable=SC2046
quietly c++ -std=c++20 "$hosts/run.cpp" \
  $(pkg-config --cflags --libs verenwick-results verenwick) -o "$work/run"
LD_LIBRARY_PATH=$(pkg-config --variable=libdir verenwick)
export LD_LIBRARY_PATH
serves "by pkg-config" "$work/refused" "$work/run"
unset LD_LIBRARY_PATH

quietly cmake -S "$consumer" -B "$work/by-subdirectory" -DHOSTS="$hosts" -DSOURCE="$project" \
  -DCMAKE_UNITY_BUILD=ON
for switch in PROGRAM TESTS BENCHMARKS; do
  grep -q "^VERENWICK_BUILD_$switch:BOOL=OFF$" "$work/by-subdirectory/CMakeCache.txt"
done
quietly cmake --build "$work/by-subdirectory" --parallel 2
serves "by add_subdirectory" "$work/by-subdirectory/refused" "$work/by-subdirectory/run"
