#include "rastgl/canvas.h"
#include "rastgl/palettefit.h"
#include "rastgl/rastgl.h"
#include "rastgl/rows565.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using rastgl::Channel;
using rastgl::Colour;
using rastgl::DistanceSquared;

// A glow over a transparent ground, opaque in the middle.
Canvas Glow(std::int32_t size)
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

Reduced Reduce(Canvas picture)
{
    Reduced made;
    made.indexes.assign(picture.colours.size(), 0xAA);
    VTGF_RGBAtoIndexed8(made.indexes.data(), made.palette.data(), picture.Bytes(), &picture.width,
                        &picture.height);
    VTGF_AlphaSimpleBufPalAlpha_Copy_32(picture.Bytes(), made.indexes.data(), made.palette.data(),
                                        &picture.width, &picture.height);
    made.expanded = std::move(picture.colours);
    return made;
}

TEST(Reduce, KeepsUpTo255Colours)
{
    for (const int count : {1, 2, 254, 255}) {
        // Every fourth pixel is transparent, with colour bytes that must not become an entry.
        const Canvas picture = Paint(61, 37, [count](int x, int y) {
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
            EXPECT_EQ(wb::Load32(&reduced.palette[4 * index]) != 0,
                      index >= 1 && index <= std::size_t(count));
    }
}

// The squared error of a premultiplied pixel on average. Were every colour the mean of those that share its
// top bits (3-3-2 of opaque ones, two of each channel of others), the first three would have 551, 403 and
// 509.
TEST(Reduce, StaysCloseAndKeepsTheKindsOfPixelsApart)
{
    const auto rings = [](int x, int y) {
        return rastgl::OpaqueAlpha | Colour((x * x + y * y) / 400 * 0x10101 + x);
    };
    const std::pair<Canvas, double> cases[] = {
        {Glow(200), 32},
        {Paint(200, 200, rings), 20},
        {Noise(200, 200, 7, rastgl::OpaqueAlpha), 425}, // nothing to adapt to
        {Noise(97, 91, 7), 505},
        {Paint(256, 1, [](int x, int) { return rastgl::OpaqueAlpha | Colour(x); }), 0.004},
        {Paint(1, 600, [](int, int y) { return Colour(1 + y % 4) << 24 | Colour(y) << 10; }), 0},
        {Paint(300, 2, [](int x, int y) { return Colour(255 - y) << 24 | Colour(x / 2) << 9; }), 0.16},
    };
    for (const auto &[picture, most] : cases) {
        const Reduced reduced = Reduce(picture);
        double sum = 0;
        for (std::size_t i = 0; i < picture.colours.size(); ++i) {
            const Colour wanted = picture.colours[i], shown = reduced.expanded[i];
            ASSERT_EQ(rastgl::IsVisible(shown), rastgl::IsVisible(wanted)) << i;
            ASSERT_EQ(rastgl::IsOpaque(shown), rastgl::IsOpaque(wanted)) << i;
            for (std::size_t channel = 0; channel < 4; ++channel)
                sum += std::pow(double(Channel(rastgl::Premultiply(shown), channel)) -
                                    Channel(rastgl::Premultiply(wanted), channel),
                                2);
        }
        EXPECT_LE(sum / double(picture.colours.size()), most);
        EXPECT_EQ(std::count(reduced.palette.begin(), reduced.palette.begin() + 4, 0), 4);
        EXPECT_EQ(Reduce(picture), reduced) << "differs from time to time";
    }
    EXPECT_EQ(Reduce(Flat(0, 5)), Reduced()) << "an empty picture leaves the palette alone";
}

TEST(ColourCells, LoseNothingWhenTheyGrowCoarser)
{
    rastgl::ColourCells cells;
    rastgl::ColourCell all, sum;
    Colour kind = 0;
    for (const Colour colour : Noise(300, 300, 7).colours) {
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
    std::mt19937 mixer(3);
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
