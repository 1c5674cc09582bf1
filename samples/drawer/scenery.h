// What floats in space, shaded pixel by pixel. All pictures are 32-bit with alpha not premultiplied.
#pragma once

#include <QColor>
#include <QImage>

namespace wb
{

struct PlanetLook {
    QColor sea;
    QColor shore;
    QColor land;
    QColor air;  // the glow around the disc, of graded alpha
    bool banded; // stripes of a gas giant instead of continents
    float seed;
};

// A lit sphere in a square picture of this size, on nothing.
QImage DrawPlanet(int size, const PlanetLook &look);

// A cratered rock in a square picture of this size; every pixel is opaque or fully transparent.
QImage DrawAsteroid(int size, float seed);

// An opaque nebula with stars.
QImage DrawStarField(int width, int height, float seed);

// The picture `index` of `count` of a fireball that grows and fades.
QImage DrawExplosion(int size, int index, int count);

} // namespace wb
