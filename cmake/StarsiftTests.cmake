# Tests: one program per floor of tests/unit/, two for the properties, the cases,
# and the checks of the tools. What is dropped into a folder is picked up.

find_package(GTest REQUIRED)
find_package(rapidcheck CONFIG REQUIRED)
find_package(Python3 REQUIRED COMPONENTS Interpreter)

# Instrumented programs run several times slower.
set(STARSIFT_SUITE_TIMEOUT 600)
if(STARSIFT_SANITIZE OR STARSIFT_COVERAGE)
  set(STARSIFT_SUITE_TIMEOUT 1800)
endif()

# Generated cases of a property, and generated problems of a law of property_fatal. Sanitizers look
# for other faults than the properties do, and twenty times as slowly.
set(case_count 100)
set(problem_count 2000)
set(slowdown 1)
if(STARSIFT_SANITIZE)
  set(case_count 25)
  set(problem_count 100)
  set(slowdown 6)
elseif(STARSIFT_COVERAGE)
  set(slowdown 6)
endif()

# What runs long is in the libraries and the oracles. Optimising what the test frameworks instantiate
# would take most of the time of a build.
set(test_options -O0 -g1 -U_FORTIFY_SOURCE)
# Where the tests themselves run long, a fifth of what they take goes into templates of theirs.
set(long_test_options -O1 -g1 -U_FORTIFY_SOURCE)

