# run(STATUS ARGUMENT...): runs ${PROGRAM} in ${dir}, which the caller has named, and wants this exit status, and a word
# on the error output with any but 0. What it printed is in `out`.
function(run expected)
  get_filename_component(name ${PROGRAM} NAME)
  execute_process(COMMAND ${PROGRAM} ${ARGN} WORKING_DIRECTORY ${dir} RESULT_VARIABLE status OUTPUT_VARIABLE out
                  ERROR_VARIABLE err)
  if(NOT status EQUAL expected)
    message(FATAL_ERROR "${name} ${ARGN}: exit status ${status}, not ${expected}: ${err}")
  endif()
  if(NOT expected EQUAL 0 AND err STREQUAL "")
    message(FATAL_ERROR "${name} ${ARGN}: fails without a word")
  endif()
  set(out "${out}" PARENT_SCOPE)
endfunction()
