#include "widgets/listicons.h"

#include "gfx/graphicslibrary.h"
#include "widgets/dibimage.h"

#include <QFile>
#include <QPixmap>

namespace wb
{

namespace
{

constexpr const char *Names[] = {
    "DRIVE_T2", "DRIVE_T3", "DRIVE_T4", "DRIVE_T5", "DRIVE_T6", "FOLDER", "FOLDERUP", "GI",
    "GAI",      "HAI",      "AFT",      "PKG",      "BMP",      "JPG",    "PNG",      "PSD",
    "DDS",      "WAV",      "TXT",      "NULL",     "MAIN",     "LOGO",
};

QPixmap Decoded(const QString &resource, qreal ratio)
{
    QFile file(resource);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    const auto length = static_cast<std::int32_t>(bytes.size());
    const std::int32_t handle =
        Graphics().VTGF_Read_PNG(reinterpret_cast<const std::uint8_t *>(bytes.constData()), &length);
    QPixmap picture = QPixmap::fromImage(ImageFromDib(handle));
    Graphics().VTGF_DIB_Free(handle);
    picture.setDevicePixelRatio(ratio);
    return picture;
}

} // namespace

QIcon LoadListIcon(ListIcon icon)
{
    QIcon pictures;
    for (const int ratio : {1, 2}) {
        const QString resource =
            QStringLiteral(":/icons/%1%2.png")
                .arg(QLatin1String(Names[int(icon)]), QLatin1String(ratio == 2 ? "@2x" : ""));
        const QPixmap picture = Decoded(resource, ratio);
        // The selected row keeps its picture as it is, instead of Qt's tinted one.
        pictures.addPixmap(picture, QIcon::Normal);
        pictures.addPixmap(picture, QIcon::Selected);
    }
    return pictures;
}

std::vector<QIcon> LoadListIcons()
{
    std::vector<QIcon> icons;
    for (std::size_t i = 0; i < std::size(Names); ++i)
        icons.push_back(LoadListIcon(ListIcon(i)));
    return icons;
}

std::vector<QIcon> FolderListPictures(const std::vector<QIcon> &icons)
{
    using enum ListIcon;
    // In the order of the patterns of the folder list.
    constexpr ListIcon Files[] = {Gi, Gai, Hai, Aft, Pkg, Bmp, Jpg, Jpg, Jpg, Png, Psd, Wav, Wav, Txt, Dds};
    std::vector<QIcon> pictures(icons.begin(), icons.begin() + int(FolderUp) + 1);
    for (const ListIcon icon : Files)
        pictures.push_back(icons[std::size_t(icon)]);
    return pictures;
}

} // namespace wb
