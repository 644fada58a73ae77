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
execute_process(COMMAND ${CMAKE_COMMAND} -P ${BUILD}/uninstall.cmake
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE left ${PREFIX}.first/*)
if(NOT left STREQUAL "${PREFIX}.first/include/orv/mine.h" OR EXISTS ${PREFIX}.first/share/doc/orv)
  message(FATAL_ERROR "uninstall left ${left}")
endif()
file(REMOVE_RECURSE ${PREFIX}.first)

install()
file(RENAME ${PREFIX}.first ${PREFIX})
