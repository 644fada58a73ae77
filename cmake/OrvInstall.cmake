# Headers, the libraries, a CMake package and a pkg-config file. The command installs itself.
# Everything finds its neighbours from its own place: an installed tree can be moved.
include(CMakePackageConfigHelpers)

set_target_properties(orv_qem PROPERTIES INSTALL_RPATH "\$ORIGIN")
install(TARGETS orv_qem orv_serv orv_threads orv_cpp EXPORT orv-targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/orv DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES LICENSE README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/orv)
install(EXPORT orv-targets NAMESPACE orv:: DESTINATION ${config_dir})
configure_package_config_file(cmake/orv-config.cmake.in ${PROJECT_BINARY_DIR}/orv-config.cmake
  INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/orv-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/orv-config.cmake
  ${PROJECT_BINARY_DIR}/orv-config-version.cmake DESTINATION ${config_dir})

set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH ORV_PREFIX_FROM_PC /prefix/${pc_dir} /prefix)
string(REGEX REPLACE "/$" "" ORV_PREFIX_FROM_PC ${ORV_PREFIX_FROM_PC})
configure_file(cmake/orv.pc.in ${PROJECT_BINARY_DIR}/orv.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orv.pc DESTINATION ${pc_dir})
