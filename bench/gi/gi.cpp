// GI decoding and encoding against libpng and against copying the picture, in one run.
//
//   decode_png    libpng's time for decoding the same picture over ours
//   decode_copy   the time of memcpy of the decoded picture over ours
//   encode_fast   the time of libpng at level 1 with the Sub filter over ours; encode_png with its defaults
#include "png.h"

#include "gfx/graphicslibrary.h"
#include "gi/gidecoder.h"
#include "gi/giencoder.h"
#include "support/pictures.h"
#include "support/ratio.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstring>
#include <string>

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

void Measure(benchmark::State &state, const Subject &subject, std::int32_t type, std::int32_t transClass)
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
    for ([[maybe_unused]] auto _ : state) {
        state.counters["encode_fast"] =
            MedianRatio([&] { encodePng(PngSetting::Fastest); }, encodeGi, Rounds);
        state.counters["encode_png"] = MedianRatio([&] { encodePng(PngSetting::Default); }, encodeGi, 3);
        state.counters["decode_png"] = MedianRatio(decodePng, decodeGi, Rounds);
        state.counters["decode_copy"] = MedianRatio(copyPicture, decodeGi, 20 * Rounds);
    }
    state.counters["bytes"] = double(gi.size());
}

// Every type that the picture may have; those with layers are never asked for as class 0.
[[maybe_unused]] const bool IsRegistered = [] {
    static const Subject subjects[] = {
        {"sprite", MakeSprite(), 1}, {"graded", MakeGraded(), 2}, {"photo", MakePhoto(), 0}};
    for (const Subject &subject : subjects)
        for (std::int32_t type = 0; type <= 4; ++type) {
            const std::int32_t transClass = type == 0 ? subject.transClass : std::max(subject.transClass, 1);
            const std::string name = std::string(subject.name) + "/type_" + std::to_string(type);
            benchmark::RegisterBenchmark(name.c_str(), Measure, subject, type, transClass)->Iterations(1);
        }
    return true;
}();

} // namespace
