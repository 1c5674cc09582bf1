// Scaling, one axis after the other. Colours are weighted by their alpha, so that the unseen colour of
// transparent pixels does not bleed into visible ones.
#include "rastgl/rastgl.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <span>
#include <vector>

namespace rastgl
{

namespace
{

// Sums reach 65,025 times a weight from each of up to hundreds of millions of pixels: more than float holds.
using Sums = std::array<double, 4>; // blue, green and red times alpha; alpha

void AddPixel(Sums &sums, double weight, const std::uint8_t *pixel)
{
    const double alpha = weight * pixel[3];
    for (std::size_t channel = 0; channel < 3; ++channel)
        sums[channel] += alpha * pixel[channel];
    sums[3] += alpha;
}

void AddSums(Sums &sums, double weight, const Sums &part)
{
    for (std::size_t channel = 0; channel < 4; ++channel)
        sums[channel] += weight * part[channel];
}

// Catmull-Rom: the weight of a sample at this distance from the place asked for, in samples.
double CubicWeight(double distance)
{
    const double d = std::abs(distance);
    if (d < 1)
        return (1.5 * d - 2.5) * d * d + 1;
    return d < 2 ? ((-0.5 * d + 2.5) * d - 4) * d + 2 : 0;
}

// For each place along one axis of the target, the consecutive places of the source that it is made of. Their
// weights add up to 1.
class Axis
{
public:
    struct Taps {
        std::size_t first; // in the source
        std::span<const float> weights;
    };

    Axis(std::int64_t sourceSize, std::int64_t targetSize)
    {
        m_parts.reserve(std::size_t(targetSize));
        for (std::int64_t place = 0; place < targetSize; ++place) {
            if (targetSize > sourceSize)
                AddInterpolated(place, sourceSize, targetSize);
            else
                AddCovered(place, sourceSize, targetSize);
        }
    }

    std::size_t Size() const { return m_parts.size(); }
    Taps operator[](std::size_t place) const
    {
        const Part &part = m_parts[place];
        return {part.first, {&m_weights[part.begin], part.count}};
    }

private:
    struct Part {
        std::size_t first;
        std::size_t begin; // in m_weights
        std::size_t count;
    };

    // Area averaging: whatever the place covers, a source pixel being targetSize long and the place
    // sourceSize.
    void AddCovered(std::int64_t place, std::int64_t sourceSize, std::int64_t targetSize)
    {
        const std::int64_t begin = place * sourceSize;
        const std::int64_t end = begin + sourceSize;
        const std::int64_t first = begin / targetSize;
        const std::int64_t last = (end - 1) / targetSize;
        m_parts.push_back({std::size_t(first), m_weights.size(), std::size_t(last - first + 1)});
        for (std::int64_t source = first; source <= last; ++source) {
            const std::int64_t covered =
                std::min(end, (source + 1) * targetSize) - std::max(begin, source * targetSize);
            m_weights.push_back(float(double(covered) / double(sourceSize)));
        }
    }

    // The four nearest samples; those beyond an edge repeat the pixel at the edge.
    void AddInterpolated(std::int64_t place, std::int64_t sourceSize, std::int64_t targetSize)
    {
        const double centre = (double(place) + 0.5) * double(sourceSize) / double(targetSize) - 0.5;
        const auto nearest = std::int64_t(std::floor(centre));
        const std::int64_t first = std::max<std::int64_t>(nearest - 1, 0);
        const std::int64_t last = std::min(nearest + 2, sourceSize - 1);
        const std::size_t begin = m_weights.size();
        m_parts.push_back({std::size_t(first), begin, std::size_t(last - first + 1)});
        m_weights.resize(begin + std::size_t(last - first + 1));
        for (std::int64_t sample = nearest - 1; sample <= nearest + 2; ++sample) {
            const std::int64_t source = std::clamp(sample, first, last);
            m_weights[begin + std::size_t(source - first)] += float(CubicWeight(double(sample) - centre));
        }
    }

    std::vector<Part> m_parts;
    std::vector<float> m_weights;
};

// The source's rows, scaled to the target's width. The rows that a target row is made of are asked for in
// rising order, and no two of those that come again lie more than three apart, so four are kept.
class ScaledRows
{
public:
    ScaledRows(const std::uint8_t *source, std::size_t width, const Axis &columns)
        : m_source(source), m_width(width), m_columns(columns)
    {
        for (Row &row : m_rows)
            row.sums.resize(columns.Size());
    }

    const std::vector<Sums> &operator[](std::size_t number)
    {
        Row &row = m_rows[number % m_rows.size()];
        if (row.number != number) {
            row.number = number;
            Scale(m_source + number * m_width * 4, row.sums);
        }
        return row.sums;
    }

private:
    struct Row {
        std::size_t number = std::numeric_limits<std::size_t>::max();
        std::vector<Sums> sums;
    };

    void Scale(const std::uint8_t *pixels, std::vector<Sums> &scaled)
    {
        for (std::size_t column = 0; column < scaled.size(); ++column) {
            const Axis::Taps taps = m_columns[column];
            Sums sums = {};
            for (std::size_t i = 0; i < taps.weights.size(); ++i)
                AddPixel(sums, taps.weights[i], pixels + 4 * (taps.first + i));
            scaled[column] = sums;
        }
    }

    const std::uint8_t *m_source;
    std::size_t m_width;
    const Axis &m_columns;
    std::array<Row, 4> m_rows;
};

std::uint8_t ToByte(double value)
{
    return std::uint8_t(std::lround(std::clamp(value, 0.0, 255.0)));
}

void StorePixel(std::uint8_t *pixel, const Sums &sums)
{
    const std::uint8_t alpha = ToByte(sums[3]);
    for (std::size_t channel = 0; channel < 3; ++channel)
        pixel[channel] = alpha == 0 ? 0 : ToByte(sums[channel] / sums[3]);
    pixel[3] = alpha;
}

void Rescale(std::uint8_t *target, const Axis &columns, const Axis &rows, ScaledRows &source)
{
    std::vector<Sums> sums(columns.Size());
    for (std::size_t row = 0; row < rows.Size(); ++row) {
        std::ranges::fill(sums, Sums{});
        const Axis::Taps taps = rows[row];
        for (std::size_t i = 0; i < taps.weights.size(); ++i) {
            const std::vector<Sums> &part = source[taps.first + i];
            for (std::size_t column = 0; column < sums.size(); ++column)
                AddSums(sums[column], taps.weights[i], part[column]);
        }
        for (const Sums &pixel : sums) {
            StorePixel(target, pixel);
            target += 4;
        }
    }
}

} // namespace

} // namespace rastgl

void VTGF_Rescale(uint8_t *target, const int32_t *targetWidth, const int32_t *targetHeight,
                  const uint8_t *source, const int32_t *sourceWidth, const int32_t *sourceHeight)
{
    if (std::min({*targetWidth, *targetHeight, *sourceWidth, *sourceHeight}) <= 0)
        return;
    const std::size_t targetBytes = std::size_t(*targetWidth) * std::size_t(*targetHeight) * 4;
    if (*targetWidth == *sourceWidth && *targetHeight == *sourceHeight) {
        std::memcpy(target, source, targetBytes);
        return;
    }
    try {
        const rastgl::Axis columns(*sourceWidth, *targetWidth);
        const rastgl::Axis rows(*sourceHeight, *targetHeight);
        rastgl::ScaledRows scaled(source, std::size_t(*sourceWidth), columns);
        rastgl::Rescale(target, columns, rows, scaled);
    } catch (const std::bad_alloc &) {
        std::memset(target, 0, targetBytes);
    }
}
