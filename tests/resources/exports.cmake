# Fails unless MODULE exports the one function FUNCTION. NM is the tool that lists what it exports.
execute_process(COMMAND ${NM} --dynamic --defined-only --format=just-symbols ${MODULE}
  OUTPUT_VARIABLE exported OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
if(NOT exported STREQUAL FUNCTION)
  message(FATAL_ERROR "${MODULE} exports: ${exported}")
endif()
