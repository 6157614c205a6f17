#include "expressions.hpp"

namespace tfmgen::test {

double productThenSum(double a, double b, double c) {
  return a * b + c;
}

double sumThenDifference(double a, double b) {
  return (a + b) - a;
}

double sumOfFour(double a, double b, double c, double d) {
  return a + b + c + d;
}

double subtractFromZero(double a) {
  return 0.0 - a;
}

double quotientByThree(double a) {
  return a / 3.0;
}

double timesZero(double a) {
  return a * 0.0;
}

float roundedSum(float a, float b, float c) {
  return (a + b) - c;
}

float widenedProduct(float a, double c, float b) {
  return static_cast<float>(a * c + b);
}

void addFour(const float* a, const float* b, float* sum) {
  const float s0 = a[0] + b[0];
  const float s1 = a[1] + b[1];
  const float s2 = a[2] + b[2];
  const float s3 = a[3] + b[3];
  sum[0] = s0;
  sum[1] = s1;
  sum[2] = s2;
  sum[3] = s3;
}

void butterflies(const double* a, double* b) {
  const double s0 = a[0] + a[2];
  const double s1 = a[1] + a[3];
  const double d0 = a[0] - a[2];
  const double d1 = a[1] - a[3];
  b[0] = s0;
  b[1] = s1;
  b[2] = d0;
  b[3] = d1;
}

void scaleAll(const float* a, float s, float* b, int count) {
  for (int i = 0; i < count; ++i) {
    b[i] = a[i] * s;
  }
}

} // namespace tfmgen::test
