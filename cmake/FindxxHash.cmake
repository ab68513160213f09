# The library xxHash, as the target xxHash::xxHash.
find_path(xxHash_INCLUDE_DIR xxhash.h)
find_library(xxHash_LIBRARY xxhash)
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(xxHash REQUIRED_VARS xxHash_LIBRARY xxHash_INCLUDE_DIR)
if(xxHash_FOUND AND NOT TARGET xxHash::xxHash)
  add_library(xxHash::xxHash UNKNOWN IMPORTED)
  set_target_properties(xxHash::xxHash PROPERTIES IMPORTED_LOCATION ${xxHash_LIBRARY}
                                                  INTERFACE_INCLUDE_DIRECTORIES ${xxHash_INCLUDE_DIR})
endif()
mark_as_advanced(xxHash_INCLUDE_DIR xxHash_LIBRARY)
