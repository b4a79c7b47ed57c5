# Finds MPFR and its C++ header mpreal.h (MPFR C++): the target MPFR::MPFR.

find_path(MPFR_INCLUDE_DIR mpfr.h)
find_path(MPREAL_INCLUDE_DIR mpreal.h)
find_library(MPFR_LIBRARY mpfr)
mark_as_advanced(MPFR_INCLUDE_DIR MPREAL_INCLUDE_DIR MPFR_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(MPFR
  REQUIRED_VARS MPFR_LIBRARY MPFR_INCLUDE_DIR MPREAL_INCLUDE_DIR)

if(MPFR_FOUND AND NOT TARGET MPFR::MPFR)
  add_library(MPFR::MPFR UNKNOWN IMPORTED)
  set_target_properties(MPFR::MPFR PROPERTIES
    IMPORTED_LOCATION "${MPFR_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${MPFR_INCLUDE_DIR};${MPREAL_INCLUDE_DIR}")
endif()
