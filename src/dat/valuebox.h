// The box in which a value is edited: one line, folded to the width that there is. What breaks a line is
// shown by a sign (datshowntext.h), which takes part in editing as the character that it stands in for.
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
    void inputMethodEvent(QInputMethodEvent *event) override;
    QMimeData *createMimeDataFromSelection() const override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    QString BoxedValue() const;
    QString SelectedValue() const;
    void Insert(QString text);

    QString m_value;
};

} // namespace wb
