#include "rastgl/compose.h"

#include "rastgl/cpu.h"
#include "rastgl/rows565.h"

#include <algorithm>
#include <array>

namespace rastgl
{

using namespace wb;

namespace
{

// The 8-bit colours whose premultiplied form is a 5- or 6-bit value, for one alpha.
struct Unpremultiplied {
    std::array<std::uint8_t, 32> five;
    std::array<std::uint8_t, 64> six;
};

// 255 / alpha times the widened value, to the nearest and at most 255. Premultiplying and packing the result
// gives the value again wherever some colour with that alpha has it.
constexpr std::uint8_t Unpremultiply(int value, int alpha)
{
    return static_cast<std::uint8_t>(alpha == 0 ? 0 : std::min(255, (value * 255 + alpha / 2) / alpha));
}

constexpr std::array<Unpremultiplied, 256> MakeUnpremultiplied()
{
    std::array<Unpremultiplied, 256> table{};
    for (int alpha = 0; alpha < 256; alpha++) {
        for (unsigned value = 0; value < 32; value++)
            table[alpha].five[value] = Unpremultiply(Widen5(value), alpha);
        for (unsigned value = 0; value < 64; value++)
            table[alpha].six[value] = Unpremultiply(Widen6(value), alpha);
    }
    return table;
}

constexpr std::array<Unpremultiplied, 256> UnpremultipliedBy = MakeUnpremultiplied();

constexpr std::array<std::uint8_t, 256> MakeAlphas()
{
    std::array<std::uint8_t, 256> table{};
    for (int t = 0; t < 256; t++)
        table[t] = AlphaOfTransparency(static_cast<std::uint8_t>(t));
    return table;
}

constexpr std::array<std::uint8_t, 256> AlphaOf = MakeAlphas();

// The largest five-bit value of a colour premultiplied by this alpha.
constexpr std::uint32_t MostOfFive(std::uint32_t alpha)
{
    return (alpha + 1) * 31 / 255;
}

// The alpha of a pixel whose larger five-bit channel has this value. A transparency byte stands for four
// alphas; for a few of them the one it reads as is too small by 1 or 2 for the brightest colours that the
// largest of the four has. Those pixels get an alpha that their colour can have, so that coding them again
// gives the same bytes.
std::uint32_t AlphaFor(std::uint32_t alpha, std::uint32_t five)
{
    if (five <= MostOfFive(alpha) || five > MostOfFive(alpha | 3) || alpha == 0)
        return alpha;
    while (five > MostOfFive(alpha))
        alpha++;
    return alpha;
}

// Each channel's sum, at most 255.
std::uint32_t AddSaturated(std::uint32_t one, std::uint32_t other)
{
#if defined(__SSE2__)
    const __m128i sum =
        _mm_adds_epu8(_mm_cvtsi32_si128(static_cast<int>(one)), _mm_cvtsi32_si128(static_cast<int>(other)));
    return static_cast<std::uint32_t>(_mm_cvtsi128_si32(sum));
#else
    std::uint32_t sum = 0;
    for (int shift = 0; shift < 32; shift += 8)
        sum |= std::min((one >> shift & 255) + (other >> shift & 255), 255u) << shift;
    return sum;
#endif
}

} // namespace

std::uint32_t LayAlpha(std::uint32_t pixel, std::uint32_t alpha)
{
    const std::uint32_t below = pixel >> 24;
    if (below == 0)
        return alpha << 24;

    const std::uint32_t through = below * (255 - alpha); // of 255 * 255
    const std::uint32_t sum = alpha * 255 + through;
    const std::uint32_t result = (sum + 127) / 255;
    const auto weigh = [=](std::uint32_t c) { return (2 * c * through + 255 * result) / (510 * result); };
    return result << 24 | weigh(pixel >> 16 & 255) << 16 | weigh(pixel >> 8 & 255) << 8 | weigh(pixel & 255);
}

std::uint32_t AddColour(std::uint32_t pixel, std::uint16_t colour)
{
    const std::uint8_t r5 = colour >> 11;
    const std::uint8_t b5 = colour & 31;
    const std::uint32_t alpha = AlphaFor(pixel >> 24, std::max(r5, b5));
    const Unpremultiplied &by = UnpremultipliedBy[alpha];
    const std::uint32_t laid = (pixel & 0xFFFFFF) | alpha << 24;
    return AddSaturated(laid, PixelOf(by.five[r5], by.six[colour >> 5 & 63], by.five[b5], 0));
}

namespace
{

bool IsEmptyFew(const std::uint8_t *pixels, std::size_t count)
{
    std::uint32_t seen = 0;
    for (std::size_t i = 0; i < count; i++)
        seen |= Load32(pixels + i * 4);
    return seen >> 24 == 0;
}

void LayFewAlphas(std::uint8_t *pixels, const std::uint8_t *transparencies, std::size_t count)
{
    for (std::size_t i = 0; i < count; i++)
        Store32(pixels + i * 4, LayAlpha(Load32(pixels + i * 4), AlphaOf[transparencies[i]]));
}

void AddFewColours(std::uint8_t *pixels, const std::uint8_t *colours, std::size_t count)
{
    for (std::size_t i = 0; i < count; i++)
        Store32(pixels + i * 4, AddColour(Load32(pixels + i * 4), Load16(colours + i * 2)));
}

using RunFunction = void (*)(std::uint8_t *, const std::uint8_t *, std::size_t);

struct RunFunctions {
    bool (*isEmpty)(const std::uint8_t *, std::size_t) = IsEmptyFew;
    RunFunction layAlphas = LayFewAlphas;
    RunFunction addColours = AddFewColours;
};

#if WB_X86_CHOICE

constexpr std::size_t Block = 8;

WB_AVX2 inline __m256i LoadPixels(const std::uint8_t *place)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i *>(place));
}

