// A frame with a picture in it that can be larger than the frame and is then dragged about.
#pragma once

#include <QCursor>
#include <QImage>
#include <QWidget>

namespace wb
{

class PictureCanvas;

class PictureArea : public QWidget
{
    Q_OBJECT

public:
    // The frame is named `name` + "Border", the picture inside it `name`. The cursors are those of a picture
    // that can be dragged and of one that is being dragged.
    PictureArea(const QString &name, const QCursor &openHand, const QCursor &closedHand, QWidget *parent);

    QSize InnerSize() const { return contentsRect().size(); }
    void SetBackColour(const QColor &colour);

    // Puts the picture back to the top-left of the frame.
    void ResetPlace();

    // Shows the image stretched to `size`, its pixels kept square-edged, centred where it is smaller than the
    // frame. An empty size shows nothing. False when a picture area cannot be made that large.
    bool Show(const QImage &image, QSize size);
    void Clear();

Q_SIGNALS:
    // The mouse button that dragged the picture was released.
    void Released();
    // A file of this machine was dropped; of several the first. A path of the program.
    void FileDropped(const QString &path);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *m_inside; // clips the picture to the inside of the border
    PictureCanvas *m_canvas;
};

} // namespace wb
