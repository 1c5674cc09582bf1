// The texts of the viewer's labels, each set whole.
#pragma once

#include "gfx/frameset.h"

#include <QString>

#include <cstdint>

namespace wb
{

// "Тип: GI  |  Тип фрейма: 2", "Тип: WAV  |  Частота: 44100 Hz"; empty without a document.
QString StatusText(const FrameSet &document, std::int32_t frame);

// "|  Кадр: 3 / 12", "|  Кадр: 1" for a still picture, "|" without pictures.
QString FrameText(const FrameSet &document, std::int32_t frame);

// "|  100%", or "|" without pictures.
QString ZoomText(const FrameSet &document, std::int32_t zoom);

// "|  640 x 480" of the given frame, or "|" without pictures.
QString SizeText(const FrameSet &document, std::int32_t frame);

// " Объектов: 7".
QString ObjectsText(int count);

// " Объектов: 7  |  Размер: 12 Кб", in whole bytes, kilobytes or megabytes.
QString ObjectsText(int count, std::int64_t fileSize);

} // namespace wb
