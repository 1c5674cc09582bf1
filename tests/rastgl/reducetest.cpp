#include "rastgl/palettefit.h"
#include "rastgl/rastgl.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <random>
#include <set>

namespace
{

using rastgl::Colour;
using rastgl::DistanceSquared;
using Mixer = std::mt19937;

struct Pixels {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<Colour> colours; // bottom row first
};

template <typename Shade>
Pixels Paint(std::int32_t width, std::int32_t height, Shade &&shade)
{
    Pixels made{width, height, {}};
    for (std::int32_t y = 0; y < height; ++y) {
        for (std::int32_t x = 0; x < width; ++x)
            made.colours.push_back(shade(x, y));
    }
    return made;
}

Pixels Noise(std::int32_t width, std::int32_t height, Colour fixedBits)
{
    return Paint(width, height,
                 [mixer = Mixer(7), fixedBits](int, int) mutable { return mixer() | fixedBits; });
}

// A glow over a transparent ground, opaque in the middle.
Pixels Glow(std::int32_t size)
{
    return Paint(size, size, [=](int x, int y) {
        const double distance = std::hypot(x - size / 2.0, y - size / 2.0) / size;
        const auto alpha = Colour(std::clamp(500 - 1100 * distance, 0.0, 255.0));
        return alpha << 24 | Colour(200 * x / size) << 16 | Colour(250 * y / size) << 8 |
               Colour(90 + 150 * distance);
    });
}

struct Reduced {
    std::vector<std::uint8_t> indexes;
    std::vector<std::uint8_t> palette = std::vector<std::uint8_t>(1024, 0xAA);

    Colour Entry(std::size_t index) const
    {
        const std::uint8_t *rgba = &palette[4 * index];
        return Colour(rgba[3]) << 24 | Colour(rgba[0]) << 16 | Colour(rgba[1]) << 8 | rgba[2];
    }
};

Reduced Reduce(const Pixels &picture)
{
    Reduced result{.indexes = std::vector<std::uint8_t>(picture.colours.size(), 0xAA)};
    VTGF_RGBAtoIndexed8(result.indexes.data(), result.palette.data(),
                        reinterpret_cast<const std::uint8_t *>(picture.colours.data()), &picture.width,
                        &picture.height);
    return result;
}

std::vector<Colour> Expand(const Pixels &picture, const Reduced &reduced)
{
    std::vector<Colour> colours;
    for (std::int32_t y = picture.height - 1; y >= 0; --y) {
        for (std::int32_t x = 0; x < picture.width; ++x)
            colours.push_back(
                reduced.Entry(reduced.indexes[std::size_t(y) * std::size_t(picture.width) + std::size_t(x)]));
    }
    return colours;
}

double SquaredError(const std::array<double, 4> &premultiplied, Colour colour)
{
    double sum = 0;
    for (std::size_t i = 0; i < 4; ++i)
        sum += std::pow(premultiplied[i] - rastgl::Channel(colour, i), 2);
    return sum;
}

double SquaredError(const std::vector<Colour> &shown, const std::vector<Colour> &wanted)
{
    double sum = 0;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        const Colour premultiplied = rastgl::Premultiply(shown[i]);
        std::array<double, 4> channels = {};
        for (std::size_t channel = 0; channel < 4; ++channel)
            channels[channel] = rastgl::Channel(premultiplied, channel);
        sum += SquaredError(channels, rastgl::Premultiply(wanted[i]));
    }
    return sum;
}

// What is left when every colour becomes the mean of those that share its top bits: 3-3-2 for opaque ones,
// two of each channel for others. That makes up to 512 entries.
double ErrorOfFixedBins(const std::vector<Colour> &colours)
{
    const auto binOf = [](Colour colour) {
        return colour & (rastgl::IsOpaque(colour) ? 0xFFE0E0C0U : 0xC0C0C0C0U);
    };
    std::map<Colour, rastgl::ColourCell> bins;
    for (const Colour colour : colours)
        bins[binOf(rastgl::Premultiply(colour))].Add(rastgl::Premultiply(colour));
    double sum = 0;
    for (const Colour colour : colours) {
        const rastgl::ColourCell &bin = bins[binOf(rastgl::Premultiply(colour))];
        std::array<double, 4> mean = {};
        for (std::size_t i = 0; i < 4; ++i)
            mean[i] = double(bin.sums[i]) / double(bin.pixels);
        sum += SquaredError(mean, rastgl::Premultiply(colour));
    }
    return sum;
}

TEST(Reduce, KeepsUpTo255Colours)
{
    for (const int count : {1, 2, 254, 255}) {
        // Every fourth pixel is transparent, with colour bytes that must not become an entry.
        const Pixels picture = Paint(61, 37, [count](int x, int y) {
            const int number = x + 61 * y;
            const auto colour = Colour(number % count);
            return number % 4 == 3 ? colour << 4 : colour << 3 | (255 - colour) << 24;
        });
        const Reduced reduced = Reduce(picture);
        const std::vector<Colour> expanded = Expand(picture, reduced);
        std::set<Colour> used = {0};
        for (std::size_t i = 0; i < expanded.size(); ++i) {
            const Colour wanted = rastgl::IsVisible(picture.colours[i]) ? picture.colours[i] : 0;
            ASSERT_EQ(expanded[i], wanted) << count << " colours, pixel " << i;
            used.insert(wanted);
        }
        EXPECT_EQ(used.size(), std::size_t(count) + 1);
        for (std::size_t index = 0; index < 256; ++index)
            EXPECT_EQ(reduced.Entry(index) != 0, index != 0 && index < used.size()) << index;
    }
}

