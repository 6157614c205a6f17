#include "slower.hpp"

#include <map>
#include <set>

namespace tfmgen::family {

namespace {

// On a Zen 5 core, mostly where calls wait for each other: by 3 to 18 percent. Of odd lengths the format Pack stands
// for Perm.
const std::map<Level, std::set<std::string>> kSlower{
    {Level::v3,
     {"DFTFwd_RToCCS_22_64f", "DFTFwd_RToCCS_27_64f", "DFTFwd_RToPack_27_64f", "DFTFwd_RToPack_32_64f",
      "DFTFwd_RToPack_35_64f", "DFTFwd_RToPerm_20_32f", "DFTInv_CCSToR_20_32f", "DFTInv_PackToR_20_32f",
      "DFTInv_PermToR_20_32f", "DFTInv_CCSToR_24_32f", "DFTInv_PackToR_24_32f", "DFTInv_PermToR_24_32f",
      "DFTFwd_CToC_20_64fc", "DFTFwd_CToC_55_64fc", "DFTFwd_CToC_63_64fc", "DFTInv_CToC_20_64fc", "DFTInv_CToC_30_64fc",
      "DFTInv_CToC_63_64fc", "DFTInv_PackToR_14_32f"}},
    {Level::v4, {"DFTFwd_CToC_20_64fc",   "DFTInv_CToC_20_64fc",   "DFTFwd_CToC_22_64fc",   "DFTInv_CToC_22_64fc",
                 "DFTFwd_CToC_25_64fc",   "DFTInv_CToC_25_64fc",   "DFTFwd_CToC_30_64fc",   "DFTInv_CToC_30_64fc",
                 "DFTFwd_RToPack_27_64f", "DFTFwd_RToPack_30_64f", "DFTFwd_RToPerm_30_64f", "DFTFwd_RToPack_32_64f",
                 "DFTInv_PackToR_28_64f", "DFTInv_PackToR_30_64f", "DFTInv_CCSToR_20_32f",  "DFTInv_PackToR_20_32f",
                 "DFTInv_PermToR_20_32f", "DFTInv_CCSToR_24_32f",  "DFTInv_PackToR_24_32f", "DFTInv_PermToR_24_32f"}}};

} // namespace

bool isMeasuredSlower(Level level, const std::string& routine) {
  return kSlower.at(level).contains(routine);
}

} // namespace tfmgen::family
