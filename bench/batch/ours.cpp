#include "call.hpp"
#include "contenders.hpp"
#include "transforms.hpp"

namespace bench {

namespace {

namespace batch = tfmgen::batch;

template <class T>
const batch::Family& familyOf(Family family) {
  constexpr bool isSingle = sizeof(T) == sizeof(float);
  switch (family) {
  case Family::complexForward: return isSingle ? batch::kDFTFwd_CToC_32fc : batch::kDFTFwd_CToC_64fc;
  case Family::realForward: return isSingle ? batch::kDFTFwd_RToCCS_32f : batch::kDFTFwd_RToCCS_64f;
  case Family::realInverse: return isSingle ? batch::kDFTInv_CCSToR_32f : batch::kDFTInv_CCSToR_64f;
  case Family::hartley: break;
  }
  return isSingle ? batch::kHartley_32f : batch::kHartley_64f;
}

TfmbLayout layout(const CaseId& id, int length) {
  return id.arrangement == Arrangement::contiguous ? TfmbLayout{1, length} : TfmbLayout{id.count, 1};
}

} // namespace

template <class T>
void addOurs(const CaseId& id, const Arena<T>& arena, std::vector<Contender>& contenders) {
  const batch::Family& family = familyOf<T>(id.family);
  const int in = batch::sourceLength(family.transform, family.format, id.n);
  const int out = batch::destinationLength(family.transform, family.format, id.n);
  const auto add = [&](const std::string& name, int bytes) {
    contenders.push_back({name, [=, &family, src = arena.src(), dst = arena.dst()] {
                            batch::call(family, src, layout(id, in), dst, layout(id, out), id.n, id.count, TFM_NO_DIV,
                                        bytes);
                          }});
  };
  if (id.arrangement == Arrangement::contiguous) {
    // A loop as a caller would write it.
    contenders.push_back({"single", [=, &family, src = arena.src(), dst = arena.dst()] {
                            const auto bytes = static_cast<std::ptrdiff_t>(family.elementBytes);
                            const auto* from = reinterpret_cast<const std::byte*>(src);
                            auto* to = reinterpret_cast<std::byte*>(dst);
                            for (int f = 0; f < id.count; ++f) {
                              family.single(from + f * in * bytes, to + f * out * bytes, id.n, TFM_NO_DIV);
                            }
                          }});
  } else {
    add("single", 0); // each frame gathered, transformed and scattered
  }
  for (const int bytes : batch::kWidths) {
    if (bytes <= batch::widest()) {
      add("batch-" + std::to_string(8 * bytes), bytes);
    }
  }
}

template void addOurs<float>(const CaseId&, const Arena<float>&, std::vector<Contender>&);
template void addOurs<double>(const CaseId&, const Arena<double>&, std::vector<Contender>&);

} // namespace bench
