#pragma once

#include "canvas.hpp"

#include <string>
#include <vector>

// A scale along one side of a picture: `first` and `last` are the values at its ends.
struct Axis {
  double first;
  double last;
  std::string title; // what it shows, and its unit
};

// Round values within the axis, about `count` of them: multiples of 1, 2 or 5 times a power of ten.
std::vector<double> ticks(const Axis& axis, int count);

// Ticks, their values and the title: below the plot, to its left, to its right.
void drawBelow(Canvas& canvas, const Rectangle& plot, const Axis& axis);
void drawLeft(Canvas& canvas, const Rectangle& plot, const Axis& axis);
void drawRight(Canvas& canvas, const Rectangle& plot, const Axis& axis);
