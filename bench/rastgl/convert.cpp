// The plane conversions and buffer operations against copying the 32-bit picture, in one run.
#include "rastgl/rastgl.h"

#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "rastgl/rows565.h"
#include "support/pictures.h"
#include "support/ratio.h"

#include <QCoreApplication>
#include <cstdio>
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

    void Run(const char *name)
    {
        const GraphicsLibrary &graphics = Graphics();
        const std::int32_t *width = &m_frame.Width;
        const std::int32_t *height = &m_frame.Height;
        const auto bytes = static_cast<std::int32_t>(m_frame.Pixels.size());
        std::uint8_t *source = m_frame.Pixels.data();
        std::uint8_t *target = m_target.data();
        std::uint8_t *plane = m_plane.data();

        std::printf("%s\n", name);
        Show("5-6-5 to 32 bits", [&] { graphics.VTGF_Convert565toRGBA(target, plane, width, height); });
        Show("32 bits to 5-6-5", [&] { graphics.VTGF_ConvertRGBAto565(plane, source, width, height); });
        Show("premultiply to 5-6-5", [&] { PackPremultipliedRun(plane, source, std::size_t(bytes) / 4); });
        Show("palette to 32 bits",
             [&] { graphics.VTGF_AlphaSimpleBufPalAlpha_Copy_32(target, plane, source, width, height); });
        Show("flip", [&] { graphics.VTGF_VFlipBuf_Copy_32(target, source, width, height); });
        Show("flip in place", [&] { FlipRows(m_frame); });
        Show("opaque layer", [&] { graphics.VTGF_TransBuf_Copy_32(target, &bytes, source, &bytes); });
        Show("bounds", [&] {
            m_bounds += graphics.VTGF_GetStartX_32(source, width, height);
            m_bounds += graphics.VTGF_GetStartY_32(source, width, height);
            m_bounds += graphics.VTGF_GetFinishX_32(source, width, height);
            m_bounds += graphics.VTGF_GetFinishY_32(source, width, height);
        });
        Show("difference",
             [&] { graphics.VTGF_AnimFrame_Build_32(target, m_copy.data(), source, width, height); });
    }

private:
    template <typename Work>
    void Show(const char *operation, Work work)
    {
        const auto copy = [this] { std::memcpy(m_copy.data(), m_frame.Pixels.data(), m_copy.size()); };
        std::printf("  %-22s %5.2f : copy\n", operation, MedianRatio(copy, work, 401));
    }

    FrameBuf m_frame;
    ByteArray m_copy;
    ByteArray m_target;
    ByteArray m_plane;
    std::int64_t m_bounds = 0; // keeps the results wanted
};

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (!LoadGraphicsLibrary(QCoreApplication::applicationDirPath()))
        return 2;
    Comparison(MakeSprite()).Run("sprite");
    Comparison(MakeGraded()).Run("graded");
    Comparison(MakePhoto()).Run("photo");
    UnloadGraphicsLibrary();
}
