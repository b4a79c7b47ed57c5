# One static library per floor src/<floor>/, and the programs of src/app/.

# Floors made so far, lowest first.
set(STARSIFT_FLOORS)

# starsift_add_floor(<floor> [BESIDE <floor> [INTERNAL]] [LINKS <target>...])
#
# Makes starsift_<floor> from all sources in src/<floor>/ and its rooms, linked to the floor
# below and to LINKS. A floor BESIDE the house stands on the one named, no other floor
# stands on it, and it has an export set of its own, so that a package with it can be used
# without what it links. The template bodies in *.inl are installed with the headers.
# A floor without sources is an interface library, one without files is skipped.
function(starsift_add_floor floor)
  cmake_parse_arguments(PARSE_ARGV 1 arg "INTERNAL" "BESIDE" "LINKS")
  set(folder "${PROJECT_SOURCE_DIR}/src/${floor}")
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${folder}/*.cpp")
  file(GLOB_RECURSE headers CONFIGURE_DEPENDS "${folder}/*.h")
  file(GLOB_RECURSE bodies CONFIGURE_DEPENDS "${folder}/*.inl")
  if(NOT sources AND NOT headers)
    return()
  endif()

  set(target starsift_${floor})
  if(sources)
    set(scope PUBLIC)
    add_library(${target} STATIC ${sources})
  else()
    set(scope INTERFACE)
    add_library(${target} INTERFACE)
  endif()
  add_library(starsift::${floor} ALIAS ${target})
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${floor})
  set_property(GLOBAL APPEND PROPERTY STARSIFT_HEADERS ${headers})
  set_property(GLOBAL APPEND PROPERTY STARSIFT_LIBRARIES ${target})
  target_compile_features(${target} ${scope} cxx_std_20)

  target_sources(${target} ${scope}
    FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/src" FILES ${headers})
  set(body_set)
  if(bodies)
    target_sources(${target} ${scope}
      FILE_SET bodies TYPE HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/src" FILES ${bodies})
    set(body_set FILE_SET bodies DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/starsift"
                 COMPONENT development)
  endif()

  starsift_precompile(${target} sources "${PROJECT_SOURCE_DIR}/cmake/SystemHeaders.h")
  if(sources)
    starsift_compile_together(${target})
  endif()

  set(export starsift)
  if(arg_BESIDE)
    set(export ${target})
    target_link_libraries(${target} ${scope} starsift_${arg_BESIDE})
  elseif(STARSIFT_FLOORS)
    list(GET STARSIFT_FLOORS -1 below)
    target_link_libraries(${target} ${scope} starsift_${below})
  endif()
  target_link_libraries(${target} ${scope} ${arg_LINKS})

  if(arg_INTERNAL)
    return()
  endif()
  install(TARGETS ${target} EXPORT ${export}
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/starsift" COMPONENT development
    ${body_set})

  if(arg_BESIDE)
    return()
  endif()
  list(APPEND STARSIFT_FLOORS ${floor})
  set(STARSIFT_FLOORS "${STARSIFT_FLOORS}" PARENT_SCOPE)
endfunction()

# starsift_link_program(<target> <library>...)
#
# In a release the C++ runtime goes into the program: loading it takes longer than an empty run. The
# tests of faults come before the shared one. What of it nothing uses stays away: its pages count.
function(starsift_link_program target)
  target_link_libraries(${target} PRIVATE ${ARGN})
  if(CMAKE_BUILD_TYPE STREQUAL "Release")
    target_link_options(${target} PRIVATE -static-libstdc++ -static-libgcc
      -Wl,--gc-sections)
  endif()
endfunction()

# starsift_add_app()
#
# src/app/starsift.cpp holds the program's main. Everything else there is the
# library starsift_app, so that tests can link it without a second main; it is
# not installed.
function(starsift_add_app)
  set(folder "${PROJECT_SOURCE_DIR}/src/app")
  set(mains "${folder}/starsift.cpp" "${folder}/starseek.cpp")
  file(GLOB sources CONFIGURE_DEPENDS "${folder}/*.cpp")
  file(GLOB headers CONFIGURE_DEPENDS "${folder}/*.h")
  set(parts ${sources})
  list(REMOVE_ITEM parts ${mains})

  if(STARSIFT_FLOORS)
    list(GET STARSIFT_FLOORS -1 below)
    set(links starsift_${below})
  endif()
  if(parts)
    add_library(starsift_app STATIC ${parts})
    set_property(GLOBAL APPEND PROPERTY STARSIFT_HEADERS ${headers})
    set_property(GLOBAL APPEND PROPERTY STARSIFT_LIBRARIES starsift_app)
    target_sources(starsift_app PUBLIC
      FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/src" FILES ${headers})
    target_link_libraries(starsift_app PUBLIC ${links})
    target_compile_definitions(starsift_app PRIVATE STARSIFT_VERSION="${PROJECT_VERSION}")
    starsift_precompile(starsift_app sources "${PROJECT_SOURCE_DIR}/cmake/SystemHeaders.h")
    starsift_compile_together(starsift_app)
    set(links starsift_app)
  endif()

  foreach(main IN LISTS mains)
    if(main IN_LIST sources)
      cmake_path(GET main STEM name)
      add_executable(${name}_program "${main}")
      set_target_properties(${name}_program PROPERTIES OUTPUT_NAME ${name})
      target_include_directories(${name}_program PRIVATE "${PROJECT_SOURCE_DIR}/src")
      starsift_link_program(${name}_program ${links})
    endif()
  endforeach()
endfunction()

# starsift_add_port()
#
# The room src/app/port/: the program starport with its main in starport.cpp. The rest is the library
# starsift_port, on the floor models, which the other programs don't link.
function(starsift_add_port)
  set(folder "${PROJECT_SOURCE_DIR}/src/app/port")
  file(GLOB sources CONFIGURE_DEPENDS "${folder}/*.cpp")
  file(GLOB headers CONFIGURE_DEPENDS "${folder}/*.h")
  list(REMOVE_ITEM sources "${folder}/starport.cpp")
  add_library(starsift_port STATIC ${sources})
  set_property(GLOBAL APPEND PROPERTY STARSIFT_HEADERS ${headers})
  set_property(GLOBAL APPEND PROPERTY STARSIFT_LIBRARIES starsift_port)
  target_link_libraries(starsift_port PUBLIC starsift_models starsift_app)
  starsift_precompile(starsift_port sources "${PROJECT_SOURCE_DIR}/cmake/SystemHeaders.h")
  starsift_compile_together(starsift_port)
  add_executable(starport_program "${folder}/starport.cpp")
  set_target_properties(starport_program PROPERTIES OUTPUT_NAME starport)
  target_compile_definitions(starport_program PRIVATE STARSIFT_VERSION="${PROJECT_VERSION}")
  starsift_link_program(starport_program starsift_port)
endfunction()

# starsift_add_library()
#
# The floor src/library/: the shared library libstarsift with the public header in include/. It holds
# what it needs of the floors below and exports the names of the header only. The sources aren't
# compiled together, as the floor models has names of its own for what the header names.
function(starsift_add_library)
  set(folder "${PROJECT_SOURCE_DIR}/src/library")
  file(GLOB sources CONFIGURE_DEPENDS "${folder}/*.cpp")
  file(GLOB headers CONFIGURE_DEPENDS "${folder}/*.h")
  set(names "${PROJECT_SOURCE_DIR}/cmake/libstarsift.map")
  add_library(starsift_library SHARED ${sources})
  add_library(starsift::library ALIAS starsift_library)
  set_target_properties(starsift_library PROPERTIES
    OUTPUT_NAME starsift
    EXPORT_NAME library
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    LINK_DEPENDS "${names}")
  set_property(GLOBAL APPEND PROPERTY STARSIFT_HEADERS ${headers})
  set_property(GLOBAL APPEND PROPERTY STARSIFT_LIBRARIES starsift_library)
  target_compile_features(starsift_library PUBLIC cxx_std_20)
  target_sources(starsift_library PUBLIC
    FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/include"
    FILES "${PROJECT_SOURCE_DIR}/include/starsift/starsift.h")
  target_include_directories(starsift_library PRIVATE "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(starsift_library PRIVATE starsift_app starsift_models)
  target_link_options(starsift_library PRIVATE
    "LINKER:--version-script=${names}" LINKER:--as-needed)
  install(TARGETS starsift_library EXPORT starsift_library
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT library
      NAMELINK_COMPONENT development
    FILE_SET HEADERS DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}" COMPONENT development)
endfunction()

# starsift_add_python()
#
# The package starsift for Python in python/starsift/, over the shared library: build/<tree>/python
# holds it complete, for the tests. The component wheel holds the library too, beside the module.
function(starsift_add_python)
  pybind11_add_module(starsift_python MODULE NO_EXTRAS "${PROJECT_SOURCE_DIR}/python/module.cpp")
  set(package "${PROJECT_BINARY_DIR}/python/starsift")
  set(place "lib/python3/dist-packages")
  set_target_properties(starsift_python PROPERTIES
    OUTPUT_NAME _starsift
    LIBRARY_OUTPUT_DIRECTORY "${package}"
    # In a wheel; else from the package to the library, wherever both are installed.
    INSTALL_RPATH "$ORIGIN;$ORIGIN/../../../../${CMAKE_INSTALL_LIBDIR}")
  target_link_libraries(starsift_python PRIVATE starsift_library)
  target_compile_definitions(starsift_python PRIVATE STARSIFT_VERSION="${PROJECT_VERSION}")
  foreach(file IN ITEMS __init__.py figures.py _starsift.pyi py.typed)
    configure_file("${PROJECT_SOURCE_DIR}/python/starsift/${file}" "${package}/${file}" COPYONLY)
    install(FILES "${PROJECT_SOURCE_DIR}/python/starsift/${file}"
      DESTINATION "${place}/starsift" COMPONENT python)
    install(FILES "${PROJECT_SOURCE_DIR}/python/starsift/${file}"
      DESTINATION starsift COMPONENT wheel EXCLUDE_FROM_ALL)
  endforeach()
  install(TARGETS starsift_python LIBRARY DESTINATION "${place}/starsift" COMPONENT python)
  install(TARGETS starsift_python starsift_library LIBRARY
    DESTINATION starsift COMPONENT wheel EXCLUDE_FROM_ALL NAMELINK_SKIP)
endfunction()

# starsift_add_header_check()
#
# The target headers_alone compiles each header of src/ with nothing before it. A
# header that is the first include of its own .cpp is compiled so anyway, where
# nothing is precompiled. Which ones these are is looked up when CMake configures.
# Bodies in *.inl need their header first.
function(starsift_add_header_check)
  get_property(headers GLOBAL PROPERTY STARSIFT_HEADERS)
  get_property(libraries GLOBAL PROPERTY STARSIFT_LIBRARIES)
  set(sources)
  foreach(header IN LISTS headers)
    cmake_path(RELATIVE_PATH header BASE_DIRECTORY "${PROJECT_SOURCE_DIR}/src" OUTPUT_VARIABLE name)
    cmake_path(REPLACE_EXTENSION header LAST_ONLY cpp OUTPUT_VARIABLE own)
    set(first)
    if(EXISTS "${own}")
      file(STRINGS "${own}" first REGEX "^ *# *include" LIMIT_COUNT 1)
    endif()
    if(NOT first STREQUAL "#include \"${name}\"")
      string(MAKE_C_IDENTIFIER "${name}" source)
      set(source "${PROJECT_BINARY_DIR}/headers/${source}.cpp")
      file(CONFIGURE OUTPUT "${source}" CONTENT "#include \"${name}\"\n" @ONLY)
      list(APPEND sources "${source}")
    endif()
  endforeach()
  if(sources)
    add_library(headers_alone OBJECT EXCLUDE_FROM_ALL ${sources})
    target_link_libraries(headers_alone PRIVATE ${libraries})
    target_compile_options(headers_alone PRIVATE -O0 -U_FORTIFY_SOURCE)
  else()
    add_custom_target(headers_alone)
  endif()
endfunction()
