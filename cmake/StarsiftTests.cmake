# Tests: one program per floor of tests/unit/, two for the properties, the cases,
# and the checks of the tools. What is dropped into a folder is picked up.

find_package(GTest REQUIRED)
find_package(rapidcheck CONFIG REQUIRED)
find_package(Python3 REQUIRED COMPONENTS Interpreter)

# Instrumented programs run several times slower.
set(STARSIFT_TEST_TIMEOUT 240)
set(STARSIFT_SUITE_TIMEOUT 600)
if(STARSIFT_SANITIZE OR STARSIFT_COVERAGE)
  set(STARSIFT_TEST_TIMEOUT 600)
  set(STARSIFT_SUITE_TIMEOUT 1800)
endif()

# Generators, oracles and macros for all test programs. It names no floor to
# link: each test program adds its own, and members for higher floors stay out.
file(GLOB_RECURSE support_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/tests/support/*.cpp")
if(support_sources)
  set(support_scope PUBLIC)
  add_library(starsift_test_support STATIC ${support_sources})
else()
  set(support_scope INTERFACE)
  add_library(starsift_test_support INTERFACE)
endif()
target_include_directories(starsift_test_support ${support_scope}
  "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/tests")
target_link_libraries(starsift_test_support ${support_scope}
  rapidcheck_gtest GTest::gmock GTest::gtest)

# starsift_add_gtest(<name> <folder> <floor library>)
function(starsift_add_gtest name folder library)
  file(GLOB sources CONFIGURE_DEPENDS "${folder}/*.cpp")
  if(NOT sources OR NOT TARGET ${library})
    return()
  endif()
starsift_precompile(starsift_test_support sources "${PROJECT_SOURCE_DIR}/cmake/SystemHeaders.h")
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE starsift_test_support ${library} GTest::gmock_main)
  # What runs long is in the libraries. Optimising the macros of the test
  # framework would take most of the time of a sanitizer build.
  target_compile_options(${name} PRIVATE -O0 -g1 -U_FORTIFY_SOURCE)
  # A fixed seed: the same tree gives the same verdict. Run the program by hand
  # for a new seed each time.
  gtest_discover_tests(${name}
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    TEST_PREFIX "${name}."
    PROPERTIES TIMEOUT ${STARSIFT_TEST_TIMEOUT} LABELS ${name}
               ENVIRONMENT "RC_PARAMS=seed=1")
endfunction()

include(GoogleTest)
foreach(floor IN LISTS STARSIFT_FLOORS ITEMS certificates app)
  starsift_add_gtest(unit_${floor} "${PROJECT_SOURCE_DIR}/tests/unit/${floor}" starsift_${floor})
  starsift_join_tests(sources ${name} ${sources})
endforeach()
  target_include_directories(${name} PRIVATE "${folder}")
# These judge bases by certificates.
target_link_libraries(unit_lattice PRIVATE starsift_certificates)
starsift_add_gtest(property "${PROJECT_SOURCE_DIR}/tests/property" starsift_app)
target_link_libraries(property PRIVATE starsift_certificates)
# Its fail() throws: see ThrowingFailure.h there.
  starsift_precompile(${name} tests "${PROJECT_SOURCE_DIR}/cmake/TestHeaders.h")
starsift_add_gtest(property_fatal "${PROJECT_SOURCE_DIR}/tests/property/fatal" starsift_app)
if(TARGET property_fatal)
  target_link_libraries(property_fatal PRIVATE starsift_certificates)
  set(problem_count 2000)
  if(STARSIFT_SANITIZE)
    set(problem_count 400)  # twenty times as slow, and looking for other faults
  endif()
  target_compile_definitions(property_fatal PRIVATE STARSIFT_PROBLEM_COUNT=${problem_count})
endif()

# starsift_add_script_test(<name> <command>...): runs in the source tree.
function(starsift_add_script_test name)
  add_test(NAME ${name} COMMAND ${ARGN} WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}")
  set_tests_properties(${name} PROPERTIES TIMEOUT ${STARSIFT_SUITE_TIMEOUT} LABELS tools)
endfunction()

set(python "${Python3_EXECUTABLE}" -B)
set(program $<TARGET_FILE:starsift_program>)
set(memory_limit)
if(STARSIFT_SANITIZE)
  set(memory_limit --no-memory-limit)  # the shadow memory alone is larger
endif()

if(TARGET starsift_program AND TARGET starseek_program)
  # The commands are called by their path, so building one must build the other.
  add_dependencies(starsift_program starseek_program)
  starsift_add_script_test(cases ${python} tests/run-cases ${program} --jobs 2 ${memory_limit})
  set_tests_properties(cases PROPERTIES PROCESSORS 2)
  starsift_add_script_test(examples ${python} tools/check-examples ${program})
  starsift_add_script_test(readme ${python} tools/check-readme ${program})
  starsift_add_script_test(search
    ${CMAKE_COMMAND} -E env SEARCH_PROGRAM=$<TARGET_FILE:starseek_program>
    ${python} -m unittest discover -s tests/search -p "test_*.py")
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
endif()
starsift_add_script_test(layers ${python} tools/check-layers)
starsift_add_script_test(lattice-map ${python} tools/check-lattice-map)
starsift_add_script_test(tools ${python} -m unittest discover -s tests/tools -p "test_*.py")
