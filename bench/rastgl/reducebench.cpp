// Reduction to 256 colours against libimagequant at speed 4 on one thread: how many times as fast, and by how
// many dB the PSNR over premultiplied colours and alpha is better.
#include "rastgl/rastgl.h"
#include "support/pictures.h"
#include "support/ratio.h"

#include <benchmark/benchmark.h>
#include <libimagequant.h>
#include <omp.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace
{

using wb::bench::MadePicture;

struct Indexed {
    explicit Indexed(const MadePicture &picture)
        : indexes(std::size_t(picture.width) * std::size_t(picture.height)), palette(1024)
    {
    }

    std::vector<std::uint8_t> indexes; // top row first
    std::vector<std::uint8_t> palette; // R, G, B, A
};

// R, G, B, A, top row first, as libimagequant takes it.
std::vector<std::uint8_t> TopDownRgba(const MadePicture &picture)
{
    std::vector<std::uint8_t> rgba;
    rgba.reserve(picture.pixels.size());
    const std::size_t rowBytes = std::size_t(picture.width) * 4;
    for (std::size_t row = picture.pixels.size(); row != 0; row -= rowBytes) {
        for (const std::uint8_t *bgra = &picture.pixels[row - rowBytes]; bgra != picture.pixels.data() + row;
             bgra += 4)
            rgba.insert(rgba.end(), {bgra[2], bgra[1], bgra[0], bgra[3]});
    }
    return rgba;
}

void ReduceByYardstick(const MadePicture &picture, const std::vector<std::uint8_t> &rgba, Indexed &result)
{
    liq_attr *options = liq_attr_create();
    liq_set_speed(options, 4);
    liq_set_max_colors(options, 256);
    liq_image *image = liq_image_create_rgba(options, rgba.data(), picture.width, picture.height, 0);
    liq_result *reduction = nullptr;
    if (liq_image_quantize(image, options, &reduction) != LIQ_OK ||
        liq_write_remapped_image(reduction, image, result.indexes.data(), result.indexes.size()) != LIQ_OK)
        std::abort();
    const liq_palette *palette = liq_get_palette(reduction);
    std::memcpy(result.palette.data(), palette->entries, palette->count * sizeof(liq_color));
    liq_result_destroy(reduction);
    liq_image_destroy(image);
    liq_attr_destroy(options);
}

void Reduce(const MadePicture &picture, Indexed &result)
{
    VTGF_RGBAtoIndexed8(result.indexes.data(), result.palette.data(), picture.pixels.data(), &picture.width,
                        &picture.height);
}

double Psnr(const std::vector<std::uint8_t> &rgba, const Indexed &result)
{
    const auto premultiplied = [](const std::uint8_t *pixel) {
        const double alpha = pixel[3];
        return std::array{pixel[0] * alpha / 255, pixel[1] * alpha / 255, pixel[2] * alpha / 255, alpha};
    };
    double squares = 0;
    for (std::size_t i = 0; i < result.indexes.size(); ++i) {
        const auto wanted = premultiplied(&rgba[4 * i]);
        const auto shown = premultiplied(&result.palette[4 * std::size_t(result.indexes[i])]);
        for (std::size_t channel = 0; channel < 4; ++channel)
            squares += (wanted[channel] - shown[channel]) * (wanted[channel] - shown[channel]);
    }
    return 10 * std::log10(255.0 * 255.0 * double(rgba.size()) / squares);
}

using Make = MadePicture (*)(int, int);

void Compare(benchmark::State &state, Make make, int width, int height, int rounds)
{
    const MadePicture picture = make(width, height);
    const std::vector<std::uint8_t> rgba = TopDownRgba(picture);
    Indexed theirs(picture);
    Indexed ours(picture);
    const double ratio = wb::bench::MedianRatio([&] { ReduceByYardstick(picture, rgba, theirs); },
                                                [&] { Reduce(picture, ours); }, rounds);
    for ([[maybe_unused]] auto _ : state)
        Reduce(picture, ours);
    state.counters["times_as_fast"] = ratio;
    state.counters["psnr"] = Psnr(rgba, ours);
    state.counters["psnr_gain"] = Psnr(rgba, ours) - Psnr(rgba, theirs);
}

BENCHMARK_CAPTURE(Compare, sprite_1024x768, wb::bench::MakeSprite, 1024, 768, 21)->Iterations(20);
BENCHMARK_CAPTURE(Compare, graded_1024x768, wb::bench::MakeGraded, 1024, 768, 21)->Iterations(20);
BENCHMARK_CAPTURE(Compare, photo_1024x768, wb::bench::MakePhoto, 1024, 768, 21)->Iterations(20);
BENCHMARK_CAPTURE(Compare, sprite_128x128, wb::bench::MakeSprite, 128, 128, 101)->Iterations(100);
BENCHMARK_CAPTURE(Compare, graded_128x128, wb::bench::MakeGraded, 128, 128, 101)->Iterations(100);
BENCHMARK_CAPTURE(Compare, photo_128x128, wb::bench::MakePhoto, 128, 128, 101)->Iterations(100);

} // namespace

int main(int argc, char **argv)
{
    omp_set_num_threads(1); // what libimagequant would otherwise spread its work with
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
