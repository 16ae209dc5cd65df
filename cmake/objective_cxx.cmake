# Objective-C++ for adapters/appkit: Apple's own compiler and frameworks, elsewhere clang and GNUstep. Defines tandemtrim_toolkit.
add_library(tandemtrim_toolkit INTERFACE)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_VISIBILITY_PRESET hidden)

# Call it in folders whose sources are Objective-C++, to precompile headers for that language.
macro(tandemtrim_precompile_objective_cxx)
  if(NOT APPLE)
    set(CMAKE_PCH_EXTENSION ${objcxx_pch_extension})
    set(CMAKE_PCH_PROLOGUE ${objcxx_pch_prologue})
  endif()
endmacro()

if(APPLE)
  enable_language(OBJCXX)
  # The extension's interface is declared in a framework inside another.
  execute_process(COMMAND xcrun --sdk macosx --show-sdk-path
    OUTPUT_VARIABLE sdk OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  target_compile_options(tandemtrim_toolkit INTERFACE
    "-iframework${sdk}/System/Library/Frameworks/ApplicationServices.framework/Frameworks")
  target_link_libraries(tandemtrim_toolkit INTERFACE "-framework Cocoa" "-framework ApplicationServices")
  return()
endif()

# clang for Objective-C++ alone: g++'s crashes at a typed @catch and constructs no C++ instance variables.
find_program(TANDEM_TRIM_OBJCXX clang++ REQUIRED)
set(CMAKE_OBJCXX_COMPILER ${TANDEM_TRIM_OBJCXX})
# CMake precompiles headers for the language that is enabled last.
set(cxx_pch_extension ${CMAKE_PCH_EXTENSION})
set(cxx_pch_prologue ${CMAKE_PCH_PROLOGUE})
enable_language(OBJCXX)
set(objcxx_pch_extension ${CMAKE_PCH_EXTENSION})
set(objcxx_pch_prologue ${CMAKE_PCH_PROLOGUE})
set(CMAKE_PCH_EXTENSION ${cxx_pch_extension})
set(CMAKE_PCH_PROLOGUE ${cxx_pch_prologue})

find_path(GNUSTEP_HEADERS AppKit/AppKit.h PATH_SUFFIXES GNUstep REQUIRED)
find_library(GNUSTEP_GUI gnustep-gui REQUIRED)
find_library(GNUSTEP_BASE gnustep-base REQUIRED)
# The runtime comes with gcc; the rest of gcc's folder of headers must not hide clang's own.
find_program(TANDEM_TRIM_GCC g++ REQUIRED)
execute_process(COMMAND ${TANDEM_TRIM_GCC} -print-file-name=include
  OUTPUT_VARIABLE gcc_headers OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND ${TANDEM_TRIM_GCC} -print-file-name=libobjc.so
  OUTPUT_VARIABLE objc_runtime OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT EXISTS ${gcc_headers}/objc/runtime.h OR NOT EXISTS ${objc_runtime})
  message(FATAL_ERROR "gcc's runtime for Objective-C is missing (libobjc-12-dev on Debian 12)")
endif()
set(objc_headers ${PROJECT_BINARY_DIR}/objc-headers)
file(MAKE_DIRECTORY ${objc_headers})
file(CREATE_LINK ${gcc_headers}/objc ${objc_headers}/objc SYMBOLIC)

target_include_directories(tandemtrim_toolkit SYSTEM INTERFACE ${GNUSTEP_HEADERS} ${objc_headers})
target_compile_definitions(tandemtrim_toolkit INTERFACE
  GNUSTEP=1 GNUSTEP_BASE_LIBRARY=1 GNU_GUI_LIBRARY=1 GNU_RUNTIME=1 _NATIVE_OBJC_EXCEPTIONS)
target_compile_options(tandemtrim_toolkit INTERFACE $<$<COMPILE_LANGUAGE:OBJCXX>:
  -fobjc-runtime=gcc -fexceptions -fobjc-exceptions -fconstant-string-class=NSConstantString
  -Werror=objc-property-implementation>)
target_link_libraries(tandemtrim_toolkit INTERFACE ${GNUSTEP_GUI} ${GNUSTEP_BASE} ${objc_runtime})
