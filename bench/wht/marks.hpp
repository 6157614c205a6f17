// What the best open library held to 128-bit registers needs, measured elsewhere, with a peer to carry the figure to
// this machine: mark here = mark there * time of the peer here / time of the peer there.
#pragma once

#include <array>
#include <cstddef>

enum class Carrier { loop, fftw };

struct Mark {
  double cycles; // core cycles of the best 128-bit library
  Carrier carrier;
  double carrierCycles;
};

// By order, from 1.
template <class Real>
inline constexpr std::array<Mark, 13> kMarks{};

template <>
inline constexpr std::array<Mark, 13> kMarks<float>{{
    {14.0, Carrier::fftw, 15.0},
    {15.0, Carrier::loop, 26.0},
    {16.0, Carrier::loop, 47.9},
    {23.0, Carrier::loop, 84.5},
    {43.0, Carrier::loop, 162.9},
    {104.0, Carrier::loop, 337.9},
    {220.6, Carrier::loop, 708.8},
    {456.0, Carrier::loop, 1451.2},
    {1025.7, Carrier::loop, 3032.1},
    {2178.7, Carrier::loop, 6268.7},
    {4540.4, Carrier::loop, 12641.3},
    {10010.2, Carrier::loop, 25773.7},
    {21466.2, Carrier::loop, 53358.0},
}};

template <>
inline constexpr std::array<Mark, 13> kMarks<double>{{
    {14.0, Carrier::fftw, 14.0},
    {22.0, Carrier::loop, 27.0},
    {30.0, Carrier::loop, 52.0},
    {52.0, Carrier::loop, 91.8},
    {152.9, Carrier::loop, 187.7},
    {232.9, Carrier::loop, 368.8},
    {485.7, Carrier::loop, 745.8},
    {1412.3, Carrier::loop, 1584.5},
    {2355.3, Carrier::loop, 3330.1},
    {4835.6, Carrier::loop, 6946.9},
    {13084.2, Carrier::loop, 14547.4},
    {22569.8, Carrier::loop, 30991.2},
    {47371.8, Carrier::loop, 63815.2},
}};
