# brindle_header_exports(<out-var> <header>): the sorted names of the functions that <header>
# declares with BRINDLE_API. Declarations start a line with BRINDLE_API; the macro's own
# definitions start with '#'.
function(brindle_header_exports out_var header)
  file(READ "${header}" header_text)
  string(REGEX MATCHALL "\nBRINDLE_API[^;(#]*[ *]([A-Za-z_][A-Za-z0-9_]*)[ ]*\\(" declarations "${header_text}")
  set(names "")
  foreach(declaration IN LISTS declarations)
    string(REGEX REPLACE ".*[ *]([A-Za-z_][A-Za-z0-9_]*)[ ]*\\($" "\\1" name "${declaration}")
    list(APPEND names ${name})
  endforeach()
  list(SORT names)
  set(${out_var} "${names}" PARENT_SCOPE)
endfunction()
