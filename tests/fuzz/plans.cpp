// Sequences of calls on plans of the DCT-IV: built in buffers of every origin, built anew in the same buffer, refused,
// used in place and not, ended. Every result is compared with that of a fresh plan.
#include "dct4.hpp"
#include "guarded.hpp"
#include "plan_lengths.hpp"
#include "tfmcore.h"

#include <optional>
#include <vector>

namespace tfmgen::test {
namespace {

constexpr std::size_t kMaxDisplacement = 64;

// Who gave the buffer of a plan, and so how it ends.
enum class Origin { library, core, caller };

// A buffer of the caller, closed behind `bytes` and what its address makes a build take besides.
class Buffer {
public:
  Buffer(std::size_t bytes, std::size_t displacement) : memory_(bytes + displacement + 32) {
    std::byte* const begin = memory_.all().data() + displacement;
    bytes_ = bytes + planShift(begin);
    begin_ = memory_.array(bytes_, Edge::start, displacement);
  }
  [[nodiscard]] std::byte* begin() const { return begin_; }
  [[nodiscard]] std::size_t bytes() const { return bytes_; }

  // What lies around the buffer is as it was made.
  [[nodiscard]] bool intactAround() {
    const auto all = memory_.all();
    const auto made = [](std::byte b) { return b == std::byte{0xFF}; };
    return std::all_of(all.data(), begin_, made) && std::all_of(begin_ + bytes_, all.data() + all.size(), made);
  }

private:
  GuardedMemory memory_;
  std::size_t bytes_ = 0;
  std::byte* begin_ = nullptr;
};

template <class T>
class Shelf {
public:
  Shelf() = default;
  Shelf(const Shelf&) = delete;
  Shelf& operator=(const Shelf&) = delete;
  ~Shelf() {
    for (Slot& slot : slots_) {
      end(slot);
    }
  }

  void step(Input& input) {
    Slot& slot = slots_[input.below(slots_.size())];
    switch (input.below(8)) {
    case 0: return allocate(slot, input);
    case 1: return buildInCore(slot, input);
    case 2: return build(slot, input);
    case 3: return rebuild(slot, input);
    case 4: return end(slot);
    default: return transform(slot, input);
    }
  }

private:
  using Api = Dct4<T>;

  struct Slot {
    TfmgDCT4Plan* plan = nullptr;
    std::int32_t length = 0;
    Origin origin = Origin::library;
    std::optional<Buffer> buffer;
  };

  // The length of a plan to be built here; of lengths that are refused, one whose build is short.
  static std::int32_t lengthToBuild(Input& input) {
    const std::int32_t length = anyPlanLength(input);
    return length > kLongestBuilt ? length % kLongestBuilt : length;
  }

  static void end(Slot& slot) {
    if (slot.buffer) {
      require(slot.buffer->intactAround(), "nothing written outside of the buffer");
    }
    if (slot.plan != nullptr && slot.origin != Origin::caller) {
      require(Api::free(slot.plan) == tfmStsOk, "the end of a plan");
    }
    slot.buffer.reset();
    slot.plan = nullptr;
    slot.origin = Origin::library;
  }

  static void allocate(Slot& slot, Input& input) {
    end(slot);
    std::int32_t length = anyPlanLength(input);
    if (dct4Accepts<T>(length) && length > kLongestBuilt) {
      length = 2;
    }
    require(Api::initAlloc(&slot.plan, length) == (dct4Accepts<T>(length) ? tfmStsOk : tfmStsBadSize),
            "the accepted lengths");
    require((slot.plan != nullptr) == dct4Accepts<T>(length), "a plan of an accepted length only");
    slot.length = length;
  }

  // In a block of the core library, which a plan may be ended with as if the library had allocated it.
  static void buildInCore(Slot& slot, Input& input) {
    end(slot);
    const std::int32_t length = lengthToBuild(input);
    void* const block = tfmMalloc(static_cast<std::int32_t>(planBytes<T>(length)));
    init(slot, length, block);
    slot.origin = Origin::core;
    if (slot.plan == nullptr) {
      tfmFree(block);
    }
  }

