# SPDX-License-Identifier: MIT
# Another folder's build, plainly configured, is a release where warnings are no errors, and the same
# to the byte: also where that is not tried, no product knows its folder. As a part of another
# project only the libraries are built.
function(run)
  execute_process(COMMAND ${CMAKE_COMMAND} ${ARGN} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${WORK})
run(-S ${SOURCE} -B ${WORK}/plain ${OPTIONS} -DCMAKE_EXPORT_COMPILE_COMMANDS=ON
  -DORV_BUILD_CLI=OFF -DORV_BUILD_TESTS=OFF -DORV_BUILD_BENCH=OFF
  -DCMAKE_INSTALL_LIBDIR=/far/lib -DCMAKE_INSTALL_INCLUDEDIR=/far/include)
file(STRINGS ${WORK}/plain/compile_commands.json strict REGEX -Werror)
if(strict)
  message(FATAL_ERROR "warnings are errors: ${strict}")
endif()
run(--build ${WORK}/plain --target orv_serv --target orv_threads)
foreach(library serv threads)
  run(-E compare_files ${WORK}/plain/lib/liborv_${library}.so ${BUILD}/lib/liborv_${library}.so)
endforeach()

# Folders outside of the prefix stay where they were told.
execute_process(COMMAND ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${WORK}/plain
  ${PKG_CONFIG} --cflags --libs orv OUTPUT_VARIABLE flags COMMAND_ERROR_IS_FATAL ANY)
if(NOT flags MATCHES "^-I/far/include -L/far/lib ")
  message(FATAL_ERROR "pkg-config tells ${flags}")
endif()

string(HEX "${SOURCE}" source)
string(HEX "${BUILD}" build)
foreach(product IN LISTS PRODUCTS)
  file(READ ${product} bytes HEX)
  if(bytes MATCHES "${source}|${build}")
    message(FATAL_ERROR "${product} holds a path of this machine")
  endif()
endforeach()

foreach(fetched OFF ON)
  set(whole ${WORK}/whole-${fetched})
  run(-S ${CMAKE_CURRENT_LIST_DIR}/whole -B ${whole} ${OPTIONS} -DSOURCE=${SOURCE} -DFETCHED=${fetched})
  run(--install ${whole} --prefix ${whole}/prefix)
  if(EXISTS ${whole}/prefix)
    message(FATAL_ERROR "a part installs itself")
  endif()
endforeach()
