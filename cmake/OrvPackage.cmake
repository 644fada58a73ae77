# SPDX-License-Identifier: MIT
# Debian packages, one a component: `cpack --config build/x86-64/CPackConfig.cmake`, or scripts/package
# for both word sizes.
set(ORV_MAINTAINER "The ORV authors <orv@localhost>" CACHE STRING
  "Who makes the packages: a name and an address")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_CONTACT ${ORV_MAINTAINER})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL library development documentation)
if(ORV_BUILD_CLI)
  list(APPEND CPACK_COMPONENTS_ALL command)
endif()
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE orv)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE amd64)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE i386)
endif()
set(same_version "(= ${PROJECT_VERSION})")
set(library liborv${PROJECT_VERSION_MAJOR})

# What packages need beyond each other is read off their files.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
function(orv_debian_package component name section summary text)
  string(TOUPPER ${component} key)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_DESCRIPTION "vector math, random numbers and statistics - ${summary}
ORV computes functions of whole vectors at three levels of accuracy, makes
random numbers from ten families of generators, and summary statistics of
tables, on processors with AVX.
.
${text}" PARENT_SCOPE)
endfunction()

orv_debian_package(library ${library} libs "library" "This package has the shared libraries.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_RECOMMENDS libopenblas0-openmp)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
  "${PROJECT_BINARY_DIR}/deb/shlibs;${PROJECT_SOURCE_DIR}/cmake/deb/triggers")

orv_debian_package(development liborv-dev libdevel "headers"
  "This package has headers, and what CMake and pkg-config need to find the\nlibrary.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${library} ${same_version}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS orv-doc)

orv_debian_package(command orv math "command"
  "This package has the orv command: functions, statistics and random numbers\nfor tables in a shell.")
set(CPACK_DEBIAN_COMMAND_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS "${library} ${same_version}")
set(CPACK_DEBIAN_COMMAND_PACKAGE_SUGGESTS "gnuplot-nox, orv-doc")

orv_debian_package(documentation orv-doc doc "documents"
  "This package has the guide, measured accuracy and speed, and examples with\ndata.")
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)

set(shlibs)
foreach(target IN ITEMS orv_qem orv_serv orv_threads)
  get_target_property(version ${target} SOVERSION)
  if(NOT version STREQUAL "version-NOTFOUND")  # in 32-bit code one is loaded by its bare name
    get_target_property(name ${target} OUTPUT_NAME)
    string(APPEND shlibs "lib${name} ${version} ${library} (>= ${PROJECT_VERSION})\n")
  endif()
endforeach()
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/deb/shlibs CONTENT "${shlibs}")

# Packages carry the time of their release.
file(STRINGS CHANGELOG.md release REGEX "^## ${PROJECT_VERSION} ")
if(NOT release MATCHES "[0-9]+-[0-9]+-[0-9]+")
  message(FATAL_ERROR "CHANGELOG.md has no date for release ${PROJECT_VERSION}")
endif()
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md)
execute_process(COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C date -u -d ${CMAKE_MATCH_0}
  "+%a, %d %b %Y %T +0000;%s" OUTPUT_VARIABLE release_times OUTPUT_STRIP_TRAILING_WHITESPACE)
list(GET release_times 0 release_date)
list(GET release_times 1 release_seconds)

# Debian's habits that CPack does not know: stage.cmake sees the files of all packages before they are
# made, finish.cmake each package after.
foreach(script stage finish)
  configure_file(cmake/deb/${script}.cmake ${PROJECT_BINARY_DIR}/deb/${script}.cmake @ONLY)
endforeach()
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_BINARY_DIR}/deb/stage.cmake)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_BINARY_DIR}/deb/finish.cmake)
include(CPack)
