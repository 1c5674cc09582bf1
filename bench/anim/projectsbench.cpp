// What the HAI editor and the animation creator do with many pictures, in one run against what has to be done
// at least.
//
//   bare    the time of scaling and reducing the pictures alone, over ours
//   memcpy  the time of copying all bytes that are read and written, over ours: for the first time, and again
//           into the memory of frames built before
#include "anim/animproject.h"
#include "anim/haiproject.h"
#include "gfx/graphicslibrary.h"
#include "gfx/pixels.h"
#include "support/pictures.h"
#include "support/ratio.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <cstring>

namespace
{

using namespace wb;
using namespace wb::bench;

constexpr int PictureCount = 100;
constexpr int Rounds = 9;

// The picture turned by some more rows each time.
std::vector<FrameBuf> MakePictures(const MadePicture &made)
{
    std::vector<FrameBuf> pictures(PictureCount);
    for (std::size_t i = 0; i < pictures.size(); ++i) {
        pictures[i].Width = made.width;
        pictures[i].Height = made.height;
        pictures[i].Pixels.resize(made.pixels.size());
        std::ranges::rotate_copy(made.pixels, made.pixels.begin() + std::ptrdiff_t(i) * made.width * 4,
                                 pictures[i].Pixels.begin());
    }
    return pictures;
}

void ScaleAndReduce(const FrameBuf &picture)
{
    static const std::int32_t side = 128;
    static ByteArray scaled(128 * 128 * 4), indexes(128 * 128), palette(1024);
    Graphics().VTGF_Rescale(scaled.data(), &side, &side, picture.Pixels.data(), &picture.Width,
                            &picture.Height);
    Graphics().VTGF_RGBAtoIndexed8(indexes.data(), palette.data(), scaled.data(), &side, &side);
}

void BringIntoHai(benchmark::State &state, MadePicture (*make)(int, int))
{
    const std::vector<FrameBuf> pictures = MakePictures(make(512, 512));
    std::vector<std::int32_t> handles;
    for (const FrameBuf &picture : pictures)
        handles.push_back(FrameBufToDib(picture));
    HaiProject project;
    const auto bring = [&] {
        for (const std::int32_t handle : handles)
            project.AddFrame(HaiProject::Animation, DibToFrameBuf(handle), QStringLiteral("a.png"));
    };
    const auto bare = [&] { std::ranges::for_each(pictures, ScaleAndReduce); };
    for ([[maybe_unused]] auto _ : state) {
        state.counters["bare"] =
            MedianRatio(bare, bring, Rounds, [&] { project.Clean(HaiProject::Animation); });
        state.counters["ms"] = TimeOf(bare) * 1e3;
    }
    if (project.List(HaiProject::Animation).Count() != PictureCount)
        std::abort();
    std::ranges::for_each(handles, Graphics().VTGF_DIB_Free);
}

// Copies as many bytes as the three buffers of each frame have.
void CopyThrice(const std::vector<FrameBuf> &pictures)
{
    static ByteArray target(pictures[0].Pixels.size());
    for (std::size_t i = 1; i < pictures.size(); ++i)
        for (int part = 0; part < 3; ++part) {
            std::memcpy(target.data(), pictures[i - std::size_t(part != 0)].Pixels.data(), target.size());
            benchmark::DoNotOptimize(target.data());
            benchmark::ClobberMemory();
        }
}

void BuildFrames(benchmark::State &state, MadePicture (*make)(int, int))
{
    const std::vector<FrameBuf> pictures = MakePictures(make(1024, 768));
    AnimProject loaded;
    for (const FrameBuf &picture : pictures)
        loaded.AddFrame(picture, QStringLiteral("a.png"));
    AnimProject project = loaded;
    const auto copy = [&] { CopyThrice(pictures); };
    const auto build = [&] { project.Build([](std::int32_t, std::int32_t) {}); };
    for ([[maybe_unused]] auto _ : state) {
        state.counters["memcpy/first"] = MedianRatio(copy, build, Rounds, [&] { project = loaded; });
        state.counters["memcpy/again"] = MedianRatio(copy, build, Rounds, [&] { project.GoBack(); });
        state.counters["ms"] = TimeOf(copy) * 1e3;
    }
    if (!project.IsGenerated() || project.Frames().size() != PictureCount)
        std::abort();
}

[[maybe_unused]] const bool IsRegistered = [] {
    using Make = MadePicture (*)(int, int);
    for (const auto &[name, make] :
         {std::pair<std::string, Make>("sprite", MakeSprite), {"graded", MakeGraded}, {"photo", MakePhoto}}) {
        benchmark::RegisterBenchmark(("hai/" + name).c_str(), BringIntoHai, make)->Iterations(1);
        benchmark::RegisterBenchmark(("build/" + name).c_str(), BuildFrames, make)->Iterations(1);
    }
    return true;
}();

} // namespace
