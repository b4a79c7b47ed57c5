# Language, warnings, hardening and sanitizers: what holds for every target.

option(STARSIFT_TESTS "Build the tests" OFF)
option(STARSIFT_BENCH "Build the benchmarks" OFF)
option(STARSIFT_FUZZ "Build the fuzz targets" OFF)
option(STARSIFT_HARDENING "Fortified C library calls, stack protection, read-only relocations" ON)
option(STARSIFT_COVERAGE "Count executed lines and branches" OFF)
option(STARSIFT_PRECOMPILE "Precompile system headers" OFF)
option(STARSIFT_COMPILE_TOGETHER "Compile several sources as one file" OFF)
set(STARSIFT_SANITIZE "" CACHE STRING "Sanitizers, for example address,undefined")

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# Makes the executable itself position independent, not only its objects.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)

find_program(STARSIFT_CCACHE ccache)
mark_as_advanced(STARSIFT_CCACHE)
if(STARSIFT_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  # The sloppiness is what precompiled headers need; another clone may share the cache.
  set(CMAKE_CXX_COMPILER_LAUNCHER
    "${CMAKE_COMMAND}" -E env "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1
    CCACHE_SLOPPINESS=pch_defines,time_macros "${STARSIFT_CCACHE}")
  # A time stamp in the precompiled header would make each one another.
  add_compile_options("$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endif()

# Messages name sources from the root of the project, so that each clone compiles the same text.
add_compile_options("-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/=")

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)

# A fused multiply-add rounds once where the source says twice, so a result
# would depend on the processor.
add_compile_options(-ffp-contract=off)

# The libraries are static: nobody replaces a function at load time, so the
# compiler may inline it even though the code is position independent.
add_compile_options(-fno-semantic-interposition)

# A program holds the functions that it may call, not all of the files that they are in: the pages
# of a small one are mapped faster.
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  add_compile_options(-ffunction-sections -fdata-sections)
endif()

if(STARSIFT_HARDENING)
  add_compile_options(-fstack-protector-strong -fstack-clash-protection)
  # Fortification needs the optimiser; without it the C library only warns.
  add_compile_options("$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>")
  add_link_options(-Wl,-z,relro,-z,now)
endif()

if(STARSIFT_SANITIZE)
  add_compile_options("-fsanitize=${STARSIFT_SANITIZE}" -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options("-fsanitize=${STARSIFT_SANITIZE}")
endif()

if(STARSIFT_COVERAGE)
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()
