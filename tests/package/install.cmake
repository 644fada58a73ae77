# Installs into an empty folder, then moves the tree: nothing may remember where it was.
file(REMOVE_RECURSE ${PREFIX} ${PREFIX}.first)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX}.first
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${PREFIX}.first ${PREFIX})