  static void build(Slot& slot, Input& input) {
    end(slot);
    const std::int32_t length = lengthToBuild(input);
    slot.buffer.emplace(static_cast<std::size_t>(planBytes<T>(length)), input.below(kMaxDisplacement));
    init(slot, length, slot.buffer->begin());
    slot.origin = Origin::caller;
  }

  // Where the plan before it was, if the buffer is large enough.
  static void rebuild(Slot& slot, Input& input) {
    const std::int32_t length = lengthToBuild(input);
    if (!slot.buffer ||
        static_cast<std::size_t>(planBytes<T>(length)) + planShift(slot.buffer->begin()) > slot.buffer->bytes()) {
      return;
    }
    slot.plan = nullptr;
    init(slot, length, slot.buffer->begin());
  }

  static void init(Slot& slot, std::int32_t length, void* buffer) {
    const bool accepted = dct4Accepts<T>(length);
    require(Api::init(&slot.plan, length, buffer) == (accepted ? tfmStsOk : tfmStsBadSize), "the accepted lengths");
    require((slot.plan != nullptr) == accepted, "a refusal leaves the place of the plan");
    slot.length = length;
  }

  static void transform(Slot& slot, Input& input) {
    if (slot.plan == nullptr) {
      require(Api::run(nullptr, nullptr, nullptr) == tfmStsNullPtr, "no null pointers");
      return;
    }
    // A plan of an odd length reaches one sample more, and leaves some as they are.
    const std::size_t bytes = sizeof(T) * ((static_cast<std::size_t>(slot.length) + 1) / 2 * 2);
    const std::size_t displacement = input.below(kMaxDisplacement);
    GuardedMemory sourceMemory(bytes + kMaxDisplacement);
    GuardedMemory destinationMemory(bytes + kMaxDisplacement);
    const Edge edge = input.once(2) ? Edge::start : Edge::end;
    std::byte* const src = sourceMemory.array(bytes, edge, displacement);
    fillWithReals<T>({src, bytes}, input);
    std::byte* const dst = input.once(2) ? src : destinationMemory.array(bytes, edge, input.below(kMaxDisplacement));
    std::copy(src, src + bytes, dst);
    const std::vector<std::byte> source(src, src + bytes);
    const std::vector<std::byte> expected = freshResult(slot.length, source);
    const std::vector<std::byte> before = codeletPlan(slot);

    require(run(src, dst, slot.plan) == tfmStsOk, "success of a plan");
    require(sameReals<T>(expected, {dst, bytes}), "the bits of a fresh plan");
    require(dst == src || std::equal(source.begin(), source.end(), src), "a source that is only read");
    require(before == codeletPlan(slot), "a plan of a codelet that is only read");
  }

  static TfmStatus run(const std::byte* src, std::byte* dst, TfmgDCT4Plan* plan) {
    return Api::run(reinterpret_cast<const T*>(src), reinterpret_cast<T*>(dst), plan);
  }

  // Of a plan of the library's own, into a copy of the source.
  static std::vector<std::byte> freshResult(std::int32_t length, const std::vector<std::byte>& source) {
    std::vector<std::byte> result = source;
    TfmgDCT4Plan* plan = nullptr;
    require(Api::initAlloc(&plan, length) == tfmStsOk, "a fresh plan");
    require(run(source.data(), result.data(), plan) == tfmStsOk, "success of a fresh plan");
    require(Api::free(plan) == tfmStsOk, "the end of a fresh plan");
    return result;
  }

  // The caller's buffer, where calls do not write into it.
  static std::vector<std::byte> codeletPlan(const Slot& slot) {
    const bool codelet = slot.length <= 32 && slot.length % 2 == 0;
    return slot.buffer && codelet
               ? std::vector<std::byte>(slot.buffer->begin(), slot.buffer->begin() + slot.buffer->bytes())
               : std::vector<std::byte>{};
  }

  std::array<Slot, 3> slots_;
};

} // namespace
} // namespace tfmgen::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tfmgen::test::Input input({data, size});
  tfmgen::test::Shelf<Tfm32f> shelf32f;
  tfmgen::test::Shelf<Tfm64f> shelf64f;
  while (!input.empty()) {
    input.once(2) ? shelf32f.step(input) : shelf64f.step(input);
  }
  return 0;
}
