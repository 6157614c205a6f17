// One call of any export with arbitrary arguments: its status by the order of the checks, its results against the same
// transform on plain aligned arrays, and every byte that it has no business with.
#include "dct4.hpp"
#include "families.hpp"
#include "guarded.hpp"
#include "plan_lengths.hpp"
#include "wht.hpp"

#include <functional>
#include <optional>

namespace tfmgen::test {
namespace {

constexpr std::size_t kMaxDisplacement = 64;

// An address that nobody may touch.
template <class T>
T* wild(Input& input) {
  return reinterpret_cast<T*>(std::uintptr_t{input.take<std::uint32_t>()} | 1U); // NOLINT(performance-no-int-to-ptr)
}

std::int32_t anyFlag(Input& input) {
  switch (input.below(8)) {
  case 0: return static_cast<std::int32_t>(input.below(20));
  case 1: return input.take<std::int32_t>();
  default: return kFlags[input.below(std::size(kFlags))];
  }
}

// A size in or around 0 .. last, now and then any.
std::int32_t anySize(Input& input, std::int32_t last) {
  return input.once(8) ? input.take<std::int32_t>()
                       : static_cast<std::int32_t>(input.below(static_cast<std::size_t>(last) + 4)) - 1;
}

using Routine = std::function<TfmStatus(const void* src, void* dst, std::int32_t flag, std::uint8_t* buffer)>;

// A transform of one size, and the call that is tried.
struct Subject {
  bool sizeAccepted = true;
  std::size_t sourceBytes = 0;
  std::size_t destinationBytes = 0;
  std::size_t bufferBytes = 0;
  bool anyOverlap = false; // promised beside equal arrays
  Routine reference = nullptr;
  Routine tried = nullptr;
};

// An array in guarded memory, at a place that the input chooses.
class Watched {
public:
  Watched(std::size_t bytes, Input& input)
      : memory_(bytes + kMaxDisplacement), bytes_(bytes), edge_(input.once(2) ? Edge::start : Edge::end),
        displacement_(input.below(kMaxDisplacement + 1)) {}

  std::byte* array() { return memory_.array(bytes_, edge_, displacement_); }

