// Frames with a title that pages group their controls in.
#pragma once

#include <QGroupBox>

class QAbstractButton;
class QButtonGroup;
class QGridLayout;

namespace wb
{

// Several of them, one below the other, fit the smallest window.
class CompactFrame : public QGroupBox
{
    Q_OBJECT

public:
    CompactFrame(const QString &title, QWidget *parent) : QGroupBox(title, parent)
    {
        setProperty("compact", true);
    }
};

// Options of which one is chosen.
class OptionFrame : public CompactFrame
{
    Q_OBJECT

public:
    // The options are the elements of the control array `name`, row by row in so many columns.
    OptionFrame(const char *name, const QString &title, const QStringList &captions, int columns,
                QWidget *parent);

    int Count() const;
    int Checked() const; // -1: none
    bool IsOptionEnabled(int option) const;

    // Without saying so; a number without an option checks none.
    void Check(int option);
    void EnableOption(int option, bool enabled);

    // The keys pass the options by.
    void TakeNoFocus();

    // Puts a button beside the options.
    void AddButton(QAbstractButton *button);

Q_SIGNALS:
    void Chosen(int option); // by the user

private:
    QGridLayout *m_grid;
    QButtonGroup *m_options;
};

} // namespace wb
