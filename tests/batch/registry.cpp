#include "registry.hpp"

#include "transforms.hpp"

#include <stdexcept>

namespace tfmgen::test {
namespace {

template <class Sample,
          TfmStatus (*entry)(const Sample*, TfmbLayout, Sample*, TfmbLayout, std::int32_t, std::int64_t, std::int32_t)>
TfmStatus call(const void* src, TfmbLayout srcLayout, void* dst, TfmbLayout dstLayout, std::int32_t len,
               std::int64_t count, std::int32_t flag) {
  return entry(static_cast<const Sample*>(src), srcLayout, static_cast<Sample*>(dst), dstLayout, len, count, flag);
}

const Family& singleFamily(const std::string& name) {
  for (const Family& family : families()) {
    if (family.name == name) {
      return family;
    }
  }
  throw std::logic_error("no single call named " + name);
}

} // namespace

const std::vector<BatchFamily>& batchFamilies() {
#define TFMBATCH_TEST_FAMILY(name, suffix, Sample, transform, format)                                                  \
  {"tfmb" #name "_" #suffix, batch::k##name##_##suffix, call<Sample, tfmb##name##_##suffix>,                           \
   singleFamily("tfmg" #name "_" #suffix)},
  static const std::vector<BatchFamily> all = {TFMBATCH_FOR_EACH_FAMILY(TFMBATCH_TEST_FAMILY)};
  return all;
}

} // namespace tfmgen::test
