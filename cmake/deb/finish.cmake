# SPDX-License-Identifier: MIT
# Run by CPack with the packages it made. Both word sizes may be installed together, and the trigger
# of the library's package takes the place of scripts that call ldconfig.
function(run)
  execute_process(COMMAND ${ARGN} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(ENV{SOURCE_DATE_EPOCH} @release_seconds@)
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(tree ${CPACK_TEMPORARY_DIRECTORY}/finish)
  file(REMOVE_RECURSE ${tree})
  run(dpkg-deb --raw-extract ${package} ${tree})
  set(control ${tree}/DEBIAN)
  file(REMOVE ${control}/postinst ${control}/postrm)
  file(READ ${control}/control text)
  string(STRIP "${text}" text)
  set(kind foreign)
  if(package MATCHES "/liborv")
    set(kind same)
  endif()
  file(WRITE ${control}/control "${text}\nMulti-Arch: ${kind}\n")
  run(dpkg-deb --root-owner-group -Zxz --build ${tree} ${package})
endforeach()
