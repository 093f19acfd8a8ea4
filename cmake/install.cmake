# What `cmake --install` delivers: headers, both libraries, a CMake package, a pkg-config file, the licence and the
# manual. The paths in the package files are relative to their own place, so an installed tree may be moved,
# unless an absolute folder was asked for.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zivks)

install(TARGETS zivks_base zivk_core EXPORT zivksTargets)
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
install(FILES LICENSE README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${PROJECT_BINARY_DIR}/docs/html DESTINATION ${CMAKE_INSTALL_DOCDIR} OPTIONAL)

install(EXPORT zivksTargets NAMESPACE zivks:: DESTINATION ${package_dir})
configure_package_config_file(cmake/zivksConfig.cmake.in ${PROJECT_BINARY_DIR}/zivksConfig.cmake
  INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zivksConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zivksConfig.cmake ${PROJECT_BINARY_DIR}/zivksConfigVersion.cmake
  DESTINATION ${package_dir})

# The same for pkg-config, whose files have no such helper.
set(pc_prefix ${CMAKE_INSTALL_PREFIX})
if(NOT IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  set(to_prefix /prefix)
  cmake_path(RELATIVE_PATH to_prefix BASE_DIRECTORY /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  set(pc_prefix \${pcfiledir}/${to_prefix})
endif()
set(pc_libdir \${prefix})
cmake_path(APPEND pc_libdir ${CMAKE_INSTALL_LIBDIR})
set(pc_includedir \${prefix})
cmake_path(APPEND pc_includedir ${CMAKE_INSTALL_INCLUDEDIR})
# As in the CMake package, the library of the services must stay although the program refers to none. This is one
# argument, with all that it needs: CMake tears the others from each other.
if(zivks_library_type STREQUAL SHARED)
  set(pc_services -Wl,--push-state,--no-as-needed,-L\${libdir},-lzivk_core,--pop-state)
  set(pc_libm_private -lm)
else()
  set(pc_services -lzivk_core)
  set(pc_libm -lm)
endif()
configure_file(cmake/zivks.pc.in ${PROJECT_BINARY_DIR}/zivks.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zivks.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
