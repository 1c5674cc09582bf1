// Writing PNG files against libpng left to its own settings: at least twice as fast, at most 8 % larger.
#include "rastgl/rastgl.h"
#include "support/pictures.h"
#include "support/ratio.h"

#include <benchmark/benchmark.h>
#include <png.h>

#include <cstdio>
#include <filesystem>
#include <string>

namespace
{

using namespace wb::bench;

struct Source {
    MadePicture made;
    bool isOpaque = false;
};

// What a program that leaves every choice to libpng does, into a file as ours.
void WriteWithDefaults(const Source &source, const std::string &path)
{
    const MadePicture &made = source.made;
    std::FILE *file = std::fopen(path.c_str(), "wb");
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_IHDR(png, info, png_uint_32(made.width), png_uint_32(made.height), 8,
                 source.isOpaque ? PNG_COLOR_TYPE_RGB : PNG_COLOR_TYPE_RGBA, 0, 0, 0);
    png_write_info(png, info);
    png_set_bgr(png);
    if (source.isOpaque)
        png_set_filler(png, 0, PNG_FILLER_AFTER);
    for (int row = made.height - 1; row >= 0; --row)
        png_write_row(png, &made.pixels[std::size_t(row) * std::size_t(made.width) * 4]);
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    std::fclose(file);
}

// A handle of the picture as its file would give it: of 24 bits when it is opaque.
int32_t Hold(const Source &source, const std::string &path)
{
    if (source.isOpaque) {
        WriteWithDefaults(source, path);
        return VTGF_Read_PNG_File(path.c_str());
    }
    const int32_t bits = 32;
    return VTGF_Read_Buf(source.made.pixels.data(), &source.made.width, &source.made.height, &bits);
}

void WritePng(benchmark::State &state, const Source &source)
{
    constexpr int Rounds = 9;

    const auto folder = std::filesystem::temp_directory_path();
    const std::string ours = (folder / "bench-ours.png").string();
    const std::string limit = (folder / "bench-limit.png").string();
    const int32_t handle = Hold(source, ours);
    bool isWritten = true;
    while (state.KeepRunning()) {
        state.counters["ratio"] = MedianRatio(
            [&] { WriteWithDefaults(source, limit); },
            [&] { isWritten = VTGF_Write_PNG_File(ours.c_str(), handle) == 1 && isWritten; }, Rounds);
    }
    if (!isWritten)
        state.SkipWithError("not written");
    const double size = double(std::filesystem::file_size(ours));
    const double limitSize = double(std::filesystem::file_size(limit));
    state.counters["bytes"] = size;
    state.counters["limitBytes"] = limitSize;
    state.counters["sizeRatio"] = size / limitSize;
    VTGF_DIB_Free(handle);
    std::filesystem::remove(ours);
    std::filesystem::remove(limit);
}

BENCHMARK_CAPTURE(WritePng, Sprite, Source{MakeSprite(), false})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WritePng, Graded, Source{MakeGraded(), false})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(WritePng, Photo, Source{MakePhoto(), true})->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
