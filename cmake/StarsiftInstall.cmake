# Install tree, CMake package, pkg-config files and Debian packages: commands, shared library, and
# what developers need.

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

# The extension module is of the interpreter that it was built with, its package of that of Debian.
set(packages runtime library development)
if(TARGET starsift_python)
  list(APPEND packages python)
endif()

# Component runtime is the Debian package of the commands.
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
# Each package has its own.
set(library_package libstarsift${PROJECT_VERSION_MAJOR})
install(FILES LICENSE RENAME copyright DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT runtime)
install(FILES LICENSE RENAME copyright
  DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${library_package}" COMPONENT library)
install(FILES LICENSE RENAME copyright
  DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/libstarsift-dev" COMPONENT development)
if(TARGET starsift_python)
  install(FILES LICENSE RENAME copyright
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/python3-starsift" COMPONENT python)
endif()

# The guides of users lie as in the sources, whichever package brings them, so that their links hold.
set(guides "${CMAKE_INSTALL_DOCDIR}/docs")
install(FILES README.md CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT runtime)
install(DIRECTORY examples DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT runtime)
foreach(guide IN ITEMS enumeration file-formats models numbers parts performance reduction search)
  install(FILES docs/${guide}.md DESTINATION "${guides}" COMPONENT runtime)
endforeach()
install(DIRECTORY docs/pictures docs/walk-through DESTINATION "${guides}" COMPONENT runtime)
install(FILES docs/library.md DESTINATION "${guides}" COMPONENT development)
install(DIRECTORY docs/library DESTINATION "${guides}" COMPONENT development)
if(TARGET starsift_python)
  install(FILES docs/python.md DESTINATION "${guides}" COMPONENT python)
  install(DIRECTORY docs/python DESTINATION "${guides}" COMPONENT python)
endif()

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/starsift")
install(EXPORT starsift NAMESPACE starsift:: FILE starsiftTargets.cmake
  DESTINATION "${package_dir}" COMPONENT development)
install(EXPORT starsift_library NAMESPACE starsift:: FILE starsiftLibraryTargets.cmake
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
# A package is configured before it is known where it will be unpacked.
file(RELATIVE_PATH prefix_from_pc "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" prefix_from_pc "${prefix_from_pc}")
configure_file(cmake/starsift.pc.in starsift.pc @ONLY)
configure_file(cmake/libstarsift.pc.in libstarsift.pc @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/starsift.pc" "${PROJECT_BINARY_DIR}/libstarsift.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The starsift developers <starsift@localhost>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL ${packages})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME starsift)
set(CPACK_DEBIAN_RUNTIME_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION math)
# starport --repair starts esolver, starseek --profile gnuplot.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "qsopt-ex, gnuplot-nox")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_LIBRARY_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "Exact checks of and searches for solutions of integer linear problems: shared library")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libstarsift-dev)
set(CPACK_DEBIAN_DEVELOPMENT_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
# GMP for the static libraries of the floors.
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${library_package} (= ${PROJECT_VERSION}), libgmp-dev")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "Exact checks of and searches for solutions of integer linear problems: header, CMake package and static libraries")
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-starsift)
set(CPACK_DEBIAN_PYTHON_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
math(EXPR python_after "${Python3_VERSION_MINOR} + 1")
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS
  "${library_package} (= ${PROJECT_VERSION}), python3 (>= 3.${Python3_VERSION_MINOR}), python3 (<< 3.${python_after})")
set(CPACK_COMPONENT_PYTHON_DESCRIPTION "Exact checks of and searches for solutions of integer linear problems: Python package")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Where dpkg-shlibdeps finds the shared library of another package of this build.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${PROJECT_BINARY_DIR}")
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
include(CPack)
