# Checks a Windows DLL with `objdump -p` (OBJDUMP, defaults to the MinGW-w64 one):
#  - its export table names exactly the functions declared BRINDLE_API in HEADER;
#  - it imports no MinGW runtime DLL (libstdc++, libgcc, libwinpthread all start with "lib"),
#    so the host can load it with nothing beside it;
#  - it imports every DLL named in REQUIRED_IMPORTS (the shared openNURBS it links).
include("${CMAKE_CURRENT_LIST_DIR}/header_exports.cmake")
brindle_header_exports(expected "${HEADER}")
if(NOT OBJDUMP)
  set(OBJDUMP x86_64-w64-mingw32-objdump)
endif()

execute_process(COMMAND "${OBJDUMP}" -p "${LIBRARY}" OUTPUT_VARIABLE dump RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "${OBJDUMP} -p failed on ${LIBRARY}")
endif()

# The names follow the "[Ordinal/Name Pointer] Table" heading, one "[   n] name" line each.
set(actual "")
string(FIND "${dump}" "[Ordinal/Name Pointer] Table" table_start)
if(table_start GREATER_EQUAL 0)
  string(SUBSTRING "${dump}" ${table_start} -1 table)
  string(REGEX MATCHALL "\n[\t ]+\\[ *[0-9]+\\] [^\n]+" rows "${table}")
  foreach(row IN LISTS rows)
    string(REGEX REPLACE "^\n[\t ]+\\[ *[0-9]+\\] " "" name "${row}")
    list(APPEND actual ${name})
  endforeach()
endif()
list(SORT actual)

string(REGEX MATCHALL "DLL Name: [^\n]+" import_lines "${dump}")
set(imports "")
set(runtime_imports "")
foreach(line IN LISTS import_lines)
  string(REPLACE "DLL Name: " "" dll "${line}")
  list(APPEND imports ${dll})
  string(TOLOWER "${dll}" dll_lower)
  if(dll_lower MATCHES "^lib")
    list(APPEND runtime_imports ${dll})
  endif()
endforeach()

if(NOT "${expected}" STREQUAL "${actual}")
  message(FATAL_ERROR "DLL exports differ from the header.\n  header: ${expected}\n  dll: ${actual}")
endif()
foreach(required IN LISTS REQUIRED_IMPORTS)
  if(NOT required IN_LIST imports)
    message(FATAL_ERROR "${LIBRARY} does not import ${required}; it imports: ${imports}")
  endif()
endforeach()
if(runtime_imports)
  message(FATAL_ERROR "${LIBRARY} needs MinGW runtime DLLs beside it: ${runtime_imports}")
endif()
message(STATUS "DLL exports match the header: ${expected}")
message(STATUS "DLL imports only system libraries and ${REQUIRED_IMPORTS}: ${imports}")