  // All of the memory as it is now. The array is open again behind the call, and nothing else.
  std::vector<std::byte> contents() {
    const auto all = memory_.all();
    std::vector<std::byte> copy(all.begin(), all.end());
    array();
    return copy;
  }
  std::size_t offsetOf(const std::byte* address) { // within the contents
    const std::byte* const begin = memory_.all().data();
    array();
    return static_cast<std::size_t>(address - begin);
  }

private:
  GuardedMemory memory_;
  std::size_t bytes_;
  Edge edge_;
  std::size_t displacement_;
};

// The result on plain arrays.
template <class Real>
std::vector<std::byte> referenceResult(const Subject& subject, const std::byte* source, std::int32_t flag) {
  constexpr std::size_t room = sizeof(double) << kWhtOrders;
  alignas(64) static std::byte src[room];
  alignas(64) static std::byte dst[room];
  std::memcpy(src, source, subject.sourceBytes);
  require(subject.reference(src, dst, flag, nullptr) == tfmStsOk, "success on plain arrays");
  return {dst, dst + subject.destinationBytes};
}

template <class Real>
void trySuccess(const Subject& subject, std::int32_t flag, Input& input) {
  std::vector<Watched> memories;
  std::byte* src = nullptr;
  std::byte* dst = nullptr;
  if (input.once(2)) {
    memories.emplace_back(subject.destinationBytes, input);
    memories.emplace_back(subject.sourceBytes, input);
    dst = memories[0].array();
    src = memories[1].array();
  } else {
    const std::size_t shift = subject.anyOverlap ? input.below(subject.sourceBytes) : 0;
    memories.emplace_back(std::max(subject.sourceBytes, subject.destinationBytes) + shift, input);
    const bool upward = input.once(2);
    src = memories[0].array() + (upward ? 0 : shift);
    dst = memories[0].array() + (upward ? shift : 0);
  }
  fillWithReals<Real>({src, subject.sourceBytes}, input);
  const std::vector<std::byte> expected = referenceResult<Real>(subject, src, flag);

  // A buffer that is not needed may be anything.
  GuardedMemory bufferMemory(subject.bufferBytes);
  auto* buffer = bufferMemory.array<std::uint8_t>(subject.bufferBytes, Edge::end);
  buffer = input.once(2) ? nullptr : subject.bufferBytes == 0 ? wild<std::uint8_t>(input) : buffer;

  std::vector<std::vector<std::byte>> images;
  images.reserve(memories.size());
  for (Watched& memory : memories) {
    images.push_back(memory.contents());
  }
  require(subject.tried(src, dst, flag, buffer) == tfmStsOk, "success");
  require(sameReals<Real>(expected, {dst, expected.size()}), "the bits of plain arrays");
  std::copy(dst, dst + expected.size(), images[0].begin() + static_cast<std::ptrdiff_t>(memories[0].offsetOf(dst)));
  for (std::size_t i = 0; i < memories.size(); ++i) {
    require(memories[i].contents() == images[i], "nothing written outside of the destination");
  }
}

// Size before pointers before flag; a refused call touches nothing.
template <class Real>
void tryTransform(const Subject& subject, Input& input) {
  const std::int32_t flag = anyFlag(input);
  const bool nullSource = input.once(16);
  const bool nullDestination = input.once(16);
  const bool goodFlag = std::find(kFlags.begin(), kFlags.end(), flag) != kFlags.end();
  if (subject.sizeAccepted && goodFlag && !nullSource && !nullDestination) {
    trySuccess<Real>(subject, flag, input);
    return;
  }
  const TfmStatus expected = !subject.sizeAccepted           ? tfmStsBadSize
                             : nullSource || nullDestination ? tfmStsNullPtr
                                                             : tfmStsBadFlag;
  const auto* const src = nullSource ? nullptr : wild<std::byte>(input);
  auto* const dst = nullDestination ? nullptr : wild<std::byte>(input);
  auto* const buffer = input.once(2) ? nullptr : wild<std::uint8_t>(input);
  require(subject.tried(src, dst, flag, buffer) == expected, "the first refusal that applies");
}

// `fixed` is the length of a per-length entry, 0 for the general one.
void tryFamily(const Family& family, std::int32_t fixed, Input& input) {
  const std::int32_t n = fixed != 0 ? fixed : anySize(input, kLongest);
  Subject subject;
  subject.tried = [&](const void* src, void* dst, std::int32_t flag, std::uint8_t* /*buffer*/) {
    return fixed != 0 ? Entry{family, n}(src, dst, flag) : family.general(src, dst, n, flag);
  };
  subject.sizeAccepted = n >= kShortest && n <= kLongest;
  if (subject.sizeAccepted) {
    const Entry entry{family, n};
    subject.sourceBytes = entry.sourceBytes();
    subject.destinationBytes = entry.destinationBytes();
    subject.anyOverlap = family.isComplex();
    subject.reference = [entry](const void* src, void* dst, std::int32_t flag, std::uint8_t* /*buffer*/) {
      return entry(src, dst, flag);
    };
  }
  family.realBytes == sizeof(float) ? tryTransform<float>(subject, input) : tryTransform<double>(subject, input);
}

template <class Real>
void tryWht(std::int32_t fixed, Input& input) {
  const std::int32_t order = fixed != 0 ? fixed : anySize(input, kWhtOrders);
  const auto ofOrder = [order](const void* src, void* dst, std::int32_t flag, std::uint8_t* buffer) {
    return whtCall<Real>(order)(static_cast<const Real*>(src), static_cast<Real*>(dst), flag, buffer);
  };
  Subject subject;
  subject.tried = ofOrder;
  if (fixed == 0) {
    subject.tried = [order](const void* src, void* dst, std::int32_t flag, std::uint8_t* buffer) {
      return Wht<Real>::general(static_cast<const Real*>(src), static_cast<Real*>(dst), order, flag, buffer);
    };
  }
  subject.sizeAccepted = order >= 1 && order <= kWhtOrders;
  if (subject.sizeAccepted) {
    subject.sourceBytes = subject.destinationBytes = sizeof(Real) << order;
    subject.bufferBytes = static_cast<std::size_t>(Wht<Real>::bufferSizes[static_cast<std::size_t>(order - 1)]);
    subject.reference = ofOrder;
  }
  tryTransform<Real>(subject, input);
}

// A size query: query(size) stores `expected`, or refuses and does not look at its argument.
template <class Query>
void trySizeQuery(std::optional<std::int64_t> expected, const Query& query, Input& input) {
  constexpr std::int32_t old = -12345;
  std::int32_t size = old;
  if (!expected) {
    require(query(input.once(2) ? nullptr : wild<std::int32_t>(input)) == tfmStsBadSize, "refusal of a size");
  } else {
    require(query(&size) == tfmStsOk && size == static_cast<std::int32_t>(*expected), "the size of a buffer");
  }
}

template <class Real>
void tryWhtQuery(Input& input) {
  const std::int32_t order = anySize(input, kWhtOrders);
  std::optional<std::int64_t> expected;
  if (order >= 1 && order <= kWhtOrders) {
    expected = Wht<Real>::bufferSizes[static_cast<std::size_t>(order - 1)];
  }
  trySizeQuery(
      expected, [order](std::int32_t* size) { return Wht<Real>::bufferSize(order, size); }, input);
}

TfmgDCT4Plan* marker() {
  return reinterpret_cast<TfmgDCT4Plan*>(std::uintptr_t{64}); // NOLINT(performance-no-int-to-ptr)
}

// The caller's own buffer, closed behind what the build may write.
template <class Real>
void tryPlanInit(std::int32_t length, Input& input) {
  using A = Dct4<Real>;
  TfmgDCT4Plan* plan = marker();
  const bool nullPlace = input.once(16);
  if (nullPlace || input.once(16)) {
    void* const buffer = nullPlace && input.once(2) ? wild<std::byte>(input) : nullptr;
    require(A::init(nullPlace ? nullptr : &plan, length, buffer) == tfmStsNullPtr && plan == marker(),
            "pointers first");
    return;
  }
  const std::size_t displacement = input.below(kMaxDisplacement);
  const auto bytes = static_cast<std::size_t>(planBytes<Real>(length));
  GuardedMemory memory(bytes + displacement + 32);
  std::byte* buffer = memory.all().data() + displacement;
  buffer = memory.array(bytes + planShift(buffer), Edge::start, displacement);
  const bool accepted = dct4Accepts<Real>(length);
  require(A::init(&plan, length, buffer) == (accepted ? tfmStsOk : tfmStsBadSize), "the accepted lengths");
  const auto* const address = reinterpret_cast<const std::byte*>(plan);
  require(accepted ? address > buffer && address < buffer + bytes : plan == marker(), "the plan's place");
  const auto all = memory.all();
  const auto closed = [](std::byte b) { return b == std::byte{0xFF}; };
  require(std::all_of(all.data(), buffer, closed) &&
              std::all_of(buffer + bytes + planShift(buffer), all.data() + all.size(), closed),
          "nothing written outside of the buffer");
}

template <class Real>
void tryPlanAllocation(std::int32_t length, Input& input) {
  using A = Dct4<Real>;
  TfmgDCT4Plan* plan = marker();
  if (input.once(16)) {
    require(A::initAlloc(nullptr, length) == tfmStsNullPtr && A::free(nullptr) == tfmStsNullPtr, "no null pointers");
  } else if (!dct4Accepts<Real>(length)) {
    require(A::initAlloc(&plan, length) == tfmStsBadSize && plan == marker(), "refusal of a length");
  } else {
    require(A::initAlloc(&plan, length) == tfmStsOk && plan != nullptr && A::free(plan) == tfmStsOk,
            "a plan and its end");
  }
}

// Null pointers, and a plan that is none.
template <class Real>
void tryPlanRefusals(Input& input) {
  const auto* const src = input.once(3) ? nullptr : wild<Real>(input);
  auto* const dst = input.once(3) ? nullptr : wild<Real>(input);
  alignas(64) std::byte none[256];
  std::fill(std::begin(none), std::end(none), input.once(2) ? std::byte{0} : std::byte{0xFF});
  auto* const plan = input.once(3) ? nullptr : reinterpret_cast<TfmgDCT4Plan*>(none);
  const bool null = src == nullptr || dst == nullptr || plan == nullptr;
  require(Dct4<Real>::run(src, dst, plan) == (null ? tfmStsNullPtr : tfmStsBadArg), "refusal of what is no plan");
}

template <class Real>
void tryDct4(std::size_t operation, Input& input) {
  const std::int32_t length = anyPlanLength(input);
  const bool built = dct4Accepts<Real>(length) && length > kLongestBuilt;
  const bool written = length > kLongestBuilt;
  switch (operation) {
  case 0:
    return trySizeQuery(
        dct4Accepts<Real>(length) ? std::optional(dct4Size<Real>(length)) : std::nullopt,
        [length](std::int32_t* size) { return Dct4<Real>::getSize(length, size); }, input);
  case 1: return tryPlanInit<Real>(written ? 64 : length, input);
  case 2:
  case 3: return tryPlanAllocation<Real>(built ? 64 : length, input);
  default: return tryPlanRefusals<Real>(input);
  }
}

// The exports in groups of which each has one for every number below its count.
void tryExport(std::size_t number, Input& input) {
  constexpr std::size_t perFamily = kLongest - kShortest + 2; // every length, and the general entry
  constexpr std::size_t perWht = kWhtOrders + 2;              // every order, the general entry, the query
  constexpr std::size_t perDct4 = 5;
  const std::size_t dft = families().size() * perFamily;
  if (number < dft) {
    const std::size_t member = number % perFamily;
    return tryFamily(families()[number / perFamily], member == 0 ? 0 : static_cast<std::int32_t>(member) + 1, input);
  }
  number -= dft;
  if (number < 2 * perWht) {
    const auto order = static_cast<std::int32_t>(number % perWht);
    const bool single = number < perWht;
    if (order > kWhtOrders) {
      return single ? tryWhtQuery<float>(input) : tryWhtQuery<double>(input);
    }
    return single ? tryWht<float>(order, input) : tryWht<double>(order, input);
  }
  number -= 2 * perWht;
  if (number < 2 * perDct4) {
    return number < perDct4 ? tryDct4<float>(number, input) : tryDct4<double>(number % perDct4, input);
  }
  const TfmLibVersion* const version = tfmgenGetLibVersion();
  require(version == tfmgenGetLibVersion() && version->major == 6, "one version record");
}

} // namespace
} // namespace tfmgen::test

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t exports = 1193;
  tfmgen::test::Input input({data, size});
  tfmgen::test::tryExport(input.below(exports), input);
  return 0;
}
