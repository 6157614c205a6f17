# The meaning of the arithmetic, in one place. Results of the library are stated bit for bit: IEEE 754 round to nearest,
# one rounding per operation. Everything that is compiled into a library links one of the targets below, and
# tests/semantics fails when one of these options is lost.
add_library(tfmgen_arithmetic INTERFACE)
target_compile_options(
  tfmgen_arithmetic
  INTERFACE
    -ffp-contract=off # a product is rounded before the next addition
    -fno-fast-math # no reassociation, no assumption about NaN, infinity or the sign of zero
    -fno-math-errno # sine and cosine of table construction set no errno that anyone reads
    $<$<CXX_COMPILER_ID:GNU>:-mfpmath=sse>
    # A scalar stays a scalar: straight-line code of both compilers is otherwise packed into vectors.
    $<$<CXX_COMPILER_ID:GNU>:-fno-tree-vectorize;-fno-tree-slp-vectorize>
    $<$<CXX_COMPILER_ID:Clang>:-fno-vectorize;-fno-slp-vectorize>)

# The default library: 128-bit registers and the baseline of x86-64, whatever -march the environment asks for.
add_library(tfmgen_semantics INTERFACE)
target_link_libraries(tfmgen_semantics INTERFACE tfmgen_arithmetic)
target_compile_options(tfmgen_semantics INTERFACE -msse2 -mno-avx -mno-fma)
