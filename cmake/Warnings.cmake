# Warnings are errors in the presets that developers and CI use, never for those who merely build the library.
option(TFMGEN_WERROR "Treat warnings as errors" OFF)

add_library(tfmgen_warnings INTERFACE)
target_compile_options(tfmgen_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion
                                                 $<$<BOOL:${TFMGEN_WERROR}>:-Werror>)
