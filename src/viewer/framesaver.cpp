#include "viewer/framesaver.h"

#include "archive/pkgformat.h"
#include "common/paths.h"
#include "services/uitext.h"

namespace wb
{

namespace
{

// The slider's 0..100 stands for the upper part of the library's scale, whose end is 100.
constexpr std::int32_t LowestJpegQuality = 28;

QString FilterOf(ExportFormat format)
{
    return format == ExportFormat::Png ? UiText(TextPngFiles) + QStringLiteral(" (*.png)|*.png")
                                       : UiText(TextJpgFiles) + QStringLiteral(" (*.jpg)|*.jpg;*.jpe;*.jpeg");
}

} // namespace

void FrameSaver::Save(const FrameSet &document, const QString &documentPath, std::int32_t frame,
                      ExportFormat format)
{
    const QString path = Ask(format, DefaultSaveName(documentPath, frame, document.Count));
    if (path.isEmpty() || document.Mode != DocumentMode::Pictures || frame >= document.Count)
        return;
    m_settings.OpenDir = GetFolder(path);
    if (!WritePicture(path, document.Pictures[std::size_t(frame)], format,
                      m_settings.JPEGQuality + LowestJpegQuality))
        TellNotWritten();
}

void FrameSaver::SaveAll(const FrameSet &document, const QString &documentPath,
                         const std::function<void(bool)> &busy)
{
    const QString path = Ask(ExportFormat::Png, GetFileTitle(documentPath));
    if (path.isEmpty() || document.Mode != DocumentMode::Pictures || document.Count == 0)
        return;
    const QString folder = GetFolder(path);
    const ExportOrder order = {PathIn(folder, GetFileTitle(path) + QStringLiteral(".png")), ExportFormat::Png,
                               0, UiText(TextSavingPng)};
    m_settings.OpenDir = folder;
    m_abort.Clear();
    busy(true);
    m_progress.ProgressStart(document.Count, PathIn(folder, {}));
    const ExportResult result = WriteAllPictures(document, order, m_progress, m_abort);
    m_progress.ProgressClear();
    if (result.End == ExportEnd::Failed)
        TellNotWritten();
    busy(false);
}

QString FrameSaver::Ask(ExportFormat format, const QString &name) const
{
    // An entry of an archive may have a name that no file can have.
    return m_dialogs.SaveFile(FilterOf(format), PathIn(m_settings.OpenDir, SafeEntryName(name)));
}

void FrameSaver::TellNotWritten() const
{
    ReportFileError(m_dialogs, FileError::AccessError);
}

} // namespace wb
