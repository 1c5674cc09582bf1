// Smooth noise that is the same on every run: the grain of planets, rocks, clouds and fire.
#pragma once

#include <QVector3D>

#include <cstdint>

namespace wb
{

// A fixed, evenly spread number in [0, 1) for a lattice point.
float Scatter(std::int32_t x, std::int32_t y, std::int32_t z);

// Noise in [0, 1] whose detail halves in size with every octave.
float Fractal(QVector3D point, int octaves);

} // namespace wb
