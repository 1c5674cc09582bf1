#include "viewer/frameexport.h"

#include "common/paths.h"
#include "common/text.h"
#include "gfx/graphicslibrary.h"
#include "platform/nativepath.h"

namespace wb
{

QString DefaultSaveName(const QString &path, std::int32_t frame, std::int32_t frameCount)
{
    constexpr int NumberWidth = 3;
    const QString title = GetFileTitle(path);
    return frame >= 0 && frameCount > 1 ? title + u'_' + ZeroPad(frame, NumberWidth) : title;
}

bool WritePicture(const QString &path, std::int32_t handle, ExportFormat format, std::int32_t quality)
{
    const std::string native = ToNativePath(path);
    if (native.empty())
        return false;
    return format == ExportFormat::Png
               ? Graphics().VTGF_Write_PNG_File(native.c_str(), handle) != 0
               : Graphics().VTGF_Write_JPEG_File(native.c_str(), handle, &quality) != 0;
}

QString FramePath(const QString &path, std::int32_t frame, std::int32_t frameCount)
{
    return PathIn(GetFolder(path), DefaultSaveName(path, frame, frameCount) + u'.' + GetExtension(path));
}

ExportResult WriteAllPictures(const FrameSet &document, const ExportOrder &order, Progress &progress,
                              const AbortFlag &abort)
{
    const std::int32_t count = document.Count;
    const auto text = [&](std::int32_t frame) {
        return order.Caption + QStringLiteral("%1 / %2").arg(frame).arg(count);
    };
    for (std::int32_t i = 0; i < count; ++i) {
        progress.ProgressStep(i, text(i + 1));
        if (abort.IsSet())
            return {ExportEnd::Aborted, i};
        const std::int32_t picture = document.Pictures[std::size_t(i)];
        if (picture != 0 &&
            !WritePicture(FramePath(order.Path, i, count), picture, order.Format, order.Quality))
            return {ExportEnd::Failed, i};
    }
    progress.ProgressStep(count, text(count));
    return {ExportEnd::Done, count};
}

} // namespace wb