# Oracles, generators and fixtures for all test programs. They name no floor to
# link: each test program adds its own, and members for higher floors stay out.
function(starsift_add_test_support name)
  add_library(${name} STATIC ${ARGN})
  target_include_directories(${name} PUBLIC
    "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(${name} PUBLIC rapidcheck_gtest GTest::gmock GTest::gtest)
endfunction()

file(GLOB oracle_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/support/oracles/*.cpp")
starsift_add_test_support(starsift_test_oracles ${oracle_sources})
starsift_precompile(starsift_test_oracles sources "${PROJECT_SOURCE_DIR}/cmake/SystemHeaders.h")

file(GLOB support_sources CONFIGURE_DEPENDS
  "${PROJECT_SOURCE_DIR}/tests/support/generators/*.cpp"
  "${PROJECT_SOURCE_DIR}/tests/support/fixtures/*.cpp")
starsift_add_test_support(starsift_test_support ${support_sources})
# With the options of a program, so that it shares what the programs precompile.
set_target_properties(starsift_test_support PROPERTIES POSITION_INDEPENDENT_CODE OFF)
target_compile_options(starsift_test_support PRIVATE -fPIE ${test_options})
target_link_libraries(starsift_test_support PUBLIC starsift_test_oracles)
starsift_precompile(starsift_test_support tests "${PROJECT_SOURCE_DIR}/cmake/TestHeaders.h")

# starsift_add_gtest(<name> <folder> <floor library> [SHARDS <count>] [COST <cost>] [RUNS_LONG])
#
# The tests run as SHARDS processes, each with every SHARDS-th of them: a
# process for each test takes longer than most tests. What costs more begins
# earlier, so that no core waits at the end. What RUNS_LONG is optimised, and so can't share what the
# others precompile.
function(starsift_add_gtest name folder library)
  cmake_parse_arguments(PARSE_ARGV 3 arg "RUNS_LONG" "SHARDS;COST" "")
  if(NOT arg_SHARDS)
    set(arg_SHARDS 1)
  endif()
  if(NOT arg_COST)
    set(arg_COST 1)
  endif()
  file(GLOB sources CONFIGURE_DEPENDS "${folder}/*.cpp")
  if(NOT sources OR NOT TARGET ${library})
    return()
  endif()
  starsift_join_tests(sources ${name} ${sources})
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE "${folder}")
  target_link_libraries(${name} PRIVATE starsift_test_support ${library} GTest::gmock_main)
  if(arg_RUNS_LONG AND NOT STARSIFT_SANITIZE AND NOT STARSIFT_COVERAGE)
    target_compile_options(${name} PRIVATE ${long_test_options})
  else()
    target_compile_options(${name} PRIVATE ${test_options})
    starsift_precompile(${name} tests "${PROJECT_SOURCE_DIR}/cmake/TestHeaders.h")
  endif()
  # A fixed seed: the same tree gives the same verdict. Run the program by hand
  # for a new seed each time.
  math(EXPR last "${arg_SHARDS} - 1")
  foreach(shard RANGE 0 ${last})
    set(test ${name})
    if(arg_SHARDS GREATER 1)
      string(APPEND test ".${shard}")
    endif()
    add_test(NAME ${test} COMMAND ${name})
    set_tests_properties(${test} PROPERTIES
      TIMEOUT ${STARSIFT_SUITE_TIMEOUT} LABELS ${name} COST ${arg_COST}
      ENVIRONMENT "RC_PARAMS=seed=1 max_success=${case_count};GTEST_TOTAL_SHARDS=${arg_SHARDS};GTEST_SHARD_INDEX=${shard}")
  endforeach()
endfunction()

foreach(floor IN LISTS STARSIFT_FLOORS ITEMS certificates models app library)
  set(size)
  if(floor MATCHES "^(core|numbers|lattice|certificates|search)$")
    # Half a minute and more each under sanitizers.
    set(size SHARDS 3 COST 60)
  endif()
  starsift_add_gtest(unit_${floor} "${PROJECT_SOURCE_DIR}/tests/unit/${floor}" starsift_${floor}
    ${size})
endforeach()
target_compile_definitions(unit_models PRIVATE
  STARSIFT_CORNER_FILES="${PROJECT_SOURCE_DIR}/tests/models"
  STARSIFT_DIALECTS="${PROJECT_SOURCE_DIR}/tests/dialects"
  STARSIFT_SOLVER_FILES="${PROJECT_SOURCE_DIR}/tests/solutions")
# For its classes, which the library takes without knowing them.
target_link_libraries(unit_library PRIVATE GMP::GMP)
# These judge bases by certificates.
target_link_libraries(unit_lattice PRIVATE starsift_certificates)
target_link_libraries(unit_search PRIVATE starsift_certificates)
starsift_add_gtest(property "${PROJECT_SOURCE_DIR}/tests/property" starsift_app
  SHARDS 4 COST 50)
target_link_libraries(property PRIVATE starsift_certificates)
starsift_add_gtest(property_models "${PROJECT_SOURCE_DIR}/tests/property/models" starsift_models
  COST 20)
starsift_add_gtest(property_library "${PROJECT_SOURCE_DIR}/tests/property/library" starsift_library
  COST 20)
# Peers that read the same models; the library is for this test only.
# The peer leaks memory and would fail for it; the corner files and corpora are read under sanitizers.
if(NOT STARSIFT_SANITIZE)
  find_path(QSOPT_INCLUDE_DIR qsopt_ex/QSopt_ex.h REQUIRED)
  find_library(QSOPT_LIBRARY qsopt_ex REQUIRED)
  mark_as_advanced(QSOPT_INCLUDE_DIR QSOPT_LIBRARY)
  starsift_add_gtest(peer_models "${PROJECT_SOURCE_DIR}/tests/peer" starsift_models COST 30)
  target_include_directories(peer_models SYSTEM PRIVATE "${QSOPT_INCLUDE_DIR}/qsopt_ex")
  target_link_libraries(peer_models PRIVATE "${QSOPT_LIBRARY}")
  target_compile_definitions(peer_models PRIVATE STARSIFT_SOURCE_FOLDER="${PROJECT_SOURCE_DIR}")
endif()
# Its fail() throws: see ThrowingFailure.cpp there.
starsift_add_gtest(property_fatal "${PROJECT_SOURCE_DIR}/tests/property/fatal" starsift_app
  SHARDS 10 COST 100 RUNS_LONG)
if(TARGET property_fatal)
  target_link_libraries(property_fatal PRIVATE starsift_certificates)
  target_compile_definitions(property_fatal PRIVATE STARSIFT_PROBLEM_COUNT=${problem_count})
endif()

# The examples of docs/library.md.
file(GLOB guide_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/docs/library/*.cpp")
foreach(source IN LISTS guide_sources)
  cmake_path(GET source STEM name)
  add_executable(library_${name} "${source}")
  target_link_libraries(library_${name} PRIVATE starsift_library)
endforeach()

# The tests of code that starts threads, for the thread sanitizer; the other programs run them too.
add_executable(threads EXCLUDE_FROM_ALL
  "${PROJECT_SOURCE_DIR}/tests/unit/files/ComposedTextTest.cpp"
  "${PROJECT_SOURCE_DIR}/tests/unit/files/StarLinesTest.cpp"
  "${PROJECT_SOURCE_DIR}/tests/unit/library/SearchThreadsTest.cpp"
  "${PROJECT_SOURCE_DIR}/tests/unit/search/JumpThreadsTest.cpp"
  "${PROJECT_SOURCE_DIR}/tests/unit/search/LatticeThreadsTest.cpp"
  "${PROJECT_SOURCE_DIR}/tests/unit/search/SolutionExchangeTest.cpp"
  "${PROJECT_SOURCE_DIR}/tests/unit/search/ThreadedWalkTest.cpp"
  "${PROJECT_SOURCE_DIR}/tests/unit/system/GateTest.cpp"
  "${PROJECT_SOURCE_DIR}/tests/unit/system/HelperThreadsTest.cpp")
target_include_directories(threads PRIVATE "${PROJECT_SOURCE_DIR}/tests")
target_link_libraries(threads PRIVATE
  starsift_search starsift_library starsift_test_support GTest::gmock_main)

# starsift_add_script_test(<name> <command>...): runs in the source tree.
function(starsift_add_script_test name)
  add_test(NAME ${name} COMMAND ${ARGN} WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}")
  set_tests_properties(${name} PROPERTIES
    TIMEOUT ${STARSIFT_SUITE_TIMEOUT} LABELS tools COST 20)
endfunction()

set(python "${Python3_EXECUTABLE}" -B)
set(program $<TARGET_FILE:starsift_program>)
set(memory_limit)
if(STARSIFT_SANITIZE)
  set(memory_limit --no-memory-limit)  # the shadow memory alone is larger
endif()

if(TARGET starsift_program AND TARGET starseek_program)
  # The commands are called by their path, so building one must build the others.
  add_dependencies(starsift_program starseek_program starport_program)
  starsift_add_script_test(cases ${python} tests/run-cases ${program} --jobs 2 ${memory_limit})
  set_tests_properties(cases PROPERTIES PROCESSORS 2 COST 1000)
  starsift_add_script_test(examples ${python} tools/check-examples ${program})
  file(GLOB search_modules CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/search/test_*.py")
  foreach(path IN LISTS search_modules)
    cmake_path(GET path FILENAME module)
    string(REGEX REPLACE "^test_(.*)\\.py$" "search.\\1" name ${module})
    starsift_add_script_test(${name}
      ${CMAKE_COMMAND} -E env SEARCH_PROGRAM=$<TARGET_FILE:starseek_program>
        SEARCH_SLOWDOWN=${slowdown}
      ${python} -m unittest discover -s tests/search -p ${module})
    # Mostly wait, and would be the last to end.
    set_tests_properties(${name} PROPERTIES COST 2000)
  endforeach()
endif()

# A library that the sanitizers don't come before can't be preloaded, and they
# make calls of their own. The counters of a coverage build are written at the
# exit of each run, into folders and beyond limits that the faults close.
if(TARGET starsift_program AND NOT STARSIFT_SANITIZE AND NOT STARSIFT_COVERAGE)
  add_library(faults_shim MODULE tests/faults/shim.cpp)
  target_link_libraries(faults_shim PRIVATE ${CMAKE_DL_LIBS})
  file(GLOB fault_modules CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/faults/test_*.py")
  foreach(path IN LISTS fault_modules)
    cmake_path(GET path STEM module)
    string(REGEX REPLACE "^test_" "faults." name ${module})
    starsift_add_script_test(${name}
      tests/faults/run ${Python3_EXECUTABLE} ${program} $<TARGET_FILE:faults_shim> ${module})
  endforeach()
  # Two hundred processes at once.
  set_tests_properties(faults.parallel PROPERTIES PROCESSORS 2)
  set_tests_properties(faults.signals PROPERTIES COST 500)
  set_tests_properties(faults.stress PROPERTIES COST 300)
endif()

# No compiler and no sanitizer changes what these say.
if(NOT STARSIFT_SANITIZE AND NOT STARSIFT_COVERAGE)
  starsift_add_script_test(exports ${python} tools/check-exports $<TARGET_FILE:starsift_library>)
  starsift_add_script_test(readme ${python} tools/check-readme ${program})
  starsift_add_script_test(models-guide ${python} tools/check-readme ${program} docs/models.md)
  starsift_add_script_test(library-guide ${python} tools/check-readme ${program} docs/library.md)
  starsift_add_script_test(python_package ${python} tests/python/test_starsift.py)
  starsift_add_script_test(reference ${python} -m sphinx -W -q -b html
    docs/reference "${PROJECT_BINARY_DIR}/reference")
  set_tests_properties(python_package reference PROPERTIES
    ENVIRONMENT "PYTHONPATH=${PROJECT_BINARY_DIR}/python")
  starsift_add_script_test(tools ${python} -m unittest discover -s tests/tools -p "test_*.py")
endif()
