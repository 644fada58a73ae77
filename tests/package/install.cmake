# SPDX-License-Identifier: MIT
# Installs into an empty folder, then moves the tree: nothing may remember where it was. The target
# `uninstall` takes away what was installed and nothing else.
function(install)
  execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX}.first ${ARGN}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${PREFIX} ${PREFIX}.first)
file(WRITE ${PREFIX}.first/include/orv/mine.h "")
install()
install(--component documentation)
# What CPack stages, and what lies elsewhere, is not this test's to remove.
execute_process(COMMAND ${CMAKE_COMMAND} -E env DESTDIR=${PREFIX}.first/staged
  ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX}.elsewhere --component documentation
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(STRINGS ${BUILD}/installed.txt record REGEX elsewhere)
if(record)
  message(FATAL_ERROR "what was staged counts as installed: ${record}")
endif()
file(REMOVE_RECURSE ${PREFIX}.first/staged)
file(APPEND ${BUILD}/installed.txt "${PREFIX}.other\n")
file(WRITE ${PREFIX}.other "")
execute_process(COMMAND ${CMAKE_COMMAND} -DBELOW=${PREFIX}.first -P ${BUILD}/uninstall.cmake
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE left ${PREFIX}.first/*)
file(STRINGS ${BUILD}/installed.txt kept REGEX "[.]other$")
if(NOT kept OR NOT EXISTS ${PREFIX}.other)
  message(FATAL_ERROR "uninstall removes what lies outside the folder it was given")
endif()
file(REMOVE ${PREFIX}.other)
if(NOT left STREQUAL "${PREFIX}.first/include/orv/mine.h" OR EXISTS ${PREFIX}.first/share/doc/orv)
  message(FATAL_ERROR "uninstall left ${left}")
endif()
file(REMOVE_RECURSE ${PREFIX}.first)

install()
file(RENAME ${PREFIX}.first ${PREFIX})
