# Levels of the x86-64 ABI above the baseline. Each gets a library of its own with the exports and the bits of the default
# one. They lie in lib/glibc-hwcaps/<level>/, where the dynamic loader looks before lib/ when the processor has the level:
# nothing chooses at run time.
set(TFMGEN_LEVELS
    x86-64-v3 x86-64-v4
    CACHE STRING "Levels of x86-64 with a library of their own beside the default one; empty for none")

# The code options of a level. x86-64-v4 is AVX-512 F, BW, CD, DQ and VL; nothing beyond is used.
foreach(level IN LISTS TFMGEN_LEVELS)
  add_library(tfmgen_semantics_${level} INTERFACE)
  target_link_libraries(tfmgen_semantics_${level} INTERFACE tfmgen_arithmetic)
  target_compile_options(tfmgen_semantics_${level} INTERFACE -march=${level})
endforeach()
if(TARGET tfmgen_semantics_x86-64-v4)
  # clang otherwise splits vectors of 64 bytes.
  target_compile_options(tfmgen_semantics_x86-64-v4
                         INTERFACE $<$<CXX_COMPILER_ID:Clang>:-mprefer-vector-width=512>)
endif()

# Where a level's library lies below the folder of the default one.
function(tfmgen_level_folder out level)
  set(${out} glibc-hwcaps/${level} PARENT_SCOPE)
endfunction()
