#include "frame/dispatch.hpp"

#define TFMGEN_DEFINE_DISPATCHERS(family)                                                                              \
  TFMGEN_DEFINE_DISPATCHER(family, 32f, Tfm32f)                                                                        \
  TFMGEN_DEFINE_DISPATCHER(family, 64f, Tfm64f)

TFMGEN_DEFINE_DISPATCHERS(DFTFwd_RToCCS)
TFMGEN_DEFINE_DISPATCHERS(DFTFwd_RToPack)
TFMGEN_DEFINE_DISPATCHERS(DFTFwd_RToPerm)
TFMGEN_DEFINE_DISPATCHERS(DFTInv_CCSToR)
TFMGEN_DEFINE_DISPATCHERS(DFTInv_PackToR)
TFMGEN_DEFINE_DISPATCHERS(DFTInv_PermToR)
TFMGEN_DEFINE_DISPATCHERS(Hartley)
