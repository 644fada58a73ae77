# SPDX-License-Identifier: MIT
# Headers, the libraries, a CMake package, a pkg-config file and documents, each in its component:
# library, development, command (cli/), documentation. Everything finds its neighbours from its own
# place: an installed tree can be moved.
include(CMakePackageConfigHelpers)

set_target_properties(orv_qem PROPERTIES INSTALL_RPATH "\$ORIGIN")
install(TARGETS orv_qem orv_serv orv_threads orv_cpp EXPORT orv-targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development)
install(DIRECTORY include/orv DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)

set(config_dir ${CMAKE_INSTALL_LIBDIR}/cmake/orv)
install(EXPORT orv-targets NAMESPACE orv:: DESTINATION ${config_dir} COMPONENT development)
configure_package_config_file(cmake/orv-config.cmake.in ${PROJECT_BINARY_DIR}/orv-config.cmake
  INSTALL_DESTINATION ${config_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/orv-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/orv-config.cmake
  ${PROJECT_BINARY_DIR}/orv-config-version.cmake DESTINATION ${config_dir} COMPONENT development)

# The pkg-config file stands below the library folder. A folder that was given as an absolute one is not
# below the prefix, and stays where it was told.
set(pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  set(ORV_PC_PREFIX ${CMAKE_INSTALL_PREFIX})
else()
  file(RELATIVE_PATH up /prefix/${pc_dir} /prefix)
  string(REGEX REPLACE "/$" "" up ${up})
  set(ORV_PC_PREFIX "\${pcfiledir}/${up}")
endif()
foreach(kind LIB INCLUDE)
  set(ORV_PC_${kind}DIR ${CMAKE_INSTALL_${kind}DIR})
  if(NOT IS_ABSOLUTE ${ORV_PC_${kind}DIR})
    set(ORV_PC_${kind}DIR "\${prefix}/${ORV_PC_${kind}DIR}")
  endif()
endforeach()
configure_file(cmake/orv.pc.in ${PROJECT_BINARY_DIR}/orv.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/orv.pc DESTINATION ${pc_dir} COMPONENT development)

install(FILES LICENSE README.md CHANGELOG.md CONTRIBUTING.md DESTINATION ${CMAKE_INSTALL_DOCDIR}
  COMPONENT documentation)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)

# The target `uninstall` takes away what `cmake --install` put in place. That is recorded here: CMake's
# own manifests would also name what CPack has only staged.
install(CODE "
  if(NOT DEFINED ENV{DESTDIR})
    list(JOIN CMAKE_INSTALL_MANIFEST_FILES \"\\n\" files)
    file(APPEND ${PROJECT_BINARY_DIR}/installed.txt \"\${files}\\n\")
  endif()" ALL_COMPONENTS)
configure_file(cmake/uninstall.cmake.in ${PROJECT_BINARY_DIR}/uninstall.cmake @ONLY)
add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} -P ${PROJECT_BINARY_DIR}/uninstall.cmake)
