// Loading an animation of 200 packed frames of 512 x 512 pixels for viewing, in one run against what has to
// be done at least.
//
//   zlib        the time of zlib's bare uncompress of every frame, and drawing of its layers, over ours
//   libdeflate  the same with what the graphics library expands with
#include "anim/gaiformat.h"
#include "anim/gaireader.h"
#include "anim/gaiwriter.h"
#include "archive/zlblock.h"
#include "gfx/graphicslibrary.h"
#include "gi/giformat.h"
#include "support/pictures.h"
#include "support/ratio.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <string>
#include <zlib.h>

namespace
{

using namespace wb;
using namespace wb::bench;

constexpr int FrameCount = 200;
constexpr int Side = 512;

// The picture turned by some more rows in each frame.
std::vector<FrameBuf> MakeFrames(const MadePicture &made, std::int32_t type, std::int32_t transClass)
{
    std::vector<FrameBuf> frames(FrameCount);
    for (std::size_t i = 0; i < frames.size(); ++i) {
        FrameBuf &frame = frames[i];
        frame.Width = frame.Height = Side;
        frame.GiType = type;
        frame.TransType = transClass;
        frame.Pixels.resize(made.pixels.size());
        std::ranges::rotate_copy(made.pixels, made.pixels.begin() + std::ptrdiff_t(i * Side * 4),
                                 frame.Pixels.begin());
    }
    return frames;
}

using Expand = void (*)(ByteArray &gi, ByteView block);

void ExpandWithZlib(ByteArray &gi, ByteView block)
{
    uLongf length = gi.size();
    const ByteView stream = block.subspan(ZlHeaderSize);
    if (uncompress(gi.data(), &length, stream.data(), stream.size()) != Z_OK)
        std::abort();
}

void ExpandWithLibrary(ByteArray &gi, ByteView block)
{
    const auto capacity = std::int32_t(gi.size());
    const auto length = std::int32_t(block.size());
    if (Graphics().VTGF_ZLib_UnCompress(gi.data(), &capacity, block.data(), &length) <= 0)
        std::abort();
}

// Types 1 and 2, which the frames are of.
void DrawLayers(ByteArray &canvas, ByteView gi)
{
    constexpr std::int32_t Pitch = Side * 4;
    const GraphicsLibrary &graphics = Graphics();
    const GiHeader header = ReadGiHeader(gi, 0).value();
    const auto draw = [&](const GiLayer &layer, auto function) {
        if (!layer.Data.empty())
            function(canvas.data() + layer.Bounds.Top * Pitch + layer.Bounds.Left * 4, Pitch,
                     layer.Data.data());
    };
    draw(header.Layers[2], graphics.VTGR_AlphaBuf_Draw_RGBA);
    draw(header.Layers[1], graphics.VTGR_TransAlphaBuf_DrawRGBA_16);
    draw(header.Layers[0], graphics.VTGR_TransBuf_DrawRGBA_16);
}

// The time of what cannot be avoided. Layers are drawn onto an empty canvas, as the frames are; emptying it
// is not counted.
double BareTime(ByteView file, const GaiHeader &header, Expand expand)
{
    static ByteArray gi(std::size_t(Side) * Side * 8);
    static ByteArray canvas(std::size_t(Side) * Side * 4);
    double time = 0;
    for (std::int32_t i = 0; i < FrameCount; ++i) {
        const GaiFrame frame = ReadGaiFrame(file, header, i);
        const ByteView block = file.subspan(std::size_t(frame.Offset), std::size_t(frame.Length));
        std::ranges::fill(canvas, std::uint8_t(0));
        time += TimeOf([&] {
            expand(gi, block);
            DrawLayers(canvas, gi);
        });
    }
    return time;
}

void Load(benchmark::State &state, const MadePicture &made, std::int32_t type)
{
    constexpr int Rounds = 15;
    const ByteArray file = WriteGai({0, 0, Side, Side}, MakeFrames(made, type, type),
                                    {.Background = false, .Packed = true, .Crop = true});
    const GaiHeader header = ReadGaiHeader(file).value();
    FrameSet document;
    FrameBuf canvas;
    const auto load = [&] { document = OpenGaiDocument(file, canvas, {}); };
    for ([[maybe_unused]] auto _ : state) {
        std::vector<double> zlib, libdeflate, ours;
        for (int round = 0; round < Rounds; ++round) {
            FreeFrameSet(document);
            ours.push_back(TimeOf(load));
            zlib.push_back(BareTime(file, header, ExpandWithZlib) / ours.back());
            libdeflate.push_back(BareTime(file, header, ExpandWithLibrary) / ours.back());
        }
        state.counters["zlib"] = Median(zlib);
        state.counters["libdeflate"] = Median(libdeflate);
        state.counters["ms"] = Median(ours) * 1e3;
    }
    if (document.Count != FrameCount)
        std::abort();
    state.counters["megabytes"] = double(file.size()) / 1e6;
}

[[maybe_unused]] const bool IsRegistered = [] {
    static const MadePicture sprite = MakeSprite(Side, Side), graded = MakeGraded(Side, Side);
    benchmark::RegisterBenchmark("load/sprite", Load, sprite, 1)->Iterations(1);
    benchmark::RegisterBenchmark("load/graded", Load, graded, 2)->Iterations(1);
    return true;
}();

} // namespace
