#include "widgets/frmlog.h"

#include <QIcon>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QScreen>
#include <QVBoxLayout>

namespace wb
{

namespace
{

constexpr QPoint FromBottomRight(360, 270);
constexpr QSize InnerSize(340, 230); // leaves a margin to the screen's edges, frame and title included

// A window without an icon of its own would get that of its owner.
QIcon NoIcon()
{
    QPixmap nothing(16, 16);
    nothing.fill(Qt::transparent);
    return nothing;
}

} // namespace

frmLog::frmLog(QWidget *owner) : QWidget(owner, Qt::Tool), txtLog(new QPlainTextEdit(this))
{
    setObjectName(QStringLiteral("frmLog"));
    setWindowTitle(tr("Журнал"));
    setWindowIcon(NoIcon());
    txtLog->setObjectName(QStringLiteral("txtLog"));
    txtLog->setReadOnly(true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(8, 8, 8, 8);
    column->addWidget(txtLog);
    resize(InnerSize);
    const QRect screen = owner->screen()->geometry();
    move(screen.topLeft() + QPoint(screen.width(), screen.height()) - FromBottomRight);
}

void frmLog::Show()
{
    show();
    raise();
}

void frmLog::Hide()
{
    hide();
}

void frmLog::AddLine(const QString &text)
{
    txtLog->appendPlainText(text);
    txtLog->moveCursor(QTextCursor::End);
}

void frmLog::Clean()
{
    txtLog->clear();
}

} // namespace wb
