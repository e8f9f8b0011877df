#!/bin/sh
# What an installation holds beside the library: the program, its completion and its manual page.
# usage: install.sh BUILD_DIRECTORY
set -eu
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
trap 'exit 1' HUP INT TERM
cmake --install "$1" --prefix "$prefix" >/dev/null
for file in bash-completion/completions/verenwick zsh/site-functions/_verenwick man/man1/verenwick.1
do
  grep -q verenwick "$prefix/share/$file"
done
"$prefix/bin/verenwick" --version | grep -q '^verenwick [0-9.]*$'
