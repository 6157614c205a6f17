// The bump allocator of a plan: one block of the caller, carved from front to back.
#pragma once

#include <cstdint>
#include <new>

namespace tfmgen::dct4 {

// First bytes of a plan's buffer, and all the state there is: the address of the next free byte. An integer, since the
// bookkeeping of a refused plan may leave it in front of the buffer; packed, since the buffer may start at any address.
struct [[gnu::packed]] TfmgArena {
  std::uintptr_t next;
};
static_assert(sizeof(TfmgArena) == 8 && alignof(TfmgArena) == 1);

// The bytes that a request of `bytes` occupies: the next multiple of 32. Wraps around within 32 bits.
constexpr std::uint32_t tfmgRoundUp32(std::uint32_t bytes) {
  return (bytes + 31U) & ~31U;
}

// A rounded request as a distance: plan sizes are signed 32-bit numbers, and so is every step of the arena.
constexpr std::uintptr_t arenaDistance(std::uint32_t bytes) {
  return static_cast<std::uintptr_t>(std::intptr_t{static_cast<std::int32_t>(tfmgRoundUp32(bytes))});
}

// The next `bytes` bytes, uninitialised. No bound is checked: the size query is the only guard of the buffer.
inline void* tfmgArenaTake(TfmgArena* arena, std::uint32_t bytes) {
  const std::uintptr_t taken = arena->next;
  arena->next = taken + arenaDistance(bytes);
  return reinterpret_cast<void*>(taken); // NOLINT(performance-no-int-to-ptr): the word is an address by definition
}

// Bookkeeping only: moves the arena word back. Which block is given back does not matter to it.
inline void tfmgArenaGiveBack(TfmgArena* arena, const void* /*block*/, std::uint32_t bytes) {
  arena->next -= arenaDistance(bytes);
}

// The bytes of `count` samples, in the wrapping 32-bit arithmetic of plan sizes.
template <class T>
constexpr std::uint32_t sampleBytes(std::int32_t count) {
  return static_cast<std::uint32_t>(count) * static_cast<std::uint32_t>(sizeof(T));
}

// The bytes of a table of 16-byte vectors, in the same arithmetic.
constexpr std::uint32_t vectorBytes(std::int32_t rows, std::int32_t vectorsPerRow) {
  return static_cast<std::uint32_t>(rows) * static_cast<std::uint32_t>(vectorsPerRow) * 16U;
}

template <class Record>
Record* takeRecord(TfmgArena* arena) {
  return ::new (tfmgArenaTake(arena, sizeof(Record))) Record;
}

template <class T>
T* takeSamples(TfmgArena* arena, std::uint32_t bytes) {
  return static_cast<T*>(tfmgArenaTake(arena, bytes));
}

} // namespace tfmgen::dct4
