# Install tree, CMake package, pkg-config file and Debian package.

include(CMakePackageConfigHelpers)

# starsift::starsift: all floors. The program has that name already, so the
# target is called otherwise inside the build.
add_library(starsift_all INTERFACE)
add_library(starsift::starsift ALIAS starsift_all)
set_target_properties(starsift_all PROPERTIES EXPORT_NAME starsift)
if(STARSIFT_FLOORS)
  list(GET STARSIFT_FLOORS -1 top)
  target_link_libraries(starsift_all INTERFACE starsift_${top})
endif()
install(TARGETS starsift_all EXPORT starsift)

# Component runtime is what the Debian package holds.
foreach(program IN ITEMS starsift_program starseek_program starport_program)
  if(TARGET ${program})
    install(TARGETS ${program} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT runtime)
  endif()
endforeach()
install(FILES man/starsift.1 man/starseek.1 man/starport.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT runtime)
# bash looks for a file with the name of the command.
foreach(command IN ITEMS starsift starseek starport)
  install(FILES completion/starsift.bash RENAME ${command}
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT runtime)
endforeach()
install(FILES LICENSE RENAME copyright DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT runtime)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/starsift")
install(EXPORT starsift NAMESPACE starsift:: FILE starsiftTargets.cmake
  DESTINATION "${package_dir}" COMPONENT development)
if(TARGET starsift_certificates)
  install(EXPORT starsift_certificates NAMESPACE starsift:: FILE starsiftCertificatesTargets.cmake
    DESTINATION "${package_dir}" COMPONENT development)
endif()
configure_package_config_file(cmake/starsiftConfig.cmake.in starsiftConfig.cmake
  INSTALL_DESTINATION "${package_dir}")
write_basic_package_version_file(starsiftConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/starsiftConfig.cmake"
  "${PROJECT_BINARY_DIR}/starsiftConfigVersion.cmake"
  cmake/FindGMP.cmake
  cmake/FindACL.cmake
  cmake/FindMPFR.cmake
  DESTINATION "${package_dir}" COMPONENT development)

# For the house; the floors beside it are for users of CMake. A static archive must stand before those that it calls: highest floor first.
set(archives ${STARSIFT_FLOORS})
list(REVERSE archives)
set(pc_libs)
foreach(floor IN LISTS archives)
  get_target_property(type starsift_${floor} TYPE)
  if(type STREQUAL STATIC_LIBRARY)
    string(APPEND pc_libs "-lstarsift_${floor} ")
  endif()
endforeach()
configure_file(cmake/starsift.pc.in starsift.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/starsift.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The starsift developers <starsift@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME starsift)
set(CPACK_DEBIAN_RUNTIME_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION math)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# starport --repair starts its esolver.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qsopt-ex)
include(CPack)
