#!/usr/bin/env bash
# Builds the bundle for each processor of a Mac with the toolchain beside this file, and joins them in build/macho/TandemTrim.bundle.
# The bundle is not signed as a whole, and its nib is built in as code, since only a Mac has the compiler for nibs; see docs/macos.md.
set -euo pipefail
cd "$(dirname "$0")/../.."
export PATH=$PWD/cmake/macos/bin:$PATH

processors=(arm64 x86_64) slices=()
for processor in "${processors[@]}"; do
  # Release, since debugging information would contain paths of this machine.
  cmake -G Ninja -S . -B "build/macho/$processor" --log-level=WARNING --toolchain cmake/macos/toolchain.cmake \
    -DTANDEM_TRIM_PROCESSOR="$processor" -DCMAKE_BUILD_TYPE=Release -DTANDEM_TRIM_TESTS=OFF -DTANDEM_TRIM_GTK=OFF -DTANDEM_TRIM_APPKIT=ON \
    -DTANDEM_TRIM_NIB_IN_CODE=ON
  cmake --build "build/macho/$processor" --target all tandemtrim_appkit_nib_file
  slices+=("build/macho/$processor/TandemTrim.bundle/Contents/MacOS/TandemTrim")
done
bundle=build/macho/TandemTrim.bundle
rm -rf "$bundle"
cp -R "build/macho/${processors[0]}/TandemTrim.bundle" "$bundle"
/usr/lib/llvm-19/bin/llvm-lipo -create "${slices[@]}" -output "$bundle/Contents/MacOS/TandemTrim"