WB_AVX2 inline void StorePixels(std::uint8_t *place, __m256i pixels)
{
    _mm256_storeu_si256(reinterpret_cast<__m256i *>(place), pixels);
}

WB_AVX2 inline bool HasNoAlpha(__m256i pixels)
{
    return _mm256_testz_si256(pixels, _mm256_set1_epi32(static_cast<int>(0xFF000000)));
}

WB_AVX2 bool IsEmptyAvx2(const std::uint8_t *pixels, std::size_t count)
{
    if (count < Block)
        return IsEmptyFew(pixels, count);
    __m256i seen = LoadPixels(pixels + (count - Block) * 4);
    for (std::size_t i = 0; i + Block <= count; i += Block)
        seen = _mm256_or_si256(seen, LoadPixels(pixels + i * 4));
    return HasNoAlpha(seen);
}

// Pixels of these transparencies without colour. (q * 255 + 31) div 63 is 4 q + (3 q + 31) div 63.
WB_AVX2 inline __m256i BlackOf(__m256i transparencies)
{
    const __m256i full = _mm256_set1_epi32(63);
    const __m256i q = _mm256_sub_epi32(full, _mm256_min_epi32(transparencies, full));
    const __m256i rest =
        _mm256_add_epi32(_mm256_add_epi32(q, _mm256_slli_epi32(q, 1)), _mm256_set1_epi32(31));
    const __m256i quotient = _mm256_mulhi_epu16(rest, _mm256_set1_epi32(1041)); // 65536 / 63, rounded up
    return _mm256_slli_epi32(_mm256_add_epi32(_mm256_slli_epi32(q, 2), quotient), 24);
}

WB_AVX2 void LayAlphasAvx2(std::uint8_t *pixels, const std::uint8_t *transparencies, std::size_t count)
{
    std::size_t i = 0;
    for (; i + Block <= count; i += Block) {
        const __m128i eight = _mm_loadl_epi64(reinterpret_cast<const __m128i *>(transparencies + i));
        if (HasNoAlpha(LoadPixels(pixels + i * 4)))
            StorePixels(pixels + i * 4, BlackOf(_mm256_cvtepu8_epi32(eight)));
        else
            LayFewAlphas(pixels + i * 4, transparencies + i, Block);
    }
    LayFewAlphas(pixels + i * 4, transparencies + i, count - i);
}

// (value * 255 + alpha / 2) div alpha, at most 255, as Unpremultiply. The quarter that is added keeps the
// quotients that are whole above their whole number against the rounding of the reciprocal, and lifts no
// other one past its own.
WB_AVX2 inline __m256i Unpremultiply(__m256i value, __m256 half, __m256 reciprocal)
{
    const __m256 scaled = _mm256_mul_ps(_mm256_cvtepi32_ps(value), _mm256_set1_ps(255));
    const __m256 quotient = _mm256_mul_ps(_mm256_add_ps(scaled, half), reciprocal);
    return _mm256_cvttps_epi32(_mm256_min_ps(quotient, _mm256_set1_ps(255)));
}

