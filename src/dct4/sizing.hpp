#pragma once

#include <cstdint>

namespace tfmgen::dct4 {

// The bytes that a plan of `length` samples of type T needs, arena margin included, or a negative number where there is
// no such plan.
template <class T>
std::int32_t planBytes(std::int32_t length);

} // namespace tfmgen::dct4
