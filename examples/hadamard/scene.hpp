#pragma once

#include "image.hpp"

// A synthetic scene for those who have no picture at hand: two lit balls on a chequered floor in front of a hazy sky.
Image renderScene(std::size_t size);
