# One static library per floor src/<floor>/, and the programs of src/app/.

# Floors made so far, lowest first.
set(STARSIFT_FLOORS)

# starsift_add_floor(<floor> [BESIDE <floor>] [LINKS <target>...])
#
# Makes starsift_<floor> from all sources in src/<floor>/ and its rooms, linked to the floor
# below and to LINKS. A floor BESIDE the house stands on the one named, no other floor
# stands on it, and it has an export set of its own, so that a package with it can be used
# without what it links. Headers are a file set, so that each one is compiled alone by the
# target all_verify_interface_header_sets; the template bodies in *.inl are
# installed with them but need their header first and so are not compiled alone.
# A floor without sources is an interface library, one without files is skipped.
function(starsift_add_floor floor)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "BESIDE" "LINKS")
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
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${floor}
    VERIFY_INTERFACE_HEADER_SETS ON
    INTERFACE_HEADER_SETS_TO_VERIFY HEADERS)
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

  set(export starsift)
  if(arg_BESIDE)
    set(export ${target})
    target_link_libraries(${target} ${scope} starsift_${arg_BESIDE})
  elseif(STARSIFT_FLOORS)
    list(GET STARSIFT_FLOORS -1 below)
    target_link_libraries(${target} ${scope} starsift_${below})
  endif()
  target_link_libraries(${target} ${scope} ${arg_LINKS})

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
    set_target_properties(starsift_app PROPERTIES
      VERIFY_INTERFACE_HEADER_SETS ON)
    target_sources(starsift_app PUBLIC
      FILE_SET HEADERS BASE_DIRS "${PROJECT_SOURCE_DIR}/src" FILES ${headers})
    target_link_libraries(starsift_app PUBLIC ${links})
    set(links starsift_app)
  endif()

  foreach(main IN LISTS mains)
    if(main IN_LIST sources)
      cmake_path(GET main STEM name)
      add_executable(${name}_program "${main}")
      set_target_properties(${name}_program PROPERTIES OUTPUT_NAME ${name})
      target_include_directories(${name}_program PRIVATE "${PROJECT_SOURCE_DIR}/src")
      target_link_libraries(${name}_program PRIVATE ${links})
    endif()
  endforeach()
endfunction()
