#include "scene.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>

namespace {

struct Vec {
  double x;
  double y;
  double z;
};

Vec operator-(Vec a, Vec b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}
Vec operator*(double s, Vec a) {
  return {s * a.x, s * a.y, s * a.z};
}
double dot(Vec a, Vec b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}
Vec unit(Vec a) {
  return 1 / std::sqrt(dot(a, a)) * a;
}

struct Ball {
  Vec centre;
  double radius;
  double brightness;
};

constexpr std::array<Ball, 2> kBalls{{{{-0.7, 0.0, 4.2}, 1.0, 0.9}, {{0.9, -0.45, 3.2}, 0.55, 0.55}}};
constexpr double kFloor = -1.0;

// Distance along the ray from `eye` to the ball.
std::optional<double> meet(const Ball& ball, Vec eye, Vec ray) {
  const Vec to = ball.centre - eye;
  const double along = dot(to, ray);
  const double root = along * along - dot(to, to) + ball.radius * ball.radius;
  if (root < 0 || along < std::sqrt(root)) {
    return std::nullopt;
  }
  return along - std::sqrt(root);
}

// Light that arrives from direction `ray`, 0 .. 1.
double radiance(Vec ray) {
  const Vec eye{0, 0, 0};
  const Vec sun = unit({-0.5, 0.9, -0.6});
  const Ball* nearest = nullptr;
  double distance = 1e9;
  for (const Ball& ball : kBalls) {
    if (const auto d = meet(ball, eye, ray); d && *d < distance) {
      nearest = &ball;
      distance = *d;
    }
  }
  if (nearest != nullptr) {
    const Vec normal = unit(distance * ray - nearest->centre);
    const Vec mirrored = ray - 2 * dot(ray, normal) * normal;
    return nearest->brightness * (0.12 + 0.7 * std::max(0.0, dot(normal, sun))) +
           0.5 * std::pow(std::max(0.0, dot(mirrored, sun)), 40);
  }
  const double sky = 0.45 + 0.4 * ray.y;
  if (ray.y >= 0) {
    return sky;
  }
  const Vec ground = kFloor / ray.y * ray;
  const bool dark = ((static_cast<int>(std::floor(ground.x)) ^ static_cast<int>(std::floor(ground.z))) & 1) != 0;
  const bool shaded =
      std::any_of(kBalls.begin(), kBalls.end(), [&](const Ball& ball) { return meet(ball, ground, sun).has_value(); });
  const double clear = std::exp(-0.05 * ground.z);
  return clear * (dark ? 0.18 : 0.8) * (shaded ? 0.3 : 1.0) + (1 - clear) * sky;
}

} // namespace

Image renderScene(std::size_t size) {
  constexpr std::size_t kSamples = 4; // of a pixel, in either direction
  const auto side = static_cast<double>(size * kSamples);
  Image image{size, size, {}};
  for (std::size_t y = 0; y < size; ++y) {
    for (std::size_t x = 0; x < size; ++x) {
      double sum = 0;
      for (std::size_t s = 0; s < kSamples * kSamples; ++s) {
        const std::size_t column = x * kSamples + s % kSamples;
        const std::size_t row = y * kSamples + s / kSamples;
        const double u = static_cast<double>(column) + 0.5;
        const double v = static_cast<double>(row) + 0.5;
        sum += std::clamp(radiance(unit({1.2 * (u / side - 0.5), 1.2 * (0.45 - v / side), 1.0})), 0.0, 1.0);
      }
      image.pixels.push_back(static_cast<float>(sum / (kSamples * kSamples)));
    }
  }
  return image;
}
