# Installation: the public header, the shared library with its CMake package (imported target
# brindle::brindle) and its pkg-config file, and the openNURBS subset when it is the openNURBS in
# use. With a real openNURBS SDK the package records where that SDK was found.
include(CMakePackageConfigHelpers)

set(BRINDLE_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/brindle)

install(TARGETS brindle EXPORT brindleTargets
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(FILES ${PROJECT_SOURCE_DIR}/include/brindle.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

if(BRINDLE_OPENNURBS_SUBSET)
  install(TARGETS brindle_opennurbs EXPORT brindleTargets
          RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
          LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
          ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/compat/opennurbs/include/
          DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/brindle/opennurbs)
  set(BRINDLE_PC_CFLAGS "-I\${includedir}/brindle/opennurbs -DOPENNURBS_IMPORTS")
  set(BRINDLE_PC_LIBS "-lbrindle_opennurbs")
else()
  set(BRINDLE_PC_CFLAGS "-I${BRINDLE_OPENNURBS_INCLUDE_DIR} -DOPENNURBS_IMPORTS")
  set(BRINDLE_PC_LIBS "${BRINDLE_OPENNURBS_LIBRARY}")
endif()

install(EXPORT brindleTargets NAMESPACE brindle:: DESTINATION ${BRINDLE_INSTALL_CMAKEDIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/brindleConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/brindleConfig.cmake
                              INSTALL_DESTINATION ${BRINDLE_INSTALL_CMAKEDIR})
# The C exports keep their ABI within a major version, as the SONAME says.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/brindleConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/brindleConfig.cmake ${PROJECT_BINARY_DIR}/brindleConfigVersion.cmake
        DESTINATION ${BRINDLE_INSTALL_CMAKEDIR})

# The prefix is found from the .pc file's own place, so an installed tree can be moved.
file(RELATIVE_PATH BRINDLE_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(${CMAKE_CURRENT_LIST_DIR}/brindle.pc.in ${PROJECT_BINARY_DIR}/brindle.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/brindle.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
