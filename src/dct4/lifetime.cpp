// The exported functions that price, make and end a plan.
#include "build.hpp"
#include "sizing.hpp"
#include "tfmcore.h"

namespace tfmgen::dct4 {
namespace {

// Sets the arena up at the start of the buffer, with its first record on a 32-byte boundary behind the word. The
// boundary is found with the low half of the address as a signed number, remainder included: an unaligned buffer whose
// low half is negative starts its records up to 31 bytes later than others.
TfmgArena* startArena(void* buffer) {
  const auto address = reinterpret_cast<std::uintptr_t>(buffer);
  const std::int32_t remainder = static_cast<std::int32_t>(static_cast<std::uint32_t>(address)) % 32;
  auto* arena = static_cast<TfmgArena*>(buffer);
  arena->next = address + 64U - static_cast<std::uintptr_t>(std::intptr_t{remainder});
  return arena;
}

// Everything but the block itself, in bookkeeping only.
void giveBackPlan(TfmgDCT4Plan* plan) {
  plan->head.item.release(&plan->head.item);
  tfmgArenaGiveBack(plan->head.arena, plan, plan->head.item.byteSize);
}

template <class T>
TfmStatus getSize(std::int32_t length, std::int32_t* size) {
  const std::int32_t bytes = planBytes<T>(length);
  if (bytes < 0) {
    return tfmStsBadSize;
  }
  *size = bytes;
  return tfmStsOk;
}

template <class T>
TfmStatus init(TfmgDCT4Plan** result, std::int32_t length, void* buffer) {
  if (result == nullptr || buffer == nullptr) {
    return tfmStsNullPtr;
  }
  TfmgDCT4Plan* plan = createPlan<T>(startArena(buffer), length);
  if (const TfmStatus status = build(plan->head); status != tfmStsOk) {
    giveBackPlan(plan);
    return status;
  }
  *result = plan;
  return tfmStsOk;
}

template <class T>
TfmStatus initAlloc(TfmgDCT4Plan** result, std::int32_t length) {
  if (result == nullptr) {
    return tfmStsNullPtr;
  }
  std::int32_t size = 0;
  if (const TfmStatus status = getSize<T>(length, &size); status != tfmStsOk) {
    return status;
  }
  void* buffer = tfmMalloc(size);
  const TfmStatus status = init<T>(result, length, buffer); // a failed allocation is its null buffer
  if (status != tfmStsOk) {
    tfmFree(buffer);
  }
  return status;
}

TfmStatus freePlan(TfmgDCT4Plan* plan) {
  if (plan == nullptr) {
    return tfmStsNullPtr;
  }
  giveBackPlan(plan);
  tfmFree(plan->head.arena); // the arena word is the start of the block
  return tfmStsOk;
}

} // namespace
} // namespace tfmgen::dct4

using namespace tfmgen;

TfmStatus tfmgDCT4GetSize_32f(int32_t length, int32_t* pSize) {
  return dct4::getSize<Tfm32f>(length, pSize);
}
TfmStatus tfmgDCT4GetSize_64f(int32_t length, int32_t* pSize) {
  return dct4::getSize<Tfm64f>(length, pSize);
}

TfmStatus tfmgDCT4Init_32f(TfmgDCT4Plan** ppPlan, int32_t length, void* pBuffer) {
  return dct4::init<Tfm32f>(ppPlan, length, pBuffer);
}
TfmStatus tfmgDCT4Init_64f(TfmgDCT4Plan** ppPlan, int32_t length, void* pBuffer) {
  return dct4::init<Tfm64f>(ppPlan, length, pBuffer);
}

TfmStatus tfmgDCT4InitAlloc_32f(TfmgDCT4Plan** ppPlan, int32_t length) {
  return dct4::initAlloc<Tfm32f>(ppPlan, length);
}
TfmStatus tfmgDCT4InitAlloc_64f(TfmgDCT4Plan** ppPlan, int32_t length) {
  return dct4::initAlloc<Tfm64f>(ppPlan, length);
}

TfmStatus tfmgDCT4Free_32f(TfmgDCT4Plan* pPlan) {
  return dct4::freePlan(pPlan);
}
TfmStatus tfmgDCT4Free_64f(TfmgDCT4Plan* pPlan) {
  return dct4::freePlan(pPlan);
}
