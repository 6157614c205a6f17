#include "routine.hpp"

#include "tfmgen.h"

#include <dlfcn.h>

namespace bench {

namespace {

struct Entry {
  Family family;
  const char* name;
  Layout in;
  Layout out;
};

constexpr std::array kEntries{
    Entry{Family::complexForward, "tfmgDFTFwd_CToC", Layout::complex, Layout::complex},
    Entry{Family::complexInverse, "tfmgDFTInv_CToC", Layout::complex, Layout::complex},
    Entry{Family::realForward, "tfmgDFTFwd_RToCCS", Layout::real, Layout::ccs},
    Entry{Family::realForward, "tfmgDFTFwd_RToPack", Layout::real, Layout::pack},
    Entry{Family::realForward, "tfmgDFTFwd_RToPerm", Layout::real, Layout::perm},
    Entry{Family::realInverse, "tfmgDFTInv_CCSToR", Layout::ccs, Layout::real},
    Entry{Family::realInverse, "tfmgDFTInv_PackToR", Layout::pack, Layout::real},
    Entry{Family::realInverse, "tfmgDFTInv_PermToR", Layout::perm, Layout::real},
    Entry{Family::hartley, "tfmgHartley", Layout::real, Layout::real},
};

} // namespace

// Entries are found by name, so that the comparison covers whatever the library under test exports.
template <class T>
void addTfmgen(Family family, int n, const Arrays<T>& arrays, std::vector<Routine>& routines) {
  using Function = TfmStatus(const T*, T*, std::int32_t);
  const std::string type = sizeof(T) == sizeof(float) ? "_32f" : "_64f";
  for (const Entry& entry : kEntries) {
    std::string symbol = entry.name;
    symbol.append("_").append(std::to_string(n)).append(type).append(entry.in == Layout::complex ? "c" : "");
    auto* const function = reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, symbol.c_str()));
    if (entry.family != family || function == nullptr) {
      continue;
    }
    const auto call = [function, src = arrays.src(), dst = arrays.dst()] { function(src, dst, TFM_NO_DIV); };
    routines.push_back({entry.name, "tfmgen", entry.in, entry.out, backToBack(call)});
  }
}

template void addTfmgen(Family, int, const Arrays<float>&, std::vector<Routine>&);
template void addTfmgen(Family, int, const Arrays<double>&, std::vector<Routine>&);

} // namespace bench
