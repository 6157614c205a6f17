# Target `lint`: clang-tidy over every source of this build but the generated ones, which are thousands of lines of
# arithmetic, and clang-format over every file.
find_program(RUN_CLANG_TIDY NAMES run-clang-tidy run-clang-tidy-14)
find_program(CLANG_FORMAT NAMES clang-format clang-format-14)
if(NOT RUN_CLANG_TIDY OR NOT CLANG_FORMAT)
  message(STATUS "No target lint: clang-tidy or clang-format is not installed")
  return()
endif()
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  return() # its options are not all known to clang-tidy
endif()

file(
  GLOB_RECURSE formatted
  RELATIVE ${PROJECT_SOURCE_DIR}
  CONFIGURE_DEPENDS
  bench/*.[ch]pp
  core/*.[ch]*
  examples/*.[ch]pp
  generator/*.[ch]pp
  include/*.h*
  src/*.[ch]pp
  tests/*.[ch]*)
list(FILTER formatted INCLUDE REGEX "\\.([ch]|[ch]pp)$")

add_custom_target(
  lint
  COMMAND ${CLANG_FORMAT} --dry-run -Werror ${formatted}
  COMMAND ${RUN_CLANG_TIDY} -quiet -p ${PROJECT_BINARY_DIR} "^(?!.*/generated/)"
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  COMMENT "clang-format and clang-tidy"
  USES_TERMINAL VERBATIM)
