# Precompiled headers and sources compiled together, where STARSIFT_PRECOMPILE and
# STARSIFT_COMPILE_TOGETHER are on. Builds without them, and clang-tidy, see whether each source
# compiles alone.

# g++ 12 takes "a" + std::to_string(n) for a copy onto itself (PR 105651).
add_compile_options(
  "$<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>")

# It warns of more that it inlines from std::string once that is precompiled,
# where it keeps quiet else. Builds without this keep these warnings.
if(STARSIFT_PRECOMPILE)
  add_compile_options(
    "$<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds;-Wno-stringop-overflow>")
endif()

# starsift_precompile(<target> <group> <header>)
#
# Puts the header in front of the target's sources. Targets of one group have
# the same compile options and share what is compiled with the first of them.
function(starsift_precompile target group header)
  get_target_property(type ${target} TYPE)
  if(NOT STARSIFT_PRECOMPILE OR type STREQUAL INTERFACE_LIBRARY)
    return()
  endif()
  get_property(first GLOBAL PROPERTY STARSIFT_FIRST_OF_${group})
  if(first)
    target_precompile_headers(${target} REUSE_FROM ${first})
  else()
    target_precompile_headers(${target} PRIVATE "${header}")
    set_property(GLOBAL PROPERTY STARSIFT_FIRST_OF_${group} ${target})
  endif()
endfunction()

# starsift_compile_together(<target>)
#
# A few sources of the target at a time: the headers that they share, and what they instantiate of
# these, take longer than most of them. Not the tests: these use the same names in unnamed
# namespaces.
function(starsift_compile_together target)
  if(STARSIFT_COMPILE_TOGETHER)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 6)
  endif()
endfunction()

# starsift_join_tests(<result> <name> <source>...)
#
# The sources, or as many files with a few of them each: what the frameworks
# instantiate for every file takes longer than the tests.
function(starsift_join_tests result name)
  if(NOT STARSIFT_COMPILE_TOGETHER)
    set(${result} ${ARGN} PARENT_SCOPE)
    return()
  endif()
  set(sources ${ARGN})
  set(script "${PROJECT_SOURCE_DIR}/cmake/JoinTests.cmake")
  list(LENGTH sources count)
  # As few files as hold at most ten sources each, all of about the same size.
  math(EXPR files "(${count} + 9) / 10")
  math(EXPR last "${files} - 1")
  set(joined)
  foreach(file RANGE 0 ${last})
    math(EXPR begin "${file} * ${count} / ${files}")
    math(EXPR size "(${file} + 1) * ${count} / ${files} - ${begin}")
    list(SUBLIST sources ${begin} ${size} part)
    set(output "${PROJECT_BINARY_DIR}/joined/${name}_${file}.cpp")
    add_custom_command(OUTPUT "${output}"
      COMMAND "${CMAKE_COMMAND}" -P "${script}" "${output}" ${part}
      DEPENDS ${part} "${script}"
      COMMENT "" VERBATIM)
    list(APPEND joined "${output}")
  endforeach()
  set(${result} ${joined} PARENT_SCOPE)
endfunction()
