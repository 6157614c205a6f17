// Rounding errors as noise: their variances for independent elements of the standard normal distribution.
//
// Every value of a kernel is then normally distributed. Where it comes from a product, its error is taken as uniform
// over its unit in the last place, averaged over the binades of the distribution (Widrow and Kollar, Quantization
// Noise, chapter 12). A sum of two numbers of the sample type is a multiple of the smaller of their units: it is exact
// where it has no larger unit itself, else it loses few bits, which makes its error discrete. Errors of different steps
// are taken as uncorrelated.
#pragma once

#include "linear.hpp"

namespace tfmgen::error {

// Summed over the outputs before the scale, in units of u^2.
double varianceOfSteps(const Program& program, const Linear& linear);

// Of the last rounding of an output whose standard deviation is `deviation`, in units of u^2.
double varianceOfOutput(const Program& program, const Linear& linear, const Output& output, double scale,
                        double deviation);

} // namespace tfmgen::error
