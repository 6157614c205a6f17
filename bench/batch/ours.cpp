#include "call.hpp"
#include "contenders.hpp"
#include "transforms.hpp"

namespace bench {

namespace {

namespace batch = tfmgen::batch;

template <class T>
struct Ours {
  const batch::Family& family;
  TfmStatus (*call)(const T*, TfmbLayout, T*, TfmbLayout, std::int32_t, std::int64_t, std::int32_t);
};

// Complex arrays as arrays of their parts.
template <class T, class Sample,
          TfmStatus (*entry)(const Sample*, TfmbLayout, Sample*, TfmbLayout, std::int32_t, std::int64_t, std::int32_t)>
TfmStatus byParts(const T* src, TfmbLayout srcLayout, T* dst, TfmbLayout dstLayout, std::int32_t len,
                  std::int64_t count, std::int32_t flag) {
  return entry(reinterpret_cast<const Sample*>(src), srcLayout, reinterpret_cast<Sample*>(dst), dstLayout, len, count,
               flag);
}

template <class T>
Ours<T> oursOf(Family family);

template <>
Ours<float> oursOf(Family family) {
  switch (family) {
  case Family::complexForward: return {batch::kDFTFwd_CToC_32fc, byParts<float, Tfm32fc, tfmbDFTFwd_CToC_32fc>};
  case Family::realForward: return {batch::kDFTFwd_RToCCS_32f, tfmbDFTFwd_RToCCS_32f};
  case Family::realInverse: return {batch::kDFTInv_CCSToR_32f, tfmbDFTInv_CCSToR_32f};
  case Family::hartley: break;
  }
  return {batch::kHartley_32f, tfmbHartley_32f};
}

template <>
Ours<double> oursOf(Family family) {
  switch (family) {
  case Family::complexForward: return {batch::kDFTFwd_CToC_64fc, byParts<double, Tfm64fc, tfmbDFTFwd_CToC_64fc>};
  case Family::realForward: return {batch::kDFTFwd_RToCCS_64f, tfmbDFTFwd_RToCCS_64f};
  case Family::realInverse: return {batch::kDFTInv_CCSToR_64f, tfmbDFTInv_CCSToR_64f};
  case Family::hartley: break;
  }
  return {batch::kHartley_64f, tfmbHartley_64f};
}

TfmbLayout layout(const CaseId& id, int length) {
  return id.arrangement == Arrangement::contiguous ? TfmbLayout{1, length} : TfmbLayout{id.count, 1};
}

} // namespace

template <class T>
void addOurs(const CaseId& id, const Arena<T>& arena, std::vector<Contender>& contenders) {
  const Ours<T> ours = oursOf<T>(id.family);
  const batch::Family& family = ours.family;
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
                            for (std::ptrdiff_t f = 0; f < id.count; ++f) {
                              family.single(from + f * in * bytes, to + f * out * bytes, id.n, TFM_NO_DIV);
                            }
                          }});
  } else {
    add("single", 0); // each frame gathered, transformed and scattered
  }
  bool isWidest = true;
  for (const int bytes : batch::kWidths) {
    if (!batch::processorHas(bytes)) {
      continue;
    }
    const std::string name = "batch-" + std::to_string(8 * bytes);
    if (isWidest) { // as a caller sees it
      contenders.push_back({name, [=, src = arena.src(), dst = arena.dst()] {
                              ours.call(src, layout(id, in), dst, layout(id, out), id.n, id.count, TFM_NO_DIV);
                            }});
    } else {
      add(name, bytes);
    }
    isWidest = false;
  }
}

template void addOurs<float>(const CaseId&, const Arena<float>&, std::vector<Contender>&);
template void addOurs<double>(const CaseId&, const Arena<double>&, std::vector<Contender>&);

} // namespace bench
