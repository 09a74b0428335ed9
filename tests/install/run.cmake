# Installs the build tree BUILD into a fresh prefix under WORK, then builds and runs two programs
# against that prefix only: one with find_package(brindle), one with pkg-config's flags.
#   cmake -DBUILD=<build tree> -DWORK=<scratch dir> -DSOURCE=<this directory>
#         -DCXX=<C++ compiler> -DCC=<C compiler> -DLIBDIR=<lib dir name>
#         -DSUBSET=<ON when the bundled openNURBS is installed too>
#         -DDEPENDENCY_PATH=<directories of a real openNURBS or shared MMG, :-separated>
#         -P run.cmake
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    string(REPLACE ";" " " command "${ARGV}")
    message(FATAL_ERROR "${command} failed (${rc}):\n${out}\n${err}")
  endif()
  set(run_output "${out}" PARENT_SCOPE)
endfunction()

set(prefix ${WORK}/prefix)
# The installed library carries no run path; real dependencies live outside the prefix.
set(ENV{LD_LIBRARY_PATH} "${prefix}/${LIBDIR}:${DEPENDENCY_PATH}")
set(link_flags "")
if(DEPENDENCY_PATH)
  set(link_flags "-Wl,-rpath-link,${DEPENDENCY_PATH}")
endif()
file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})

set(expected include/brindle.h ${LIBDIR}/libbrindle.so.0 ${LIBDIR}/cmake/brindle/brindleConfig.cmake
    ${LIBDIR}/cmake/brindle/brindleConfigVersion.cmake ${LIBDIR}/pkgconfig/brindle.pc)
if(SUBSET)
  list(APPEND expected include/brindle/opennurbs/opennurbs.h ${LIBDIR}/libbrindle_opennurbs.so.0)
endif()
foreach(file IN LISTS expected)
  if(NOT EXISTS ${prefix}/${file})
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()

# find_package(brindle) and the imported target brindle::brindle.
run(${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK}/cmake-consumer -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_BUILD_TYPE=Release "-DCMAKE_EXE_LINKER_FLAGS=${link_flags}")
run(${CMAKE_COMMAND} --build ${WORK}/cmake-consumer)
run(${WORK}/cmake-consumer/consumer)
message(STATUS "find_package consumer: ${run_output}")

# pkg-config, with nothing but the installed prefix on its search path.
find_program(PKG_CONFIG NAMES pkg-config pkgconf REQUIRED)
set(ENV{PKG_CONFIG_PATH} ${prefix}/${LIBDIR}/pkgconfig)
set(ENV{PKG_CONFIG_LIBDIR} ${prefix}/${LIBDIR}/pkgconfig)
run(${PKG_CONFIG} --cflags --libs brindle)
string(STRIP "${run_output}" flags)
separate_arguments(flags UNIX_COMMAND "${flags}")
run(${CC} -std=c99 -Wall -Wextra -pedantic -Werror ${SOURCE}/consumer.c ${flags}
    ${link_flags} -o ${WORK}/pkg-config-consumer)
run(${WORK}/pkg-config-consumer)
message(STATUS "pkg-config consumer: ${run_output}")
