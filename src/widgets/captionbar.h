// The title bar of the borderless main window.
#pragma once

#include "widgets/frmres.h"

#include <QWidget>

class QLabel;

namespace wb
{

class PictureButton;

class CaptionBar : public QWidget
{
    Q_OBJECT

public:
    CaptionBar(const frmRes &res, const QString &caption, QWidget *parent);

    // The look of a window that the user works in, or of one in the background.
    void SetActive(bool active);

Q_SIGNALS:
    void Dragged();
    void DoubleClicked();
    void MinimiseClicked();
    void TrayClicked();
    void CloseClicked();
    // A mouse button was released over the bar or one of its buttons.
    void Released();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    PictureButton *AddButton(const char *name, const QIcon &picture, const QString &tip);

    bool m_active = true;
    QLabel *m_title;
    PictureButton *cmdMinT;
    PictureButton *cmdMin;
    PictureButton *cmdClose;
};

} // namespace wb
