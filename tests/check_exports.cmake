# Compares the dynamic symbols that LIBRARY defines with the functions declared BRINDLE_API
# in HEADER; any difference in either direction fails.
include("${CMAKE_CURRENT_LIST_DIR}/header_exports.cmake")
brindle_header_exports(expected "${HEADER}")

execute_process(COMMAND nm -D --defined-only "${LIBRARY}" OUTPUT_VARIABLE nm_output RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "nm failed on ${LIBRARY}")
endif()
string(REGEX MATCHALL "[0-9a-fA-F]+ [TtDdBbRrVvWwiu] [^\n]+" lines "${nm_output}")
set(actual "")
foreach(line IN LISTS lines)
  string(REGEX REPLACE "^[0-9a-fA-F]+ [A-Za-z] " "" name "${line}")
  # Linker-provided section markers are not exports of ours.
  if(NOT name MATCHES "^(_init|_fini|_edata|_end|__bss_start)$")
    list(APPEND actual ${name})
  endif()
endforeach()
list(SORT actual)

if(NOT "${expected}" STREQUAL "${actual}")
  message(FATAL_ERROR "Exported symbols differ from the header.\n  header: ${expected}\n  library: ${actual}")
endif()
message(STATUS "exports match the header: ${expected}")
