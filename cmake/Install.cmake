# What `cmake --install` puts where. Components: core, tfmgen, batch (the run time of each library), development (headers,
# links for the linker, CMake and pkg-config files), documentation.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

# tfmgen_install_library(<target> COMPONENT <component> DESCRIPTION <text> HEADERS <file>... [REQUIRES <library>...]
#                        [REQUIRES_PRIVATE <library>...])
# Declares what users of a library need, in the build folder and installed: alias, headers, place in the CMake package,
# pkg-config file. REQUIRES are libraries that its header mentions, REQUIRES_PRIVATE those that only its code calls.
function(tfmgen_install_library target)
  cmake_parse_arguments(PARSE_ARGV 1 LIBRARY "" "COMPONENT;DESCRIPTION" "HEADERS;REQUIRES;REQUIRES_PRIVATE")
  add_library(tfmgen::${target} ALIAS ${target})
  foreach(header IN LISTS LIBRARY_HEADERS)
    cmake_path(GET header PARENT_PATH folder)
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${folder}>)
  endforeach()
  target_include_directories(${target} PUBLIC $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  # INSTALL_RPATH: the libraries lie beside one another.
  set_target_properties(
    ${target} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} INSTALL_RPATH "$ORIGIN"
                         PUBLIC_HEADER "${LIBRARY_HEADERS}")
  if(NOT TFMGEN_INSTALL)
    return()
  endif()
  install(
    TARGETS ${target} EXPORT tfmgen
    LIBRARY COMPONENT ${LIBRARY_COMPONENT} NAMELINK_COMPONENT development
    PUBLIC_HEADER COMPONENT development)

  # The prefix is told from where the file lies, so that an installation can be moved.
  set(folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  file(RELATIVE_PATH prefix /${folder} /)
  list(JOIN LIBRARY_REQUIRES ", " requires)
  list(JOIN LIBRARY_REQUIRES_PRIVATE ", " requires_private)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/library.pc.in ${PROJECT_BINARY_DIR}/pkgconfig/${target}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/pkgconfig/${target}.pc DESTINATION ${folder} COMPONENT development)
endfunction()

# The CMake package of all libraries, installed and in the build folder.
function(tfmgen_install_package)
  set(folder ${CMAKE_INSTALL_LIBDIR}/cmake/tfmgen)
  set(targets tfmgenTargets.cmake)
  install(EXPORT tfmgen NAMESPACE tfmgen:: FILE ${targets} DESTINATION ${folder} COMPONENT development)
  export(EXPORT tfmgen NAMESPACE tfmgen:: FILE ${PROJECT_BINARY_DIR}/${targets})
  configure_file(${PROJECT_SOURCE_DIR}/cmake/tfmgenConfig.cmake ${PROJECT_BINARY_DIR}/tfmgenConfig.cmake COPYONLY)
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/tfmgenConfigVersion.cmake COMPATIBILITY SameMajorVersion)
  install(FILES ${PROJECT_BINARY_DIR}/tfmgenConfig.cmake ${PROJECT_BINARY_DIR}/tfmgenConfigVersion.cmake
          DESTINATION ${folder} COMPONENT development)
endfunction()