// The value with its high bits repeated below.
template <int Up, int Down>
WB_AVX2 inline __m256i Repeat(__m256i value)
{
    return _mm256_or_si256(_mm256_slli_epi32(value, Up), _mm256_srli_epi32(value, Down));
}

WB_AVX2 inline __m256i AddBlock(__m256i pixels, __m256i colours)
{
    const __m256i alpha = _mm256_srli_epi32(pixels, 24);
    const __m256 half = _mm256_add_ps(_mm256_cvtepi32_ps(_mm256_srli_epi32(alpha, 1)), _mm256_set1_ps(0.25F));
    const __m256 reciprocal = _mm256_div_ps(_mm256_set1_ps(1), _mm256_cvtepi32_ps(alpha));

    const __m256i r5 = _mm256_srli_epi32(colours, 11);
    const __m256i g6 = _mm256_and_si256(_mm256_srli_epi32(colours, 5), _mm256_set1_epi32(63));
    const __m256i b5 = _mm256_and_si256(colours, _mm256_set1_epi32(31));
    const __m256i r = Unpremultiply(Repeat<3, 2>(r5), half, reciprocal);
    const __m256i g = Unpremultiply(Repeat<2, 4>(g6), half, reciprocal);
    const __m256i b = Unpremultiply(Repeat<3, 2>(b5), half, reciprocal);
    const __m256i colour =
        _mm256_or_si256(_mm256_or_si256(_mm256_slli_epi32(r, 16), _mm256_slli_epi32(g, 8)), b);
    const __m256i none = _mm256_cmpeq_epi32(alpha, _mm256_setzero_si256());
    return _mm256_adds_epu8(pixels, _mm256_andnot_si256(none, colour));
}

// Some colour is brighter than its alpha allows; AlphaFor looks at those.
WB_AVX2 inline bool HasBrighter(__m256i pixels, __m256i colours)
{
    const __m256i alpha = _mm256_srli_epi32(pixels, 24);
    const __m256i most =
        _mm256_mulhi_epu16(_mm256_add_epi32(alpha, _mm256_set1_epi32(1)), _mm256_set1_epi32(7968));
    const __m256i r5 = _mm256_srli_epi32(colours, 11);
    const __m256i b5 = _mm256_and_si256(colours, _mm256_set1_epi32(31));
    const __m256i brighter = _mm256_cmpgt_epi32(_mm256_max_epi32(r5, b5), most);
    return !_mm256_testz_si256(brighter, brighter);
}

WB_AVX2 void AddColoursAvx2(std::uint8_t *pixels, const std::uint8_t *colours, std::size_t count)
{
    std::size_t i = 0;
    for (; i + Block <= count; i += Block) {
        const __m128i eight = _mm_loadu_si128(reinterpret_cast<const __m128i *>(colours + i * 2));
        const __m256i below = LoadPixels(pixels + i * 4);
        const __m256i wide = _mm256_cvtepu16_epi32(eight);
        if (HasBrighter(below, wide))
            AddFewColours(pixels + i * 4, colours + i * 2, Block);
        else
            StorePixels(pixels + i * 4, AddBlock(below, wide));
    }
    AddFewColours(pixels + i * 4, colours + i * 2, count - i);
}

RunFunctions ChooseRuns()
{
    return HasAvx2() ? RunFunctions{IsEmptyAvx2, LayAlphasAvx2, AddColoursAvx2} : RunFunctions{};
}

#else

RunFunctions ChooseRuns()
{
    return {};
}

#endif

const RunFunctions Runs = ChooseRuns();

} // namespace

bool IsEmptyRun(const std::uint8_t *pixels, std::size_t count)
{
    return Runs.isEmpty(pixels, count);
}

void LayAlphas(std::uint8_t *pixels, const std::uint8_t *transparencies, std::size_t count)
{
    Runs.layAlphas(pixels, transparencies, count);
}

void AddColours(std::uint8_t *pixels, const std::uint8_t *colours, std::size_t count)
{
    Runs.addColours(pixels, colours, count);
}

} // namespace rastgl
