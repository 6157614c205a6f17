# tfmgen_generate(OUT FAMILY COUNT [REGISTERS]): COUNT source files of a family's kernels, made by the generator in the
# current build folder. Their names are put in OUT. Equal amounts of arithmetic go into each file, so that cores share the
# work. Such as are compiled for several widths are made for a number of registers.
#
# Kernels are those of the level TFMGEN_LEVEL. Where there is one, OUT_left are the files of those that are the same as in
# the default library, as few of them as there is code.
function(tfmgen_generate out family count)
  set(directory ${CMAKE_CURRENT_BINARY_DIR}/generated${ARGN})
  tfmgen_numbered_files(made ${directory}/${family} ${count})
  set(left "")
  set(left_count "")
  if(TFMGEN_LEVEL)
    math(EXPR left_count "${count} / 4")
    tfmgen_numbered_files(left ${directory}/${family}_left ${left_count})
  endif()
  add_custom_command(
    OUTPUT ${made} ${left}
    COMMAND tfmgen-generator ${family} ${directory} ${count} ${TFMGEN_LEVEL} ${left_count} ${ARGN}
    DEPENDS tfmgen-generator
    COMMENT "Generating ${family} kernels ${TFMGEN_LEVEL}"
    VERBATIM)
  set(${out} ${made} PARENT_SCOPE)
  set(${out}_left ${left} PARENT_SCOPE)
endfunction()

function(tfmgen_numbered_files out name count)
  math(EXPR last "${count} - 1")
  foreach(i RANGE ${last})
    list(APPEND files ${name}_${i}.cpp)
  endforeach()
  set(${out} ${files} PARENT_SCOPE)
endfunction()
