# Builds the bundle for macOS on Debian, for the processor TANDEM_TRIM_PROCESSOR (arm64 or x86_64), with clang, lld and the stand-ins in
# sdk/: our own declarations and library stubs, with only what the sources use. It proves that the sources compile and link for
# macOS. `make macho-package` packs this bundle for Macs without Xcode; the one in the installer package is built on a Mac. An archive has
# objects of one processor only, so each has its own build.
set(CMAKE_SYSTEM_NAME Darwin)
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES TANDEM_TRIM_PROCESSOR)
set(CMAKE_SYSTEM_PROCESSOR ${TANDEM_TRIM_PROCESSOR})
set(CMAKE_OSX_ARCHITECTURES ${TANDEM_TRIM_PROCESSOR})
set(CMAKE_OSX_SYSROOT ${CMAKE_CURRENT_LIST_DIR}/sdk)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(llvm /usr/lib/llvm-19)
set(CMAKE_C_COMPILER ${llvm}/bin/clang)
set(CMAKE_CXX_COMPILER ${llvm}/bin/clang++)
set(CMAKE_OBJCXX_COMPILER ${llvm}/bin/clang++)
set(CMAKE_AR ${llvm}/bin/llvm-ar)
set(CMAKE_RANLIB ${llvm}/bin/llvm-ranlib)
set(CMAKE_INSTALL_NAME_TOOL ${llvm}/bin/llvm-install-name-tool)
foreach(language CXX OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET ${TANDEM_TRIM_PROCESSOR}-apple-macos)
  # The C library's headers are musl's. libc++'s own come first; they say which macOS is the first to have a function.
  string(JOIN " " CMAKE_${language}_FLAGS_INIT -Werror -Wunguarded-availability -nostdinc++ -isystem ${CMAKE_OSX_SYSROOT}/usr/include/c++
    -isystem ${llvm}/include/c++/v1 -idirafter /usr/include/x86_64-linux-musl -D_GNU_SOURCE
    "-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.")
endforeach()
# Without chained fixups llvm-objdump can follow the classes.
set(CMAKE_MODULE_LINKER_FLAGS_INIT "-fuse-ld=lld -Wl,-no_fixup_chains")

set(CMAKE_FIND_ROOT_PATH ${CMAKE_OSX_SYSROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
