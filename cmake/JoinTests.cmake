# cmake -P JoinTests.cmake <result> <source>...
#
# Writes test sources one behind the other into <result>. Each file's unnamed
# namespace gets a name of its own, so that files may use the same names; the
# compiler still reports the lines of the files themselves.

math(EXPR last "${CMAKE_ARGC} - 1")
set(result "${CMAKE_ARGV3}")
set(text "")
foreach(number RANGE 4 ${last})
  set(source "${CMAKE_ARGV${number}}")
  cmake_path(GET source STEM stem)
  file(READ "${source}" content)
  # Where there are several, what stands between them uses their names.
  set(kind "namespace")
  if(content MATCHES "\nnamespace {\n.*\nnamespace {\n")
    set(kind "inline namespace")
  endif()
  string(REPLACE "\nnamespace {\n" "\n${kind} of${stem} {\n" content "${content}")
  string(APPEND text "#line 1 \"${source}\"\n${content}")
endforeach()

# An unchanged result keeps its time, so that nothing is compiled again.
set(before "")
if(EXISTS "${result}")
  file(READ "${result}" before)
endif()
if(NOT text STREQUAL before)
  file(WRITE "${result}" "${text}")
endif()
