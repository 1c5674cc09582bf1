// A flat button with a picture; a checkable one stays pressed.
#pragma once

#include <QToolButton>

namespace wb
{

class PictureButton : public QToolButton
{
    Q_OBJECT

public:
    PictureButton(const QString &name, const QIcon &picture, const QString &tip, QWidget *parent)
        : QToolButton(parent)
    {
        setObjectName(name);
        setToolTip(tip);
        setAccessibleName(tip);
        setFocusPolicy(Qt::TabFocus);
        setIconSize(QSize(20, 20));
        SetButtonPicture(picture);
    }

    void SetButtonPicture(const QIcon &picture) { setIcon(picture); }
};

} // namespace wb
