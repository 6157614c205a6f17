#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

// The number that the whole text is, if it is one.
template <class Number>
std::optional<Number> parseNumber(std::string_view text) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size()) {
    return std::nullopt;
  }
  return value;
}
