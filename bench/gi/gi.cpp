// GI decoding and encoding against libpng and against copying the picture, in one run.
//
//   decode : png    libpng's time for the same picture over ours
//   decode : copy   the time of memcpy of the decoded picture over ours
//   encode : fast   libpng at level 1 with the Sub filter over ours; : png with its default setting
#include "png.h"

#include "gfx/graphicslibrary.h"
#include "gi/gidecoder.h"
#include "gi/giencoder.h"
#include "support/pictures.h"
#include "support/ratio.h"

#include <QCoreApplication>
#include <algorithm>
#include <cstdio>
#include <cstring>

namespace
{

using namespace wb;
using namespace wb::bench;

struct Subject {
    const char *name;
    MadePicture made;
    std::int32_t transClass;
};

FrameBuf FrameOf(const Subject &subject)
{
    FrameBuf frame;
    frame.Width = subject.made.width;
    frame.Height = subject.made.height;
    frame.Pixels.assign(subject.made.pixels.begin(), subject.made.pixels.end());
    return frame;
}

void Measure(const Subject &subject, std::int32_t type, std::int32_t transClass)
{
    constexpr int Rounds = 21;
    const FrameBuf frame = FrameOf(subject);
    std::vector<std::uint8_t> png;
    std::vector<std::uint8_t> pixels(frame.Pixels.size());
    std::vector<std::uint8_t> copy(frame.Pixels.size());
    ByteArray gi;
    FrameBuf decoded;

    const auto encodeGi = [&] { EncodeGi(gi, frame, type, transClass, true); };
    const auto decodeGi = [&] {
        decoded.Width = decoded.Height = 0;
        std::int32_t offset = 0;
        DecodeGi(decoded, gi, offset);
    };
    const auto encodePng = [&](PngSetting setting) {
        EncodePng(png, frame.Pixels.data(), frame.Width, frame.Height, setting);
    };
    const auto decodePng = [&] { DecodePng(pixels.data(), png); };
    const auto copyPicture = [&] { std::memcpy(copy.data(), decoded.Pixels.data(), copy.size()); };

    encodeGi();
    decodeGi();
    const double fast = MedianRatio([&] { encodePng(PngSetting::Fastest); }, encodeGi, Rounds);
    const double usual = MedianRatio([&] { encodePng(PngSetting::Default); }, encodeGi, 3);
    const double decode = MedianRatio(decodePng, decodeGi, Rounds);
    const double copied = MedianRatio(copyPicture, decodeGi, 20 * Rounds);
    std::printf("%-7s type %d class %d  %8zu bytes  decode %6.1f : png %5.2f : copy   encode %6.1f : fast "
                "%6.1f : png\n",
                subject.name, type, transClass, gi.size(), decode, copied, fast, usual);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (!LoadGraphicsLibrary(QCoreApplication::applicationDirPath()))
        return 2;
    const Subject subjects[] = {
        {"sprite", MakeSprite(), 1}, {"graded", MakeGraded(), 2}, {"photo", MakePhoto(), 0}};
    for (const Subject &subject : subjects) {
        Measure(subject, 0, subject.transClass);
        // The types with layers are never asked for as class 0.
        for (std::int32_t type = 1; type <= 4; type++)
            Measure(subject, type, std::max(subject.transClass, 1));
    }
    UnloadGraphicsLibrary();
}
