// What every record of a plan begins with. Plain function pointers, since the head's layout is part of the plan.
#pragma once

#include "arena.hpp"
#include "tfmgen.h"

#include <cstddef>
#include <cstdint>

namespace tfmgen::dct4 {

// What a list knows of a record.
struct TfmgPlanItem {
  void (*release)(TfmgPlanItem* item); // gives back what the record's children and tables took, not the record itself
  std::uint32_t byteSize;              // of the record, not rounded
};

struct TfmgPlanHead {
  TfmgPlanItem item;
  TfmStatus (*build)(TfmgPlanHead* head); // completes the record and makes its children
  TfmgArena* arena;
};
static_assert(offsetof(TfmgPlanHead, item.release) == 0 && offsetof(TfmgPlanHead, item.byteSize) == 8 &&
              offsetof(TfmgPlanHead, build) == 16 && offsetof(TfmgPlanHead, arena) == 24 && sizeof(TfmgPlanHead) == 32);

// The head of a source record, which computes table entries instead of being built.
template <class Record, class T, class... Index>
struct TfmgSourceHead {
  TfmgPlanItem item;
  T (*value)(const Record* source, Index... index);
  TfmgArena* arena;
};

// The record that `head` is the first member of.
template <class Record>
Record* recordOf(TfmgPlanItem* item) {
  return reinterpret_cast<Record*>(item);
}

template <class Record>
Record* recordOf(TfmgPlanHead* head) {
  return reinterpret_cast<Record*>(head);
}

template <class Record>
void fillItem(Record* record, TfmgArena* arena, void (*release)(TfmgPlanItem*)) {
  record->head.item.release = release;
  record->head.item.byteSize = sizeof(Record);
  record->head.arena = arena;
}

template <class Record>
void fillHead(Record* record, TfmgArena* arena, void (*release)(TfmgPlanItem*), TfmStatus (*build)(TfmgPlanHead*)) {
  fillItem(record, arena, release);
  record->head.build = build;
}

// Takes a record of the arena and fills its head.
template <class Record>
Record* makeRecord(TfmgArena* arena, void (*release)(TfmgPlanItem*), TfmStatus (*build)(TfmgPlanHead*)) {
  auto* record = takeRecord<Record>(arena);
  fillHead(record, arena, release, build);
  return record;
}

} // namespace tfmgen::dct4
