// Reduction to 256 colours. Few colours are kept as they are; many are counted in cells, cut into groups, and
// the groups' means refined before every pixel gets its nearest one.
#include "rastgl/colourcells.h"
#include "rastgl/palettefit.h"
#include "rastgl/rastgl.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <new>

namespace rastgl
{

namespace
{

constexpr std::size_t MaxEntries = 255; // index 0 is the empty pixel

// The pixels to reduce, bottom row first, and where their indexes go, top row first.
struct Job {
    const std::uint8_t *pixels;
    std::uint8_t *indexes;
    std::int32_t width;
    std::int32_t height;

    // Calls visit(colour, index) for every pixel until it gives false. Gives whether it came to the end.
    template <typename Visit>
    bool ForEachPixel(Visit &&visit) const;
};

template <typename Visit>
bool Job::ForEachPixel(Visit &&visit) const
{
    const std::size_t rowLength = std::size_t(width);
    const std::uint8_t *pixel = pixels;
    for (std::size_t row = std::size_t(height); row-- != 0;) {
        std::uint8_t *indexRow = indexes + row * rowLength;
        for (std::size_t column = 0; column < rowLength; ++column, pixel += 4) {
            Colour colour = 0;
            std::memcpy(&colour, pixel, sizeof(colour));
            if (!visit(colour, indexRow[column]))
                return false;
        }
    }
    return true;
}

void StoreEntry(std::uint8_t *palette, std::size_t index, unsigned blue, unsigned green, unsigned red,
                unsigned alpha)
{
    palette[4 * index + 0] = std::uint8_t(red);
    palette[4 * index + 1] = std::uint8_t(green);
    palette[4 * index + 2] = std::uint8_t(blue);
    palette[4 * index + 3] = std::uint8_t(alpha);
}

// Hash table from colour to index, for at most MaxEntries colours.
class ExactColours
{
public:
    // The index of the colour, from 1 on; 0 when there are too many colours.
    std::uint8_t IndexOf(Colour colour)
    {
        std::size_t slot = (colour * 0x9E3779B1U) >> 22;
        while (m_index[slot] != 0 && m_colour[slot] != colour)
            slot = (slot + 1) % Slots;
        if (m_index[slot] == 0 && m_count < MaxEntries) {
            m_colour[slot] = colour;
            m_index[slot] = std::uint8_t(++m_count);
        }
        return m_index[slot];
    }

    void Store(std::uint8_t *palette) const
    {
        for (std::size_t slot = 0; slot < Slots; ++slot) {
            const Colour colour = m_colour[slot];
            if (m_index[slot] != 0)
                StoreEntry(palette, m_index[slot], Channel(colour, 0), Channel(colour, 1), Channel(colour, 2),
                           Channel(colour, 3));
        }
    }

private:
    static constexpr std::size_t Slots = 1024;

    std::array<Colour, Slots> m_colour = {};
    std::array<std::uint8_t, Slots> m_index = {};
    std::size_t m_count = 0;
};

// Keeps every colour as it is; false when there are too many.
bool ReduceExactly(const Job &job, std::uint8_t *palette)
{
    ExactColours colours;
    const bool complete = job.ForEachPixel([&](Colour colour, std::uint8_t &index) {
        index = IsVisible(colour) ? colours.IndexOf(colour) : 0;
        return index != 0 || !IsVisible(colour);
    });
    if (complete)
        colours.Store(palette);
    return complete;
}

void CountColours(const Job &job, ColourCells &cells)
{
    job.ForEachPixel([&](Colour colour, std::uint8_t &) {
        if (IsVisible(colour))
            cells.Add(Premultiply(colour));
        return true;
    });
}

// Gives every pixel its nearest entry, and each entry the sum of its pixels.
void MapPixels(const Job &job, const ColourCells &cells, const CellPalette &fitted,
               std::vector<ColourCell> &sums)
{
    for (std::size_t cell = 0; cell < cells.Count(); ++cell) {
        if (fitted.Sure(cell))
            sums[fitted.First(cell)].Add(cells[cell]);
    }
    job.ForEachPixel([&](Colour colour, std::uint8_t &index) {
        if (!IsVisible(colour)) {
            index = 0;
            return true;
        }
        const Colour premultiplied = Premultiply(colour);
        const std::size_t cell = cells.Find(premultiplied);
        std::uint8_t entry = fitted.First(cell);
        if (!fitted.Sure(cell)) {
            entry = fitted.Nearest(cell, premultiplied);
            sums[entry].Add(premultiplied);
        }
        index = std::uint8_t(entry + 1);
        return true;
    });
}

void StoreMeans(std::span<const ColourCell> sums, std::uint8_t *palette)
{
    for (std::size_t i = 0; i < sums.size(); ++i) {
        const ColourCell &sum = sums[i];
        if (sum.pixels == 0)
            continue;
        const double alpha = double(sum.sums[3]) / double(sum.pixels);
        const auto straight = [&](std::size_t channel) {
            return unsigned(std::lround(double(sum.sums[channel]) * 255 / double(sum.sums[3])));
        };
        StoreEntry(palette, i + 1, straight(0), straight(1), straight(2), unsigned(std::lround(alpha)));
    }
}

// Fits a palette to the picture, then gives every pixel its nearest entry.
void ReduceClosely(const Job &job, std::uint8_t *palette)
{
    ColourCells cells;
    CountColours(job, cells);
    const CellPalette fitted = FitPalette(cells, MaxEntries);
    std::vector<ColourCell> sums(fitted.EntryCount());
    MapPixels(job, cells, fitted, sums);
    StoreMeans(sums, palette);
}

} // namespace

} // namespace rastgl

void VTGF_RGBAtoIndexed8(uint8_t *indexes, uint8_t *palette, const uint8_t *pixels, const int32_t *width,
                         const int32_t *height)
{
    if (*width <= 0 || *height <= 0)
        return;
    std::memset(palette, 0, 1024);
    const rastgl::Job job{pixels, indexes, *width, *height};
    try {
        if (!rastgl::ReduceExactly(job, palette))
            rastgl::ReduceClosely(job, palette);
    } catch (const std::bad_alloc &) {
        std::memset(indexes, 0, std::size_t(*width) * std::size_t(*height));
    }
}
