# Cross-compiles for 64-bit Windows with the MinGW-w64 toolchain of a Debian-like build machine
# (packages g++-mingw-w64-x86-64 and binutils-mingw-w64-x86-64).
#
# The posix-threads compiler variant is used because the library relies on std::thread and
# std::async. Everything the compiler brings (libgcc, libstdc++, winpthread) is linked statically,
# so brindle.dll and the test programs need no MinGW runtime DLL beside them.
#
# Packages are searched only under the MinGW sysroot. Eigen is header-only, so the build
# machine's copy can be used: pass -DEigen3_DIR=/usr/share/eigen3/cmake (and GTest_DIR for a
# GoogleTest built with this toolchain); tools/build-windows.sh does both.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(BRINDLE_MINGW_TRIPLE x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${BRINDLE_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${BRINDLE_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${BRINDLE_MINGW_TRIPLE}-windres)
set(CMAKE_OBJDUMP ${BRINDLE_MINGW_TRIPLE}-objdump)

set(CMAKE_FIND_ROOT_PATH /usr/${BRINDLE_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")

# Find modules that report libraries by full path (FindOpenMP) would pick the import library of
# a runtime DLL, which "-static" cannot turn back into a static one; point them at the archives.
foreach(_runtime_library gomp)
  if(NOT DEFINED OpenMP_${_runtime_library}_LIBRARY)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=lib${_runtime_library}.a
                    OUTPUT_VARIABLE _archive OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(IS_ABSOLUTE "${_archive}")
      set(OpenMP_${_runtime_library}_LIBRARY "${_archive}" CACHE FILEPATH "Static lib${_runtime_library} for MinGW")
    endif()
  endif()
endforeach()
