#pragma once

// The transform of 2^order samples as anyone would write it, without a scale. src and dst must not overlap.
void loopWht(const float* src, float* dst, int order);
void loopWht(const double* src, double* dst, int order);
