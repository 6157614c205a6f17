# tfmgen_generate(OUT FAMILY COUNT [REGISTERS]): COUNT source files of a family's kernels, made by the generator in the
# current build folder. Their names are put in OUT. Equal amounts of arithmetic go into each file, so that cores share the
# work. Kernels are those of the level TFMGEN_LEVEL; such as are compiled for several widths are made for a number of
# registers.
function(tfmgen_generate out family count)
  set(directory ${CMAKE_CURRENT_BINARY_DIR}/generated${ARGN})
  math(EXPR last "${count} - 1")
  foreach(i RANGE ${last})
    list(APPEND files ${directory}/${family}_${i}.cpp)
  endforeach()
  add_custom_command(
    OUTPUT ${files}
    COMMAND tfmgen-generator ${family} ${directory} ${count} ${TFMGEN_LEVEL} ${ARGN}
    DEPENDS tfmgen-generator
    COMMENT "Generating ${family} kernels ${TFMGEN_LEVEL}"
    VERBATIM)
  set(${out} ${files} PARENT_SCOPE)
endfunction()
