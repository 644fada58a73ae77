# SPDX-License-Identifier: MIT
# How every target is compiled. Floating point is the product: nothing may contract, reassociate or
# assume a rounding mode.
add_library(orv_compile INTERFACE)
target_compile_options(orv_compile INTERFACE
  -Wall -Wextra -Wshadow -Wundef -Wno-psabi -Wno-ignored-attributes -ffp-contract=off)
target_include_directories(orv_compile INTERFACE
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)

# What is inside the shared libraries: no C++ runtime, nothing visible unless it is exported, and in
# 32-bit code a stack that a caller may have aligned to four bytes only.
add_library(orv_library_compile INTERFACE)
target_link_libraries(orv_library_compile INTERFACE orv_compile)
target_compile_options(orv_library_compile INTERFACE
  -fno-exceptions -fno-rtti -fno-threadsafe-statics -fno-math-errno
  -fvisibility=hidden -fvisibility-inlines-hidden
  -fsemantic-interposition)  # exported entries call each other through their symbols
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  # GCC realigns only what has vectors on its stack unless it is told what to expect; what the library
  # calls back needs its sixteen bytes, too.
  target_compile_options(orv_library_compile INTERFACE -mstackrealign
    $<$<CXX_COMPILER_ID:GNU>:-mincoming-stack-boundary=2>)
endif()

if(ORV_SANITIZE)
  add_compile_options(-fsanitize=${ORV_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer
    -Wno-maybe-uninitialized)  # their instrumentation misleads GCC
  add_link_options(-fsanitize=${ORV_SANITIZE})
endif()

# Gives a shared library its export list and checks at link time that nothing is left open.
function(orv_export_only target map)
  target_link_options(${target} PRIVATE -Wl,--version-script=${map} -Wl,--as-needed -Wl,-z,now)
  if(NOT ORV_SANITIZE)
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
    set_target_properties(${target} PROPERTIES LINKER_LANGUAGE C)
  endif()
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${map})
endfunction()

# A program that was linked with the library loads that of the same major version.
function(orv_load_by_version target)
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
endfunction()
