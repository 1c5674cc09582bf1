// Partly transparent pixels over what a picture holds, in the two steps of a GI: first their alphas, then
// their premultiplied colours. The two together are source-over; on an empty pixel they give back colour and
// alpha.
#pragma once

#include <cstddef>
#include <cstdint>

namespace rastgl
{

// Lays black of this alpha over the pixel: what it held keeps only the weight that shows through.
std::uint32_t LayAlpha(std::uint32_t pixel, std::uint32_t alpha);

// Adds a premultiplied 5-6-5 colour to a pixel whose alpha has been laid.
std::uint32_t AddColour(std::uint32_t pixel, std::uint16_t colour);

// The same for runs: of transparency bytes, and of 5-6-5 values.
void LayAlphas(std::uint8_t *pixels, const std::uint8_t *transparencies, std::size_t count);
void AddColours(std::uint8_t *pixels, const std::uint8_t *colours, std::size_t count);

// No pixel of the run has any alpha.
bool IsEmptyRun(const std::uint8_t *pixels, std::size_t count);

} // namespace rastgl
