# Debian packages by CPack: cmake --workflow --preset package makes build/package/*.deb. The preset installs to /usr and
# leaves RUNPATH out: the loader's own configuration finds packaged libraries.
find_program(DPKG_GENSYMBOLS dpkg-gensymbols REQUIRED) # Debian: dpkg-dev

# The default is no address at all (RFC 2606): who gives packages away names somebody who answers.
set(TFMGEN_MAINTAINER
    "tfmgen maintainers <maintainers@tfmgen.invalid>"
    CACHE STRING "Maintainer of the packages, as Name <address>")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT ${TFMGEN_MAINTAINER})
set(CPACK_PACKAGE_VENDOR tfmgen)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "short linear transforms of fixed length") # first line of every description
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL "")
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(packages ${PROJECT_BINARY_DIR}/packages)

# Compressed without a name and a time: the same bytes every time.
find_program(GZIP gzip REQUIRED)
add_custom_command(
  OUTPUT ${packages}/changelog.gz
  COMMAND ${CMAKE_COMMAND} -E make_directory ${packages}
  COMMAND ${GZIP} -9nc ${PROJECT_SOURCE_DIR}/packaging/changelog > ${packages}/changelog.gz
  DEPENDS ${PROJECT_SOURCE_DIR}/packaging/changelog
  VERBATIM)
set(package_files ${packages}/changelog.gz)

# CPack reads variables of this folder: macros set them.

# tfmgen_package(<component> <package> SECTION <section> SUMMARY <line> DESCRIPTION <text> [DEPENDS <dependencies>])
macro(tfmgen_package component package)
  cmake_parse_arguments(PACKAGE "" "SECTION;SUMMARY;DESCRIPTION;DEPENDS" "" ${ARGN})
  string(TOUPPER ${component} name)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_DEBIAN_${name}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${name}_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_${name}_PACKAGE_SECTION ${PACKAGE_SECTION})
  set(CPACK_DEBIAN_${name}_PACKAGE_DEPENDS ${PACKAGE_DEPENDS})
  set(CPACK_DEBIAN_${name}_DESCRIPTION "This is ${PACKAGE_SUMMARY}.\n.\n${PACKAGE_DESCRIPTION}")
  install(FILES ${packages}/changelog.gz DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${package} COMPONENT ${component})
endmacro()

# tfmgen_library_package(<target> <component> SUMMARY <line> DESCRIPTION <text> [DEPENDS <dependencies>]): the package of
# a library. `shlibs` and `symbols` tell packages of its users what to depend on. CPack adds scripts that run ldconfig when
# the package comes and goes; `triggers` have it run once more when all packages are there.
macro(tfmgen_library_package target component)
  set(package lib${target}${PROJECT_VERSION_MAJOR})
  set(control ${packages}/${package})
  tfmgen_package(${component} ${package} SECTION libs ${ARGN})
  file(WRITE ${control}/shlibs "lib${target} ${PROJECT_VERSION_MAJOR} ${package} (>= ${PROJECT_VERSION})\n")
  file(WRITE ${control}/triggers "activate-noawait ldconfig\n")
  add_custom_command(
    OUTPUT ${control}/symbols
    COMMAND ${DPKG_GENSYMBOLS} -q -p${package} -v${PROJECT_VERSION} -e$<TARGET_FILE:${target}> -O${control}/symbols
    DEPENDS ${target}
    VERBATIM)
  list(APPEND package_files ${control}/symbols)
  set(CPACK_DEBIAN_${name}_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_${name}_PACKAGE_CONTROL_EXTRA ${control}/shlibs ${control}/symbols ${control}/triggers)
endmacro()

set(same_version "(= ${PROJECT_VERSION})")
tfmgen_library_package(
  tfmcore core
  SUMMARY "the memory of the libraries"
  DESCRIPTION "The functions by which the tfm libraries get and free memory. A program may\nsupply its own.")
tfmgen_library_package(
  tfmgen tfmgen
  SUMMARY "the library of single transforms"
  DEPENDS "libtfmcore6 (>= ${PROJECT_VERSION})"
  DESCRIPTION
  "Complex and real DFT and Hartley transform of every length from 2 to 64,\nWalsh-Hadamard transform of up to 8192 \
samples, DCT-IV of powers of two, for\nsamples of 32 and 64 bits: a routine of straight-line code for each length.\n.\n\
Processors of the levels x86-64-v3 and x86-64-v4 get libraries of their own\nwith the same results.")
set(libraries "libtfmcore6 ${same_version}, libtfmgen6 ${same_version}")
if(TARGET tfmbatch)
  tfmgen_library_package(
    tfmbatch batch
    SUMMARY "the library of many transforms in one call"
    DEPENDS "libtfmgen6 (>= ${PROJECT_VERSION})"
    DESCRIPTION
    "The transforms of libtfmgen on many frames at a time, with the same results,\nat the width of the processor's registers.")
  string(APPEND libraries ", libtfmbatch6 ${same_version}")
endif()
tfmgen_package(
  development tfmgen-dev
  SECTION libdevel
  SUMMARY "what programs need to be built with the libraries"
  DEPENDS ${libraries}
  DESCRIPTION "Headers for C and C++20, CMake package and pkg-config files of the tfm\nlibraries.")
if(TARGET docs)
  tfmgen_package(
    documentation tfmgen-doc
    SECTION doc
    SUMMARY "the documentation of the libraries"
    DESCRIPTION "The documentation of the tfm libraries as HTML.")
  set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
  list(APPEND package_files docs)
endif()

add_custom_target(package_files ALL DEPENDS ${package_files})

# Times in the packages are that of the last entry of the changelog, unless the environment says otherwise.
execute_process(COMMAND dpkg-parsechangelog -l ${PROJECT_SOURCE_DIR}/packaging/changelog -S Timestamp
                OUTPUT_VARIABLE CPACK_TFMGEN_TIMESTAMP OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/packaging/timestamp.cmake)
include(CPack)

# What becomes of the packages, each after `cpack`: unpacks and uses them; compiles and packs once more elsewhere; installs
# them into a bare Debian, uses and removes them.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(tests ${PROJECT_SOURCE_DIR}/tests)
function(tfmgen_package_check name)
  add_custom_target(
    ${name}
    COMMAND ${CMAKE_COMMAND} -E env PYTHONDONTWRITEBYTECODE=1 PYTHONPATH=${tests}/support ${Python3_EXECUTABLE}
            ${tests}/packages/${name}.py ${ARGN}
    USES_TERMINAL VERBATIM)
endfunction()
tfmgen_package_check(check_packages ${PROJECT_BINARY_DIR} ${CMAKE_C_COMPILER} ${CMAKE_CXX_COMPILER})
tfmgen_package_check(check_reproducible ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR})
tfmgen_package_check(check_system ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR})
