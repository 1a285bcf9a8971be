#!/bin/sh
# Installs the built library into a temporary prefix, builds and runs a host project that finds
# it through the CMake package and through pkg-config, and builds the examples, a project of
# their own, against the same prefix.
set -eu
build_dir="$1"
source_dir="$2"
examples_dir="$3"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build_dir" --prefix "$work/prefix" >/dev/null
PKG_CONFIG_PATH="$work/prefix/lib/pkgconfig" cmake -S "$source_dir" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/prefix" \
  -DCMAKE_BUILD_RPATH="$work/prefix/lib" >/dev/null

cmake --build "$work/build" >/dev/null
LD_LIBRARY_PATH="$work/prefix/lib" "$work/build/consumer_cmake"
LD_LIBRARY_PATH="$work/prefix/lib" "$work/build/consumer_pkgconfig"

cmake -S "$examples_dir" -B "$work/examples" -DCMAKE_PREFIX_PATH="$work/prefix" >/dev/null
cmake --build "$work/examples" >/dev/null
echo "examples built against the installed package"
