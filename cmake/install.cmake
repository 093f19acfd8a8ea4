# What `cmake --install` delivers: headers, both libraries, a CMake package and a pkg-config file. All paths in
# the package files are relative to their own place, so an installed tree may be moved.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zivks)
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS zivks_base zivk_core EXPORT zivksTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")

install(EXPORT zivksTargets NAMESPACE zivks:: DESTINATION ${package_dir})
configure_package_config_file(cmake/zivksConfig.cmake.in ${PROJECT_BINARY_DIR}/zivksConfig.cmake
  INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zivksConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zivksConfig.cmake ${PROJECT_BINARY_DIR}/zivksConfigVersion.cmake
  DESTINATION ${package_dir})

file(RELATIVE_PATH pkgconfig_to_prefix /prefix/${pkgconfig_dir} /prefix)
configure_file(cmake/zivks.pc.in ${PROJECT_BINARY_DIR}/zivks.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zivks.pc DESTINATION ${pkgconfig_dir})
