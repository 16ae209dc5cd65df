# Fails unless FUNCTION is the only symbol that MODULE exports. NM is the nm program, which lists the exported symbols.
execute_process(COMMAND ${NM} --dynamic --defined-only --format=just-symbols ${MODULE}
  OUTPUT_VARIABLE exported OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
if(NOT exported STREQUAL FUNCTION)
  message(FATAL_ERROR "${MODULE} exports: ${exported}")
endif()
