# Headers, both libraries, the command, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS orv_qem orv_serv EXPORT orv-targets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/orv DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/orv)
install(EXPORT orv-targets NAMESPACE orv:: DESTINATION ${config_dir})
configure_package_config_file(cmake/orv-config.cmake.in ${PROJECT_BINARY_DIR}/orv-config.cmake
  INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/orv-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/orv-config.cmake
  ${PROJECT_BINARY_DIR}/orv-config-version.cmake DESTINATION ${config_dir})

configure_file(cmake/orv.pc.in ${PROJECT_BINARY_DIR}/orv.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orv.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
