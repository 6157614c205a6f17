#include "numbers.hpp"

#include <array>
#include <charconv>

namespace tfmgen::print {

namespace {

template <class Real>
std::string digits(Real value, int count) {
  std::array<char, 64> buffer{};
  const auto end = std::to_chars(buffer.begin(), buffer.end(), value, std::chars_format::general, count).ptr;
  std::string text(buffer.begin(), end);
  if (text.find_first_of(".e") == std::string::npos) {
    text += ".0"; // a whole number is still of floating-point type
  }
  return text;
}

} // namespace

std::string literal(number::Quad value, Precision precision) {
  return precision == Precision::single ? digits(static_cast<float>(value), 9) + "F"
                                        : digits(static_cast<double>(value), 17);
}

} // namespace tfmgen::print
