// The plane conversions and buffer operations against copying the 32-bit picture, in one run.
#include "rastgl/rastgl.h"

#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "rastgl/rows565.h"
#include "support/pictures.h"
#include "support/ratio.h"

#include <benchmark/benchmark.h>
#include <cstring>

namespace
{

using namespace wb;
using namespace wb::bench;

class Comparison
{
public:
    explicit Comparison(const MadePicture &made)
    {
        m_frame.Width = made.width;
        m_frame.Height = made.height;
        m_frame.Pixels.assign(made.pixels.begin(), made.pixels.end());
        m_copy = m_frame.Pixels;
        m_target = m_frame.Pixels;
        m_plane.assign(made.pixels.begin(), made.pixels.begin() + std::ptrdiff_t(made.pixels.size() / 2));
    }

    // Each counter is how many times as fast as copying the picture the operation is.
    void Run(benchmark::State &state)
    {
        const GraphicsLibrary &graphics = Graphics();
        const std::int32_t *width = &m_frame.Width;
        const std::int32_t *height = &m_frame.Height;
        const auto bytes = static_cast<std::int32_t>(m_frame.Pixels.size());
        std::uint8_t *source = m_frame.Pixels.data();
        std::uint8_t *target = m_target.data();
        std::uint8_t *plane = m_plane.data();
        const auto compare = [this, &state](const char *operation, auto work) {
            const auto copy = [this] { std::memcpy(m_copy.data(), m_frame.Pixels.data(), m_copy.size()); };
            state.counters[operation] = MedianRatio(copy, work, 401);
        };

        compare("from_565", [&] { graphics.VTGF_Convert565toRGBA(target, plane, width, height); });
        compare("to_565", [&] { graphics.VTGF_ConvertRGBAto565(plane, source, width, height); });
        compare("premultiply", [&] { PackPremultipliedRun(plane, source, std::size_t(bytes) / 4); });
        compare("palette",
                [&] { graphics.VTGF_AlphaSimpleBufPalAlpha_Copy_32(target, plane, source, width, height); });
        compare("flip", [&] { graphics.VTGF_VFlipBuf_Copy_32(target, source, width, height); });
        compare("flip_in_place", [&] { FlipRows(m_frame); });
        compare("opaque_layer", [&] { graphics.VTGF_TransBuf_Copy_32(target, &bytes, source, &bytes); });
        compare("bounds", [&] {
            m_bounds += graphics.VTGF_GetStartX_32(source, width, height);
            m_bounds += graphics.VTGF_GetStartY_32(source, width, height);
            m_bounds += graphics.VTGF_GetFinishX_32(source, width, height);
            m_bounds += graphics.VTGF_GetFinishY_32(source, width, height);
        });
        compare("difference",
                [&] { graphics.VTGF_AnimFrame_Build_32(target, m_copy.data(), source, width, height); });
    }

private:
    FrameBuf m_frame;
    ByteArray m_copy;
    ByteArray m_target;
    ByteArray m_plane;
    std::int64_t m_bounds = 0; // keeps the results wanted
};

void Convert(benchmark::State &state, MadePicture (*make)(int, int))
{
    Comparison comparison(make(1024, 768));
    for ([[maybe_unused]] auto _ : state)
        comparison.Run(state);
}

BENCHMARK_CAPTURE(Convert, sprite, MakeSprite)->Iterations(1);
BENCHMARK_CAPTURE(Convert, graded, MakeGraded)->Iterations(1);
BENCHMARK_CAPTURE(Convert, photo, MakePhoto)->Iterations(1);

} // namespace
