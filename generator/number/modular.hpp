// Arithmetic modulo small whole numbers.
#pragma once

namespace tfmgen::number {

// The representative of a modulo n in 0 .. n-1.
constexpr int modulo(long a, long n) {
  return static_cast<int>((a % n + n) % n);
}

constexpr int powerModulo(int base, int exponent, int n) {
  long result = 1;
  for (int i = 0; i < exponent; ++i) {
    result = result * base % n;
  }
  return static_cast<int>(result);
}

// The inverse of a modulo n; a and n are coprime.
constexpr int inverseModulo(int a, int n) {
  for (int x = 1; x < n; ++x) {
    if (modulo(static_cast<long>(a) * x, n) == 1) {
      return x;
    }
  }
  return 0; // n is 1
}

// The k in 0 .. a*b-1 with k = r modulo a and k = s modulo b; a and b are coprime.
constexpr int chineseRemainder(int r, int a, int s, int b) {
  int k = modulo(r, a);
  while (k % b != modulo(s, b)) {
    k += a;
  }
  return k;
}

// The least number whose powers run through 1 .. p-1 modulo the odd prime p.
constexpr int primitiveRoot(int p) {
  for (int g = 2;; ++g) {
    int order = 1;
    for (long power = g; power != 1; power = power * g % p) {
      ++order;
    }
    if (order == p - 1) {
      return g;
    }
  }
}

static_assert(primitiveRoot(7) == 3 && primitiveRoot(23) == 5 && primitiveRoot(41) == 6);
static_assert(chineseRemainder(2, 3, 4, 5) == 14 && inverseModulo(3, 7) == 5);

} // namespace tfmgen::number
