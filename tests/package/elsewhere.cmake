# Another folder's build, plainly configured, is a release where warnings are no errors, and the same
# to the byte: also where that is not tried, no product knows its folder. As a part of another
# project only the libraries are built.
function(run)
  execute_process(COMMAND ${CMAKE_COMMAND} ${ARGN} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${WORK})
run(-S ${SOURCE} -B ${WORK}/plain ${OPTIONS} -DCMAKE_EXPORT_COMPILE_COMMANDS=ON
  -DORV_BUILD_CLI=OFF -DORV_BUILD_TESTS=OFF -DORV_BUILD_BENCH=OFF)
file(STRINGS ${WORK}/plain/compile_commands.json strict REGEX -Werror)
if(strict)
  message(FATAL_ERROR "warnings are errors: ${strict}")
endif()
run(--build ${WORK}/plain --target orv_serv --target orv_threads)
foreach(library serv threads)
  run(-E compare_files ${WORK}/plain/lib/liborv_${library}.so ${BUILD}/lib/liborv_${library}.so)
endforeach()

string(HEX "${SOURCE}" source)
string(HEX "${BUILD}" build)
foreach(product IN LISTS PRODUCTS)
  file(READ ${product} bytes HEX)
  if(bytes MATCHES "${source}|${build}")
    message(FATAL_ERROR "${product} holds a path of this machine")
  endif()
endforeach()

run(-S ${CMAKE_CURRENT_LIST_DIR}/whole -B ${WORK}/whole ${OPTIONS} -DSOURCE=${SOURCE})
