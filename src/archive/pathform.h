// Paths that a person types or chooses, one below the other.
#pragma once

#include <QLineEdit>
#include <QWidget>

#include <functional>

class QGridLayout;

namespace wb
{

// Whatever way a path is written in, it becomes one of the program when it is used or the focus leaves.
class PathBox : public QLineEdit
{
    Q_OBJECT

public:
    // Every change goes to `saved`; until something was saved, `start` stands there.
    PathBox(const QString &name, const QString &start, QString &saved, QWidget *parent);

    // Shows what was saved.
    void ApplySetting();

    QString Path();

private:
    QString &m_saved;
};

class PathForm : public QWidget
{
    Q_OBJECT

public:
    explicit PathForm(QWidget *parent);

    struct Row {
        const char *BoxName;
        const char *ButtonName;
        QString Caption;
        QString ButtonTip;
        QString Start; // what the box holds at first
    };

    // Adds a row: the caption, a box whose text goes to `saved`, and a button that does `choose`.
    PathBox *AddPath(const Row &row, QString &saved, const std::function<void()> &choose);

    // Adds a row that has no caption.
    void AddOption(QWidget *option);

private:
    QGridLayout *m_rows;
};

} // namespace wb
