#include "routine.hpp"

#include "tfmgen.h"

#include <dlfcn.h>

#include <algorithm>
#include <iterator>

namespace bench {

namespace {

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

std::vector<Entry> entries(Family family) {
  std::vector<Entry> found;
  std::copy_if(kEntries.begin(), kEntries.end(), std::back_inserter(found),
               [=](const Entry& entry) { return entry.family == family; });
  return found;
}

template <class T>
std::string symbol(const Entry& entry, int n) {
  std::string name = entry.name;
  name.append("_").append(std::to_string(n)).append(sizeof(T) == sizeof(float) ? "_32f" : "_64f");
  return name.append(entry.in == Layout::complex ? "c" : "");
}

// Entries are found by name, so that the comparison covers whatever the library under test exports.
template <class T>
void addTfmgen(Family family, int n, const Arrays<T>& arrays, std::vector<Routine>& routines) {
  using Function = TfmStatus(const T*, T*, std::int32_t);
  for (const Entry& entry : entries(family)) {
    auto* const function = reinterpret_cast<Function*>(dlsym(RTLD_DEFAULT, symbol<T>(entry, n).c_str()));
    if (function == nullptr) {
      continue;
    }
    const auto call = [function, src = arrays.src(), dst = arrays.dst()] { function(src, dst, TFM_NO_DIV); };
    routines.push_back({entry.name, "tfmgen", entry.in, entry.out, backToBack(call)});
  }
}

template std::string symbol<float>(const Entry&, int);
template std::string symbol<double>(const Entry&, int);
template void addTfmgen(Family, int, const Arrays<float>&, std::vector<Routine>&);
template void addTfmgen(Family, int, const Arrays<double>&, std::vector<Routine>&);

} // namespace bench
