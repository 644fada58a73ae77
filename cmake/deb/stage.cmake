# SPDX-License-Identifier: MIT
# Run by CPack with the files of each component in a folder of its own, before packages are made:
# Debian's papers, and no search paths, since the libraries lie where the system looks.
function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  set(usr ${CPACK_TEMPORARY_DIRECTORY}/${component}/usr)
  string(TOUPPER ${component} key)
  set(package ${CPACK_DEBIAN_${key}_PACKAGE_NAME})

  set(papers ${usr}/share/doc/${package})
  file(REMOVE ${usr}/share/doc/orv/LICENSE)  # the copyright file has it
  file(COPY @PROJECT_SOURCE_DIR@/cmake/deb/copyright DESTINATION ${papers})
  file(WRITE ${papers}/changelog "orv (@PROJECT_VERSION@) unstable; urgency=medium\n\n"
    "  * Release @PROJECT_VERSION@; its changes are told in CHANGELOG.md (package orv-doc).\n\n"
    " -- ${CPACK_PACKAGE_CONTACT}  @release_date@\n")
  run(gzip -9nf ${papers}/changelog)
  file(GLOB manuals ${usr}/share/man/man*/*.[1-9])
  if(manuals)
    run(gzip -9nf ${manuals})
  endif()

  set(overrides @PROJECT_SOURCE_DIR@/cmake/deb/${component}.lintian-overrides)
  if(EXISTS ${overrides})
    configure_file(${overrides} ${usr}/share/lintian/overrides/${package} COPYONLY)
  endif()

  file(GLOB binaries ${usr}/bin/* ${usr}/lib/*/*.so*)
  foreach(binary IN LISTS binaries)
    if(NOT IS_SYMLINK ${binary})
      file(RPATH_REMOVE FILE ${binary})
    endif()
  endforeach()
  # A umask of the person who packs must not reach the packages.
  run(chmod -R u=rwX,go=rX ${CPACK_TEMPORARY_DIRECTORY}/${component})
endforeach()
