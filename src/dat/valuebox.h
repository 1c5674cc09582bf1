// The box in which a value is edited: one line, folded to the width that there is.
#pragma once

#include <QPlainTextEdit>

namespace wb
{

class ValueBox : public QPlainTextEdit
{
    Q_OBJECT

public:
    ValueBox(const QString &name, QWidget *parent);

    // Longer values can only be read, and no further than this: folding takes time with every key.
    static constexpr qsizetype LongestEdited = 100'000;

    // Shows another value, without saying so.
    void SetValue(const QString &value);

Q_SIGNALS:
    void Edited(const QString &value); // by the user

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    QString m_value;
};

} // namespace wb
