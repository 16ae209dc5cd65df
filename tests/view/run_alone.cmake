# Runs PROGRAM. Fails if it needs shared libraries other than the C and C++ run time and a sanitizer's.
execute_process(COMMAND ${PROGRAM} COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ldd ${PROGRAM} OUTPUT_VARIABLE libraries COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[^\n]+" libraries "${libraries}")
foreach(library IN LISTS libraries)
  if(NOT library MATCHES "linux-vdso|ld-linux|/lib(c|m|gcc_s|stdc\\+\\+|asan|ubsan)\\.so")
    message(FATAL_ERROR "${PROGRAM} needs ${library}")
  endif()
endforeach()
