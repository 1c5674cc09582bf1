// A text box for a number, with the buttons that count it up and down.
#pragma once

#include "widgets/frmres.h"

#include <QWidget>

#include <cstdint>

class QHBoxLayout;

namespace wb
{

class DigitBox;
class PictureButton;

class NumberField : public QWidget
{
    Q_OBJECT

public:
    // The box is "txt" + `name`, the buttons are "cmd" + `name`: (0) counts up, (1) down. `caption` is what
    // the number is called by those who can't see what stands beside it.
    NumberField(const QString &name, const QString &caption, std::int32_t maximum, const frmRes &res,
                QWidget *parent);

    // Button (2), which gives the number to others.
    void AddCopyButton(const QString &tip);
    void SetCopyEnabled(bool enabled);

    // Shows a number, also one that could not be typed.
    void SetValue(std::int32_t value);

Q_SIGNALS:
    void Edited(std::int32_t value); // as DigitBox does
    void UpWanted();
    void DownWanted();
    void CopyWanted();

private:
    PictureButton *AddButton(int index, const QIcon &picture, const QString &tip);

    const frmRes &m_res;
    QString m_name;
    QHBoxLayout *m_row;
    DigitBox *m_box;
    PictureButton *m_copy = nullptr;
};

} // namespace wb
