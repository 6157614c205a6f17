// Singly linked lists of plan records, their nodes in the arena.
#pragma once

#include "arena.hpp"
#include "head.hpp"

#include <cstdint>

namespace tfmgen::dct4 {

// A node; a list is named by its head, which holds the first item. The empty list is a head without an item.
struct TfmgPlanList {
  TfmgPlanItem* item;
  TfmgPlanList* next;
  TfmgArena* arena;
};
static_assert(sizeof(TfmgPlanList) == 24);

// The bytes that `count` nodes take of an arena.
constexpr std::uint32_t tfmgListSpace(std::uint32_t count) {
  return tfmgRoundUp32(sizeof(TfmgPlanList)) * count;
}

inline void tfmgListInit(TfmgPlanList* node, TfmgArena* arena) {
  node->item = nullptr;
  node->next = nullptr;
  node->arena = arena;
}

inline TfmgPlanList* takeList(TfmgArena* arena) {
  auto* head = takeRecord<TfmgPlanList>(arena);
  tfmgListInit(head, arena);
  return head;
}

// Appends and returns the item, so that a second list can be given it too. The first item of a list takes no node.
inline TfmgPlanItem* tfmgListAppend(TfmgPlanList* list, TfmgPlanItem* item) {
  while (list->next != nullptr) {
    list = list->next;
  }
  if (list->item != nullptr) {
    list->next = takeList(list->arena);
    list = list->next;
  }
  list->item = item;
  return item;
}

// The item `index` steps behind the head, or null where the list has ended before.
inline TfmgPlanItem* tfmgListItem(const TfmgPlanList* list, std::int32_t index) {
  for (; list != nullptr && index > 0; --index) {
    list = list->next;
  }
  return list == nullptr ? nullptr : list->item;
}

// Gives back the nodes behind the head; the head is its owner's.
inline void tfmgListReleaseNodes(TfmgPlanList* list) {
  for (TfmgPlanList* node = list->next; node != nullptr; node = node->next) {
    tfmgArenaGiveBack(node->arena, node, sizeof(TfmgPlanList));
  }
}

// Releases and gives back every item. A null list does nothing.
inline void tfmgListReleaseItems(TfmgPlanList* list) {
  for (TfmgPlanList* node = list; node != nullptr; node = node->next) {
    if (TfmgPlanItem* item = node->item; item != nullptr) {
      item->release(item);
      tfmgArenaGiveBack(node->arena, item, item->byteSize);
    }
  }
}

// A secondary list mentions records that `owned` of the same record holds: its nodes and its head, not its items.
inline void releaseMentions(TfmgPlanList* list) {
  tfmgListReleaseNodes(list);
  tfmgArenaGiveBack(list->arena, list, sizeof(TfmgPlanList));
}

// The list that holds a record's children, released last of all its lists.
inline void releaseOwned(TfmgPlanList* list) {
  tfmgListReleaseItems(list);
  releaseMentions(list);
}

} // namespace tfmgen::dct4
