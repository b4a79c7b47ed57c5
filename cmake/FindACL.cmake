# Finds libacl, the access lists of files: the target ACL::ACL.

find_path(ACL_INCLUDE_DIR sys/acl.h)
find_library(ACL_LIBRARY acl)
mark_as_advanced(ACL_INCLUDE_DIR ACL_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(ACL REQUIRED_VARS ACL_LIBRARY ACL_INCLUDE_DIR)

if(ACL_FOUND AND NOT TARGET ACL::ACL)
  add_library(ACL::ACL UNKNOWN IMPORTED)
  set_target_properties(ACL::ACL PROPERTIES
    IMPORTED_LOCATION "${ACL_LIBRARY}"
    INTERFACE_INCLUDE_DIRECTORIES "${ACL_INCLUDE_DIR}")
endif()
