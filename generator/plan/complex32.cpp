#include "complex32.hpp"

#include "notation.hpp"

namespace tfmgen::plan {

namespace {

// A length as a factor of another. 7 and 11 are then direct: the lanes are full already.
PlanPtr of(int length) {
  return length == 7 || length == 11 ? direct(length) : complex32(length);
}

struct Table : Notation<of> {
  static PlanPtr plan(int length);
};

PlanPtr Table::plan(int length) {
  switch (length) {
  case 2: return direct(2);
  case 3: return direct(3);
  case 4: return powerOfTwo(4);
  case 5: return direct(5);
  case 6: return gt(2, 3);
  case 7: return prime(7);
  case 8: return ct(4, 2);
  case 9: return ct(3, 3);
  case 10: return gt(5, 2);
  case 11: return prime(11);
  case 12: return gt(4, 3);
  case 13: return prime(13);
  case 14: return gt(2, 7);
  case 15: return gt(5, 3);
  case 16: return ct(4, 4);
  case 17: return prime(17);
  case 18: return ct(gt(3, 2), of(3));
  case 19: return prime(19);
  case 20: return gt(4, 5);
  case 21: return gt(7, 3);
  case 22: return gt(2, 11);
  case 23: return prime(23);
  case 24: return ct(of(4), gt(3, 2));
  case 25: return ct(5, 5);
  case 26: return gt(13, 2);
  case 27: return ct(9, 3);
  case 28: return gt(4, 7);
  case 29: return prime(29);
  case 30: return gt(5, 2, 3);
  case 31: return prime(31);
  case 32: return ct(of(4), ct(4, 2));
  case 33: return gt(11, 3);
  case 34: return gt(2, 17);
  case 35: return gt(5, 7);
  case 36: return gt(4, 9);
  case 37: return prime(37);
  case 38: return gt(2, 19);
  case 39: return gt(13, 3);
  case 40: return ct(gt(5, 2), of(4));
  case 41: return prime(41);
  case 42: return gt(7, 2, 3);
  case 43: return prime(43);
  case 44: return gt(4, 11);
  case 45: return ct(gt(5, 3), of(3));
  case 46: return ct(23, 2);
  case 47: return chirp(47, goodThomas(of(3), ct(8, 4)));
  case 48: return ct(of(4), ct(3, 4));
  case 49: return ct(7, 7);
  case 50: return ct(gt(5, 2), of(5));
  case 51: return gt(17, 3);
  case 52: return gt(4, 13);
  case 53: return prime(53);
  case 54: return ct(gt(2, 9), of(3));
  case 55: return gt(5, 11);
  case 56: return ct(gt(7, 2), of(4));
  case 57: return gt(19, 3);
  case 58: return gt(2, 29);
  case 59: return chirp(59, ct(8, 16));
  case 60: return ct(of(4), gt(5, 3));
  case 61: return prime(61);
  case 62: return ct(31, 2);
  case 63: return gt(9, 7);
  case 64: return ct(8, 8);
  default: return nullptr;
  }
}

} // namespace

PlanPtr complex32(int length) {
  return Table::plan(length);
}

} // namespace tfmgen::plan
