// The pictures that the window and its pages share.
#pragma once

#include <QCursor>
#include <QIcon>

namespace wb
{

struct frmRes {
    frmRes();

    QIcon imgWindow; // the program's icon
    QCursor curOpenHand;
    QCursor curClosedHand;

    QIcon imgPlay;
    QIcon imgStop;
    QIcon imgPreview;
    QIcon imgZoomIn;
    QIcon imgZoomOut;
    QIcon imgPlus;
    QIcon imgMinus;
    QIcon imgAbort;
    QIcon imgSavePNG;
    QIcon imgSaveJPG;
    QIcon imgSaveAllPNG;
    QIcon imgCopyGICR;
    QIcon imgCopyGAICR;
    QIcon imgCopyGAICRAll;
    QIcon imgCopyHAICR;
    QIcon imgCopyHAICRAll;
    QIcon imgCopyAnimCR;
    QIcon imgCopyAnimCRAll;
    QIcon imgRoot;
    QIcon imgUp;
    QIcon imgDown;
    QIcon imgRight;
    QIcon imgRightAll;
    QIcon imgLeft;
    QIcon imgLeftAll;
    QIcon imgAddFrame;
    QIcon imgRemoveFrame;
    QIcon imgToAll;
    QIcon imgPacker;
    QIcon imgUnPacker;
    QIcon imgExtract;
    QIcon imgMin;
    QIcon imgTray;
    QIcon imgClose;
};

} // namespace wb
