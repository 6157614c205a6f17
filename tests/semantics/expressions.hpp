// Small functions whose result tells whether the compiler kept the order and the rounding of every operation.
#pragma once

namespace tfmgen::test {

double productThenSum(double a, double b, double c);      // a * b + c, the product rounded
double sumThenDifference(double a, double b);             // (a + b) - a
double sumOfFour(double a, double b, double c, double d); // ((a + b) + c) + d
double subtractFromZero(double a);                        // 0 - a: +0 for a = +0
double quotientByThree(double a);                         // a / 3, not a * (1 / 3)
double timesZero(double a);                               // a * 0: a NaN for an infinite a
float roundedSum(float a, float b, float c);              // (a + b) - c in single precision
float widenedProduct(float a, double c, float b);         // float(a * c + b), one rounding to single

// Four independent scalar operations on neighbours in memory: they stay scalar.
void addFour(const float* a, const float* b, float* sum);
void butterflies(const double* a, double* b);
void scaleAll(const float* a, float s, float* b, int count);

} // namespace tfmgen::test
