#!/bin/sh
# An installed library serves a C host that finds it by CMake or by pkg-config.
# usage: install.sh BUILD_DIRECTORY HOST_SOURCE_DIRECTORY
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$1" --prefix "$work/prefix" >"$work/install.log"
for file in bash-completion/completions/verenwick zsh/site-functions/_verenwick man/man1/verenwick.1
do
  grep -q verenwick "$work/prefix/share/$file"
done
cmake -G Ninja -S "$2" -B "$work/host" -DCMAKE_PREFIX_PATH="$work/prefix" >"$work/cmake.log"
cmake --build "$work/host" >"$work/build.log"
"$work/host/host"
PKG_CONFIG_PATH=$(dirname "$(find "$work/prefix" -name verenwick.pc)")
export PKG_CONFIG_PATH
# shellcheck disable=SC2046
cc "$2/host.c" $(pkg-config --cflags --libs verenwick) -o "$work/host/by-pkg-config"
LD_LIBRARY_PATH=$(pkg-config --variable=libdir verenwick) "$work/host/by-pkg-config"
