// The order in which the merge kernels take the columns of a row, and so the order of the merge table.
#pragma once

namespace tfmgen::dct4 {

// The column at `position` of a row of f columns. Columns b and f-1-b meet in the first butterfly of the kernel, so
// they stand together; at f = 32 two such pairs, 16 apart, share a radix-4 butterfly, and the pairs follow in the order
// in which the next butterflies want them.
constexpr int mergeColumn(int f, int position) {
  const int pair = position / 2;
  const int column = f == 32 ? pair / 8 + 4 * (pair / 2 % 4) + 16 * (pair % 2) : pair;
  return position % 2 == 0 ? column : f - 1 - column;
}

// The position of a column: the inverse of mergeColumn.
constexpr int mergePosition(int f, int column) {
  int position = 0;
  while (mergeColumn(f, position) != column) {
    ++position;
  }
  return position;
}

} // namespace tfmgen::dct4
