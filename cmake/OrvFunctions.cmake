# SPDX-License-Identifier: MIT
# From the function list to the kernels' source files and the library's export list.
#
# A kernel <t><F>_<TAG><LEVEL><flags> lives in qem/_src/qem_core/<f>/qem_<tag>_<t><f>_<level>.cpp and
# is compiled for exactly the instruction set of its tag.

set(ORV_FUNCTIONS_DEF ${PROJECT_SOURCE_DIR}/qem/_bt_gen_ia32/functions.def)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${ORV_FUNCTIONS_DEF})

set(ORV_FLAGS_px "")
set(ORV_FLAGS_w7 -msse2)
set(ORV_FLAGS_t7 -msse3)
set(ORV_FLAGS_v8 -msse3)
set(ORV_FLAGS_n8 -msse4.1)
set(ORV_FLAGS_p8 -msse4.1)
set(ORV_FLAGS_g9 -mavx)

# A unit for just the instructions of a tag.
function(orv_compile_for_tag unit tag)
  set_source_files_properties(${unit} PROPERTIES
    COMPILE_OPTIONS "${ORV_FLAGS_${tag}}" COMPILE_DEFINITIONS ORV_TAG=${tag})
endfunction()

# The kernel's source file, relative to qem/_src/qem_core, and its tag in lower case.
function(orv_kernel_unit type name kernel out_unit out_tag)
  string(TOLOWER ${name} folder)
  string(SUBSTRING ${kernel} 0 2 tag)
  string(SUBSTRING ${kernel} 2 2 level)
  string(TOLOWER ${tag} tag)
  if(level STREQUAL HA)
    set(suffix ha)
  elseif(type MATCHES "[sc]")
    string(REPLACE LA 21 suffix ${level})
    string(REPLACE EP 11 suffix ${suffix})
  else()
    string(REPLACE LA 50 suffix ${level})
    string(REPLACE EP 26 suffix ${suffix})
  endif()
  set(${out_unit} ${folder}/qem_${tag}_${type}${folder}_${suffix}.cpp PARENT_SCOPE)
  set(${out_tag} ${tag} PARENT_SCOPE)
endfunction()

# Gives a kernel's unit the kernel's declaration, and no other function's: a change of the function list
# rebuilds only what it concerns.
function(orv_declare_kernel unit type shape kernel)
  set(element_s float)
  set(element_d double)
  set(element_c QemComplexFloat)
  set(element_z QemComplexDouble)
  set(part_s float)
  set(part_d double)
  set(part_c float)
  set(part_z double)
  set(header ${CMAKE_CURRENT_BINARY_DIR}/kernels/${kernel}.h)
  file(CONFIGURE OUTPUT ${header} @ONLY CONTENT "#include <orv/qem.h>
#include <qem/_bt_gen_ia32/shapes.def>
extern \"C\" ORV_API void ${kernel}(ORV_KERNEL_${shape}(${element_${type}}, ${part_${type}}));
")
  set_property(SOURCE ${unit} APPEND PROPERTY COMPILE_OPTIONS -include ${header})
endfunction()

# Sets ORV_KERNEL_UNITS and ORV_EXPORTS in the caller, and the flags of each unit.
function(orv_read_functions source_dir)
  set(units)
  set(exports)
  file(STRINGS ${ORV_FUNCTIONS_DEF} rows REGEX "^ORV_FUNCTION")
  foreach(row IN LISTS rows)
    string(REGEX REPLACE "^ORV_FUNCTION\\(|\\)$|[ ]" "" row "${row}")
    string(REPLACE "," ";" cells "${row}")
    list(GET cells 0 type)
    list(GET cells 1 name)
    list(GET cells 2 shape)
    list(SUBLIST cells 3 3 kernels)
    list(REMOVE_DUPLICATES kernels)
    set(f ${type}${name})
    if(type MATCHES "[sc]")
      list(APPEND exports _qem${f}_21 _qem${f}_11)
    else()
      list(APPEND exports _qem${f}_50 _qem${f}_26)
    endif()
    list(APPEND exports _qem${f} _qem${f}_HA orv_qem_kernel_${f}_ttab orv_qem_kernel_${f}_ctab)
    foreach(kernel IN LISTS kernels)
      list(APPEND exports orv_qem_kernel_${f}_${kernel})
      orv_kernel_unit(${type} ${name} ${kernel} unit tag)
      set(unit ${source_dir}/${unit})
      list(APPEND units ${unit})
      orv_compile_for_tag(${unit} ${tag})
      orv_declare_kernel(${unit} ${type} ${shape} orv_qem_kernel_${f}_${kernel})
    endforeach()
  endforeach()
  set(ORV_KERNEL_UNITS ${units} PARENT_SCOPE)
  set(ORV_EXPORTS ${exports} PARENT_SCOPE)
endfunction()

# Writes a version script with the functions' names and those of plain lists, a name a line.
function(orv_write_export_map map lists exports)
  set(text "{\n  global:\n")
  foreach(list IN LISTS lists)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${list})
    file(STRINGS ${list} names REGEX "^[^#]")
    foreach(name IN LISTS names)
      string(APPEND text "    ${name};\n")
    endforeach()
  endforeach()
  foreach(name IN LISTS exports)
    string(APPEND text "    ${name};\n")
  endforeach()
  file(CONFIGURE OUTPUT ${map} CONTENT "${text}  local:\n    *;\n};\n" @ONLY)
endfunction()
