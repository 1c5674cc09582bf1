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

} // namespace wb
