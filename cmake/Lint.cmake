# Target `lint`: clang-tidy over every source of this build but the generated ones, which are thousands of lines of
# arithmetic, and clang-format over every file. A source that is compiled for several levels is read once.
find_program(RUN_CLANG_TIDY NAMES run-clang-tidy run-clang-tidy-14)
find_program(JQ jq)
find_program(CLANG_FORMAT NAMES clang-format clang-format-14)
if(NOT RUN_CLANG_TIDY OR NOT CLANG_FORMAT OR NOT JQ)
  message(STATUS "No target lint: clang-tidy, clang-format or jq is not installed")
  return()
endif()
if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  return() # its options are not all known to clang-tidy
endif()

file(
  GLOB_RECURSE formatted
  RELATIVE ${PROJECT_SOURCE_DIR}
  CONFIGURE_DEPENDS
  batch/*.[ch]pp
  bench/*.[ch]pp
  core/*.[ch]*
  examples/*.[ch]pp
  generator/*.[ch]pp
  include/*.h*
  src/*.[ch]pp
  tests/*.[ch]*)
list(FILTER formatted INCLUDE REGEX "\\.([ch]|[ch]pp)$")

set(handwritten "map(select(.file | startswith(\"${PROJECT_BINARY_DIR}/\") | not)) | unique_by(.file)")
set(database ${PROJECT_BINARY_DIR}/lint/compile_commands.json)
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/lint)

add_custom_target(
  lint
  COMMAND ${CLANG_FORMAT} --dry-run -Werror ${formatted}
  COMMAND ${JQ} ${handwritten} ${PROJECT_BINARY_DIR}/compile_commands.json > ${database}
  COMMAND ${RUN_CLANG_TIDY} -quiet -p ${PROJECT_BINARY_DIR}/lint
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  COMMENT "clang-format and clang-tidy"
  USES_TERMINAL VERBATIM)
