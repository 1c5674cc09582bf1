#include "rastgl/palettefit.h"
#include "rastgl/rastgl.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>
#include <set>

namespace
{

using rastgl::Channel;
using rastgl::Colour;
using rastgl::DistanceSquared;
using Mixer = std::mt19937;

struct Pixels {
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::vector<Colour> colours; // bottom row first
};

Pixels Paint(std::int32_t width, std::int32_t height, const std::function<Colour(int, int)> &shade)
{
    Pixels made{width, height, {}};
    for (int at = 0; at < width * height; ++at)
        made.colours.push_back(shade(at % width, at / width));
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
    std::vector<Colour> expanded;

    bool operator==(const Reduced &) const = default;
};

Reduced Reduce(const Pixels &picture)
{
    const auto &[width, height, colours] = picture;
    Reduced result{.indexes = std::vector<std::uint8_t>(colours.size(), 0xAA), .expanded = colours};
    VTGF_RGBAtoIndexed8(result.indexes.data(), result.palette.data(),
                        reinterpret_cast<const std::uint8_t *>(colours.data()), &width, &height);
    VTGF_AlphaSimpleBufPalAlpha_Copy_32(reinterpret_cast<std::uint8_t *>(result.expanded.data()),
                                        result.indexes.data(), result.palette.data(), &width, &height);
    return result;
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
        for (std::size_t i = 0; i < picture.colours.size(); ++i) {
            const Colour wanted = rastgl::IsVisible(picture.colours[i]) ? picture.colours[i] : 0;
            ASSERT_EQ(reduced.expanded[i], wanted) << count << " colours, pixel " << i;
        }
        for (std::size_t index = 0; index < 256; ++index)
            EXPECT_EQ(reduced.palette[4 * index + 3] != 0, index >= 1 && index <= std::size_t(count))
                << index;
    }
}

TEST(Reduce, KeepsTheKindsOfPixelsApart)
{
    for (const Pixels &picture :
         {Noise(97, 91, 0), Noise(97, 91, rastgl::OpaqueAlpha), Glow(200),
          Paint(256, 1, [](int x, int) { return rastgl::OpaqueAlpha | Colour(x); }),
          Paint(1, 600, [](int, int y) { return Colour(1 + y % 4) << 24 | Colour(y) << 10; }),
          Paint(300, 2, [](int x, int y) { return Colour(255 - y) << 24 | Colour(x / 2) << 9; })}) {
        const Reduced reduced = Reduce(picture);
        for (std::size_t i = 0; i < picture.colours.size(); ++i) {
            ASSERT_EQ(rastgl::IsVisible(reduced.expanded[i]), rastgl::IsVisible(picture.colours[i])) << i;
            ASSERT_EQ(rastgl::IsOpaque(reduced.expanded[i]), rastgl::IsOpaque(picture.colours[i])) << i;
        }
        EXPECT_EQ(std::count(reduced.palette.begin(), reduced.palette.begin() + 4, 0), 4);
        EXPECT_EQ(Reduce(picture), reduced) << "differs from time to time";
    }
    EXPECT_EQ(Reduce({0, 5, {}}), Reduced()) << "an empty picture leaves the palette alone";
}

// The squared error of a premultiplied pixel on average. Were every colour the mean of those that share its
// top bits (3-3-2 of opaque ones, two of each channel of others), it would be 551, 403 and 509.
TEST(Reduce, StaysCloseToThePicture)
{
    const auto shade = [](int x, int y) {
        return rastgl::OpaqueAlpha | Colour((x * x + y * y) / 400 * 0x10101 + x);
    };
    const std::pair<Pixels, double> cases[] = {
        {Glow(200), 32},
        {Paint(200, 200, shade), 20},
        {Noise(200, 200, rastgl::OpaqueAlpha), 425}, // nothing to adapt to
    };
    for (const auto &[picture, most] : cases) {
        const Reduced reduced = Reduce(picture);
        double sum = 0;
        for (std::size_t i = 0; i < picture.colours.size() * 4; ++i) {
            const Colour wanted = rastgl::Premultiply(picture.colours[i / 4]);
            const Colour shown = rastgl::Premultiply(reduced.expanded[i / 4]);
            sum += std::pow(double(Channel(shown, i % 4)) - Channel(wanted, i % 4), 2);
        }
        EXPECT_LT(sum / double(picture.colours.size()), most);
    }
}

TEST(ColourCells, LoseNothingWhenTheyGrowCoarser)
{
    rastgl::ColourCells cells;
    rastgl::ColourCell all, sum;
    Colour kind = 0;
    for (const Colour colour : Noise(300, 300, 0).colours) {
        kind ^= rastgl::OpaqueAlpha;
        const Colour added = rastgl::Premultiply(colour | kind);
        cells.Add(added);
        all.Add(added);
        const std::size_t cell = cells.Find(added);
        const rastgl::Box box = rastgl::BoxAround(cells.Lowest(cell), cells.Highest(cell));
        for (std::size_t axis = 0; axis < 4; ++axis) {
            ASSERT_LE(box.lowest[axis], rastgl::ToPosition(added)[axis]);
            ASSERT_GE(box.highest[axis], rastgl::ToPosition(added)[axis]);
        }
        ASSERT_EQ(cells.IsOpaque(cell), rastgl::IsOpaque(added));
    }
    ASSERT_LE(cells.Count(), rastgl::ColourCells::MaxCells);
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
        for (std::size_t entry = 0; entry < entries.size(); ++entry)
            if (entries[entry].opaque == entries[start].opaque &&
                DistanceSquared(place, entries[entry].at) < DistanceSquared(place, entries[wanted].at))
                wanted = entry;
        ASSERT_EQ(nearest.Find(place, start), wanted);
        rastgl::Box box{place, place};
        box.lowest[mixer() % 4] -= float(mixer() % 40);
        box.highest[mixer() % 4] += float(mixer() % 40);
        std::vector<std::uint8_t> candidates = {std::uint8_t(start)};
        nearest.AppendRivals(box, start, candidates);
        ASSERT_NE(std::ranges::find(candidates, wanted), candidates.end());
    }
}

} // namespace
