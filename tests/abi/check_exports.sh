#!/bin/sh
# The shared library must export the C API and nothing else.
lib="$1"
bad=$(nm -D --defined-only "$lib" | awk '{print $3}' | grep -v -E '^(zelDual_.*|GB2312ToUTF8|UnicodeToUTF8|UnicodeToUTF8_V2)$' | grep -v -E '^ZEL_SDK_DUAL_[0-9.]*$|^$')
if [ -n "$bad" ]; then
  echo "symbols that should not be exported:"
  echo "$bad"
  exit 1
fi
count=$(nm -D --defined-only "$lib" | grep -c ' T zelDual_')
echo "exported zelDual_ functions: $count"
[ "$count" -gt 0 ]
