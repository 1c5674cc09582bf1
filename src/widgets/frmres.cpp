#include "widgets/frmres.h"

#include <QGuiApplication>
#include <QPixmap>

namespace wb
{

namespace
{

QIcon Button(const char *name)
{
    return QIcon(QStringLiteral(":/buttons/%1.png").arg(QLatin1String(name)));
}

QCursor Hand(const char *name)
{
    const bool fine = qGuiApp->devicePixelRatio() > 1.0;
    QPixmap picture(
        QStringLiteral(":/cursors/%1%2.png").arg(QLatin1String(name), QLatin1String(fine ? "@2x" : "")));
    return QCursor(picture);
}

QIcon WindowIcon()
{
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/app/workbench-%1.png").arg(size), QSize(size, size));
    return icon;
}

} // namespace

frmRes::frmRes()
    : imgWindow(WindowIcon()), curOpenHand(Hand("handopen")), curClosedHand(Hand("handclosed")),
      imgPlay(Button("play")), imgStop(Button("stop")), imgPreview(Button("preview")),
      imgZoomIn(Button("zoomin")), imgZoomOut(Button("zoomout")), imgPlus(Button("plus")),
      imgMinus(Button("minus")), imgAbort(Button("abort")), imgSavePNG(Button("savepng")),
      imgSaveJPG(Button("savejpg")), imgSaveAllPNG(Button("saveallpng")), imgCopyGICR(Button("copygicr")),
      imgCopyGAICR(Button("copygaicr")), imgCopyGAICRAll(Button("copygaicrall")),
      imgCopyHAICR(Button("copyhaicr")), imgCopyHAICRAll(Button("copyhaicrall")),
      imgCopyAnimCR(Button("copyanimcr")), imgCopyAnimCRAll(Button("copyanimcrall")), imgRoot(Button("root")),
      imgUp(Button("up")), imgDown(Button("down")), imgRight(Button("right")),
      imgRightAll(Button("rightall")), imgLeft(Button("left")), imgLeftAll(Button("leftall")),
      imgAddFrame(Button("addframe")), imgRemoveFrame(Button("removeframe")), imgToAll(Button("toall")),
      imgPacker(Button("packer")), imgUnPacker(Button("unpacker")), imgExtract(Button("extract")),
      imgMin(Button("min")), imgTray(Button("tray")), imgClose(Button("close"))
{
}

} // namespace wb
