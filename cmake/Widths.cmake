# The widths of registers that code may be compiled for, in bytes, and their options in one place: for each an interface
# library tfmgen_width_BYTES with the meaning of the library's arithmetic, and its number of registers in
# TFMGEN_REGISTERS_BYTES. A processor must have all that a width says here before such code runs.
foreach(width IN ITEMS 16 32 64)
  add_library(tfmgen_width_${width} INTERFACE)
endforeach()

target_link_libraries(tfmgen_width_16 INTERFACE tfmgen_semantics)
set(TFMGEN_REGISTERS_16 16)

target_link_libraries(tfmgen_width_32 INTERFACE tfmgen_arithmetic)
target_compile_options(tfmgen_width_32 INTERFACE -mavx2 -mno-fma)
set(TFMGEN_REGISTERS_32 16)

# The instructions of AVX-512 F include fused operations: that none is formed is a matter of tfmgen_arithmetic.
target_link_libraries(tfmgen_width_64 INTERFACE tfmgen_arithmetic)
target_compile_options(tfmgen_width_64 INTERFACE -mavx512f -mavx512bw -mavx512dq -mavx512vl -mprefer-vector-width=512)
set(TFMGEN_REGISTERS_64 32)