TEST(Reduce, KeepsTheKindsOfPixelsApart)
{
    const Pixels pictures[] = {
        Noise(97, 91, 0),
        Noise(97, 91, rastgl::OpaqueAlpha),
        Glow(200),
        Paint(256, 1, [](int x, int) { return rastgl::OpaqueAlpha | Colour(x); }),
        Paint(1, 600, [](int, int y) { return Colour(1 + y % 4) << 24 | Colour(y) << 10; }),
        Paint(300, 2, [](int x, int y) { return Colour(255 - y) << 24 | Colour(x / 2) << 9; }),
    };
    for (const Pixels &picture : pictures) {
        const Reduced reduced = Reduce(picture);
        const std::vector<Colour> expanded = Expand(picture, reduced);
        EXPECT_EQ(reduced.Entry(0), 0U);
        for (std::size_t i = 0; i < expanded.size(); ++i) {
            ASSERT_EQ(rastgl::IsVisible(expanded[i]), rastgl::IsVisible(picture.colours[i])) << i;
            ASSERT_EQ(rastgl::IsOpaque(expanded[i]), rastgl::IsOpaque(picture.colours[i])) << i;
        }
        const Reduced again = Reduce(picture);
        EXPECT_EQ(again.indexes, reduced.indexes);
        EXPECT_EQ(again.palette, reduced.palette);
    }
    EXPECT_EQ(Reduce({0, 5, {}}).palette, Reduced{}.palette) << "an empty picture leaves the palette alone";
}

TEST(Reduce, BeatsFixedBins)
{
    const struct {
        Pixels picture;
        double share; // of the error of fixed bins, at most
    } cases[] = {
        {Glow(200), 0.2},
        {Paint(
             200, 200,
             [](int x, int y) { return rastgl::OpaqueAlpha | Colour((x * x + y * y) / 400 * 0x10101 + x); }),
         0.1},
        {Noise(200, 200, rastgl::OpaqueAlpha), 0.9}, // nothing to adapt to
    };
    for (const auto &[picture, share] : cases) {
        const double error = SquaredError(Expand(picture, Reduce(picture)), picture.colours);
        EXPECT_LT(error, share * ErrorOfFixedBins(picture.colours));
    }
}

TEST(ColourCells, LoseNothingWhenTheyGrowCoarser)
{
    rastgl::ColourCells cells;
    const Pixels picture = Noise(300, 300, 0);
    rastgl::ColourCell all;
    for (std::size_t i = 0; i < picture.colours.size(); ++i) {
        const Colour colour =
            rastgl::Premultiply(picture.colours[i] | (i % 2 == 0 ? rastgl::OpaqueAlpha : 0));
        cells.Add(colour);
        all.Add(colour);
        const std::size_t cell = cells.Find(colour);
        const rastgl::Box box = rastgl::BoxAround(cells.Lowest(cell), cells.Highest(cell));
        for (std::size_t axis = 0; axis < 4; ++axis) {
            ASSERT_LE(box.lowest[axis], rastgl::ToPosition(colour)[axis]);
            ASSERT_GE(box.highest[axis], rastgl::ToPosition(colour)[axis]);
        }
        ASSERT_EQ(cells.IsOpaque(cell), rastgl::IsOpaque(colour));
    }
    ASSERT_LE(cells.Count(), rastgl::ColourCells::MaxCells);
    rastgl::ColourCell sum;
    for (std::size_t cell = 0; cell < cells.Count(); ++cell)
        sum.Add(cells[cell]);
    EXPECT_EQ(sum.pixels, all.pixels);
    EXPECT_EQ(sum.sums, all.sums);
}

TEST(NearestEntry, AgreesWithComparingAll)
{
    Mixer mixer(3);
    const auto somewhere = [&] { return rastgl::ToPosition(rastgl::Premultiply(Colour(mixer()))); };
    std::vector<rastgl::PaletteEntry> entries(200);
    for (rastgl::PaletteEntry &entry : entries)
        entry = {.at = somewhere(), .opaque = mixer() % 3 == 0, .reach = 4 * 256 * 256};
    const rastgl::NearestEntry nearest(entries);
    for (int i = 0; i < 5000; ++i) {
        const rastgl::Position place = somewhere();
        const std::size_t start = mixer() % entries.size();
        std::size_t wanted = start;
        for (std::size_t entry = 0; entry < entries.size(); ++entry) {
            if (entries[entry].opaque == entries[start].opaque &&
                DistanceSquared(place, entries[entry].at) < DistanceSquared(place, entries[wanted].at))
                wanted = entry;
        }
        ASSERT_EQ(nearest.Find(place, start), wanted);
        rastgl::Box box{place, place};
        for (std::size_t axis = 0; axis < 4; ++axis) {
            box.lowest[axis] -= float(mixer() % 40);
            box.highest[axis] += float(mixer() % 40);
        }
        std::vector<std::uint8_t> candidates = {std::uint8_t(start)};
        nearest.AppendRivals(box, start, candidates);
        ASSERT_NE(std::ranges::find(candidates, wanted), candidates.end());
    }
}

} // namespace
