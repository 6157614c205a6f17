#include "frame/dispatch.hpp"

TFMGEN_DEFINE_DISPATCHER(DFTFwd_CToC, 64fc, Tfm64fc)
TFMGEN_DEFINE_DISPATCHER(DFTInv_CToC, 64fc, Tfm64fc)
