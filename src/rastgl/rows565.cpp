#include "rastgl/rows565.h"

#include "rastgl/cpu.h"

namespace wb
{

namespace
{

void WidenFew(std::uint8_t *pixels, const std::uint8_t *plane, std::size_t count)
{
    for (std::size_t i = 0; i < count; i++)
        Store32(pixels + i * 4, Widen565(Load16(plane + i * 2)));
}

void PackFew(std::uint8_t *plane, const std::uint8_t *pixels, std::size_t count)
{
    for (std::size_t i = 0; i < count; i++)
        Store16(plane + i * 2, PackPixel(Load32(pixels + i * 4)));
}

void PackPremultipliedFew(std::uint8_t *plane, const std::uint8_t *pixels, std::size_t count)
{
    for (std::size_t i = 0; i < count; i++)
        Store16(plane + i * 2, PackPremultipliedPixel(Load32(pixels + i * 4)));
}

using RunFunction = void (*)(std::uint8_t *, const std::uint8_t *, std::size_t);

struct RunFunctions {
    RunFunction widen = WidenFew;
    RunFunction pack = PackFew;
    RunFunction packPremultiplied = PackPremultipliedFew;
};

#if WB_X86_CHOICE

constexpr std::size_t Block = 16;

// Calls work(i) for the blocks of pixels [i, i + Block) of at least one. What is left at the end is done with
// the pixels before it once more.
template <typename Work>
WB_INLINE void ForEachBlock(std::size_t count, Work work)
{
    std::size_t i = 0;
    for (; i + Block <= count; i += Block)
        work(i);
    if (i != count)
        work(count - Block);
}

WB_AVX2 inline __m256i LoadVector(const std::uint8_t *place)
{
    return _mm256_loadu_si256(reinterpret_cast<const __m256i *>(place));
}

WB_AVX2 inline void StoreVector(std::uint8_t *place, __m256i value)
{
    _mm256_storeu_si256(reinterpret_cast<__m256i *>(place), value);
}

// Sixteen pixels in 16-bit channels: red above blue, of the even and of the odd pixels; green of the even
// pixels below, that of the odd ones above. The pairs come in an order that StorePacked undoes.
struct Channels {
    __m256i rbEven;
    __m256i rbOdd;
    __m256i g;
};

struct Pixels {
    __m256i even;
    __m256i odd;
};

WB_AVX2 inline Pixels LoadPixels(const std::uint8_t *pixels)
{
    const __m256 first = _mm256_castsi256_ps(LoadVector(pixels));
    const __m256 second = _mm256_castsi256_ps(LoadVector(pixels + 32));
    return {_mm256_castps_si256(_mm256_shuffle_ps(first, second, 0x88)),
            _mm256_castps_si256(_mm256_shuffle_ps(first, second, 0xDD))};
}

// Moves the bytes of every pixel alike: each byte of `from` is the number of the byte to take, or 0x80 for
// zero.
WB_AVX2 inline __m256i TakeBytes(__m256i pixels, std::uint32_t from)
{
    const __m128i start = _mm_setr_epi32(0, 0x04040404, 0x08080808, 0x0C0C0C0C);
    const __m128i bytes = _mm_add_epi8(_mm_set1_epi32(static_cast<int>(from)), start);
    return _mm256_shuffle_epi8(pixels, _mm256_broadcastsi128_si256(bytes));
}

WB_AVX2 inline Channels Split(const Pixels &p)
{
    const __m256i low = _mm256_set1_epi32(0x00FF00FF);
    return {_mm256_and_si256(p.even, low), _mm256_and_si256(p.odd, low),
            _mm256_or_si256(TakeBytes(p.even, 0x80808001), TakeBytes(p.odd, 0x80018080))};
}

// c * a / 255 to the nearest: (x + 128) * 257 / 65536 is exact for every product of two bytes.
WB_AVX2 inline __m256i Premultiply(__m256i channels, __m256i alphas)
{
    const __m256i product = _mm256_add_epi16(_mm256_mullo_epi16(channels, alphas), _mm256_set1_epi16(128));
    return _mm256_mulhi_epu16(product, _mm256_set1_epi16(257));
}

WB_AVX2 inline Channels SplitPremultiplied(const Pixels &p)
{
    const Channels c = Split(p);
    const __m256i even = TakeBytes(p.even, 0x80038003);
    const __m256i odd = TakeBytes(p.odd, 0x80038003);
    return {Premultiply(c.rbEven, even), Premultiply(c.rbOdd, odd),
            Premultiply(c.g, _mm256_blend_epi16(even, odd, 0xAA))};
}

// (c + 1) * 31 or 63 div 255: a multiplication by that times 65536 / 255, rounded up.
WB_AVX2 inline __m256i ReduceChannel(__m256i channels, short factor)
{
    return _mm256_mulhi_epu16(_mm256_add_epi16(channels, _mm256_set1_epi16(1)), _mm256_set1_epi16(factor));
}

WB_AVX2 inline void StorePacked(std::uint8_t *plane, const Channels &c)
{
    const __m256i places = _mm256_set1_epi32(2048 << 16 | 1);
    const __m256i even = _mm256_madd_epi16(ReduceChannel(c.rbEven, 7968), places);
    const __m256i odd = _mm256_slli_epi32(_mm256_madd_epi16(ReduceChannel(c.rbOdd, 7968), places), 16);
    const __m256i g = _mm256_slli_epi16(ReduceChannel(c.g, 16192), 5);
    StoreVector(plane, _mm256_permute4x64_epi64(_mm256_or_si256(_mm256_or_si256(even, odd), g), 0xD8));
}

WB_AVX2 void PackAvx2(std::uint8_t *plane, const std::uint8_t *pixels, std::size_t count)
{
    if (count < Block)
        return PackFew(plane, pixels, count);
    ForEachBlock(count, [=](std::size_t i)
                            WB_AVX2 { StorePacked(plane + i * 2, Split(LoadPixels(pixels + i * 4))); });
}

WB_AVX2 void PackPremultipliedAvx2(std::uint8_t *plane, const std::uint8_t *pixels, std::size_t count)
{
    if (count < Block)
        return PackPremultipliedFew(plane, pixels, count);
    ForEachBlock(count, [=](std::size_t i) WB_AVX2 {
        StorePacked(plane + i * 2, SplitPremultiplied(LoadPixels(pixels + i * 4)));
    });
}

// Repeating the high bits below is value * 33 / 4 (five bits) and value * 65 / 16 (six bits); the factors do
// that to a value that still stands at its place in the 16 bits.
WB_AVX2 void WidenAvx2(std::uint8_t *pixels, const std::uint8_t *plane, std::size_t count)
{
    if (count < Block)
        return WidenFew(pixels, plane, count);
    ForEachBlock(count, [=](std::size_t i) WB_AVX2 {
        const __m256i five = _mm256_set1_epi16(264);
        const __m256i six = _mm256_set1_epi16(8320);
        // Halves in the order that the interleaving below, within 128 bits, turns into that of the pixels.
        const __m256i value = _mm256_permute4x64_epi64(LoadVector(plane + i * 2), 0xD8);
        const __m256i red = _mm256_and_si256(value, _mm256_set1_epi16(static_cast<short>(0xF800)));
        const __m256i green = _mm256_and_si256(value, _mm256_set1_epi16(0x07E0));
        const __m256i b = _mm256_mulhi_epu16(_mm256_slli_epi16(value, 11), five);
        const __m256i gb = _mm256_or_si256(_mm256_slli_epi16(_mm256_mulhi_epu16(green, six), 8), b);
        const __m256i ar =
            _mm256_or_si256(_mm256_mulhi_epu16(red, five), _mm256_set1_epi16(static_cast<short>(0xFF00)));
        StoreVector(pixels + i * 4, _mm256_unpacklo_epi16(gb, ar));
        StoreVector(pixels + i * 4 + 32, _mm256_unpackhi_epi16(gb, ar));
    });
}

RunFunctions ChooseRuns()
{
    return HasAvx2() ? RunFunctions{WidenAvx2, PackAvx2, PackPremultipliedAvx2} : RunFunctions{};
}

#else

RunFunctions ChooseRuns()
{
    return {};
}

#endif

const RunFunctions Runs = ChooseRuns();

} // namespace

void WidenRun(std::uint8_t *pixels, const std::uint8_t *plane, std::size_t count)
{
    Runs.widen(pixels, plane, count);
}

void PackRun(std::uint8_t *plane, const std::uint8_t *pixels, std::size_t count)
{
    Runs.pack(plane, pixels, count);
}

void PackPremultipliedRun(std::uint8_t *plane, const std::uint8_t *pixels, std::size_t count)
{
    Runs.packPremultiplied(plane, pixels, count);
}

void TransparencyRun(std::uint8_t *target, const std::uint8_t *pixels, std::size_t count)
{
    for (std::size_t i = 0; i < count; i++)
        target[i] = InvAlpha6(pixels[i * 4 + 3]);
}

} // namespace wb
