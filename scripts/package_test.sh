#!/usr/bin/env bash
# Builds the Debian package from a built tree (default build/), unpacks it into a scratch root
# and builds the consumer project against what it installed, through the CMake package and
# through pkg-config, then runs the consumers and the packaged zelctl.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath "${1:-build}")
root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT

(cd "$build" && cpack -G DEB >/dev/null)
deb=$(ls "$build"/package/zel-sdk-dual_*.deb)
dpkg-deb -x "$deb" "$root"
echo "package: $(basename "$deb")"
dpkg-deb -c "$deb" | awk '{print $6}' | grep -E 'bin/|\.so|\.h$|\.pc$|Config\.cmake$|man1/' | sed 's/^/  /'

prefix="$root/usr"
pcdir=$(dirname "$(find "$prefix" -name zel_sdk_dual.pc)")
libdir=$(dirname "$(find "$prefix" -name 'libzel_sdk_dual.so' | head -n 1)")
PKG_CONFIG_PATH="$pcdir" cmake -S tests/install/consumer -B "$root/consumer" -G Ninja \
  -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_RPATH="$libdir" >/dev/null
cmake --build "$root/consumer" >/dev/null
"$root/consumer/consumer_cmake" >/dev/null
"$root/consumer/consumer_pkgconfig" >/dev/null
LD_LIBRARY_PATH="$libdir" "$prefix/bin/zelctl" --version
MANPATH="$prefix/share/man" man -w zelctl >/dev/null 2>&1 || test -f "$prefix/share/man/man1/zelctl.1"
echo "the consumer project built against the package, both ways"
