# Checks the subsystem layering in the sources, beyond what the include paths enforce:
#  - in src/<name>/, tests/<name>/ and bench/<name>_*.cpp every #include "<subsystem>/..." names
#    <name> itself or a subsystem <name> declares;
#  - no include there (nor anywhere in bench/) climbs out of its folder with "../", and no
#    benchmark includes test code.
# Every violation is printed as file:line; the check fails if there is any.
#
#   cmake -DSOURCE=<project source dir> -DGRAPH=<name>=<dep>+<dep>|<name>=... -P check_layering.cmake
cmake_minimum_required(VERSION 3.25)
if(NOT SOURCE OR NOT GRAPH)
  message(FATAL_ERROR "usage: cmake -DSOURCE=<dir> -DGRAPH=<name>=<dep>+...|... -P check_layering.cmake")
endif()

string(REPLACE "|" ";" _entries "${GRAPH}")
set(_subsystems "")
foreach(_entry IN LISTS _entries)
  string(REGEX MATCH "^([a-z0-9_]+)=(.*)$" _ "${_entry}")
  set(_name ${CMAKE_MATCH_1})
  string(REPLACE "+" ";" _dependencies "${CMAKE_MATCH_2}")
  list(APPEND _subsystems ${_name})
  set(_allowed_${_name} ${_name} ${_dependencies})
endforeach()

set(_violations 0)

function(_report file line text)
  file(RELATIVE_PATH _shown ${SOURCE} ${file})
  message("${_shown}:${line}: ${text}")
  math(EXPR _count "${_violations} + 1")
  set(_violations ${_count} PARENT_SCOPE)
endfunction()

# Checks the includes of one file. owner: the subsystem whose rules apply, or empty.
function(_check_file file owner is_bench)
  file(READ ${file} _content)
  # One list element per line: characters that CMake's list syntax gives a meaning are masked.
  string(REPLACE "\\" "/" _content "${_content}")
  string(REPLACE ";" "," _content "${_content}")
  string(REPLACE "[" "(" _content "${_content}")
  string(REPLACE "]" ")" _content "${_content}")
  string(REPLACE "\n" ";" _lines "${_content}")
  set(_number 0)
  foreach(_line IN LISTS _lines)
    math(EXPR _number "${_number} + 1")
    if(NOT _line MATCHES "^[ \t]*#[ \t]*include[ \t]*[\"<]([^\">]+)[\">]")
      continue()
    endif()
    set(_path ${CMAKE_MATCH_1})
    if(is_bench AND _path MATCHES "(^|/)tests/")
      _report(${file} ${_number} "#include \"${_path}\": benchmarks do not include test code")
    elseif(_path MATCHES "(^|/)\\.\\./")
      _report(${file} ${_number} "#include \"${_path}\" climbs out of its folder")
    elseif(owner AND _path MATCHES "^([a-z0-9_]+)/")
      set(_included ${CMAKE_MATCH_1})
      if(_included IN_LIST _subsystems AND NOT _included IN_LIST _allowed_${owner})
        _report(${file} ${_number}
                "#include \"${_path}\": ${owner} does not depend on ${_included}")
      endif()
    endif()
  endforeach()
  set(_violations ${_violations} PARENT_SCOPE)
endfunction()

set(_checked 0)
foreach(_name IN LISTS _subsystems)
  file(GLOB_RECURSE _files ${SOURCE}/src/${_name}/*.h ${SOURCE}/src/${_name}/*.cpp
                           ${SOURCE}/tests/${_name}/*.h ${SOURCE}/tests/${_name}/*.cpp)
  foreach(_file IN LISTS _files)
    _check_file(${_file} ${_name} FALSE)
    math(EXPR _checked "${_checked} + 1")
  endforeach()
endforeach()

file(GLOB_RECURSE _bench_files ${SOURCE}/bench/*.h ${SOURCE}/bench/*.cpp)
foreach(_file IN LISTS _bench_files)
  set(_owner "")
  get_filename_component(_file_name ${_file} NAME)
  if(_file_name MATCHES "^([a-z0-9]+)_" AND CMAKE_MATCH_1 IN_LIST _subsystems)
    set(_owner ${CMAKE_MATCH_1})
  endif()
  _check_file(${_file} "${_owner}" TRUE)
  math(EXPR _checked "${_checked} + 1")
endforeach()

if(_violations GREATER 0)
  message(FATAL_ERROR "${_violations} include(s) break the layering (${_checked} files checked)")
endif()
message(STATUS "Layering: ${_checked} files checked, every include allowed")
