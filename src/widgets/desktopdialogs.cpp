#include "widgets/desktopdialogs.h"

#include "common/files.h"
#include "common/paths.h"
#include "platform/nativepath.h"
#include "widgets/colour.h"

#include <QColorDialog>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QRegularExpression>

namespace wb
{

namespace
{

QString ToDialog(const QString &path)
{
    return QFile::decodeName(ToNativePath(path).c_str());
}

QString FromDialog(const QString &path)
{
    return path.isEmpty() ? QString() : FromNativePath(QFile::encodeName(path).toStdString());
}

// "name|*.ext|name|*.ext" in the toolkit's own form.
QString NameFilters(const QString &filter)
{
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        filters << QString(parts[i]).remove(QRegularExpression(QStringLiteral(" ?\\(.*\\)$"))) +
                       QStringLiteral(" (%1)").arg(QString(parts[i + 1]).replace(u';', u' '));
    return filters.join(QStringLiteral(";;"));
}

// The button pressed. Names in the text may look like markup.
int ShowBox(QWidget *owner, QMessageBox::Icon icon, const QString &text, const QString &title,
            QMessageBox::StandardButtons buttons = QMessageBox::Ok,
            QMessageBox::StandardButton usual = QMessageBox::Ok)
{
    QMessageBox box(icon, title, text, buttons, owner);
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(usual);
    return box.exec();
}

// What is asked about costs something: a careless Enter must not say Yes.
bool SaysYes(QWidget *owner, QMessageBox::Icon icon, const QString &text, const QString &title)
{
    return ShowBox(owner, icon, text, title, QMessageBox::Yes | QMessageBox::No, QMessageBox::No) ==
           QMessageBox::Yes;
}

} // namespace

void DesktopDialogs::Error(const QString &text, const QString &title)
{
    ShowBox(m_owner, QMessageBox::Critical, text, title);
}

void DesktopDialogs::Information(const QString &text, const QString &title)
{
    ShowBox(m_owner, QMessageBox::Information, text, title);
}

bool DesktopDialogs::Question(const QString &text, const QString &title)
{
    return SaysYes(m_owner, QMessageBox::Question, text, title);
}

bool DesktopDialogs::Warning(const QString &text, const QString &title)
{
    return SaysYes(m_owner, QMessageBox::Warning, text, title);
}

Dialogs::Choice DesktopDialogs::YesNoCancel(const QString &text, const QString &title)
{
    switch (ShowBox(m_owner, QMessageBox::Warning, text, title,
                    QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Yes)) {
    case QMessageBox::Yes:
        return Choice::Yes;
    case QMessageBox::No:
        return Choice::No;
    default:
        return Choice::Cancel;
    }
}

QString DesktopDialogs::OpenFile(const QString &filter, const QString &path)
{
    return FromDialog(QFileDialog::getOpenFileName(m_owner, {}, ToDialog(path), NameFilters(filter)));
}

QStringList DesktopDialogs::OpenFiles(const QString &filter, const QString &path)
{
    QStringList paths = QFileDialog::getOpenFileNames(m_owner, {}, ToDialog(path), NameFilters(filter));
    for (QString &chosen : paths)
        chosen = FromDialog(chosen);
    return paths;
}

QString DesktopDialogs::SaveFile(const QString &filter, const QString &path)
{
    for (QString proposed = path;;) {
        const QString typed = ChooseName(filter, proposed);
        QString completed = CompletedPath(typed, filter, path);
        // The dialog itself would ask only about what was typed, letter by letter.
        if (!FileExists(completed) || Question(ReplaceQuestion(completed), DefaultTitle))
            return completed;
        proposed = completed;
    }
}

// Folder and name are set apart: a folder that has the name proposed must not be gone into.
QString DesktopDialogs::ChooseName(const QString &filter, const QString &path)
{
    QFileDialog dialog(m_owner, {}, ToDialog(GetFolder(path)), NameFilters(filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.selectFile(DisplayName(GetFileName(path)));
    return dialog.exec() == QDialog::Accepted ? FromDialog(dialog.selectedFiles().value(0)) : QString();
}

QString DesktopDialogs::ChooseFolder(const QString &prompt, const QString &path)
{
    return FromDialog(QFileDialog::getExistingDirectory(m_owner, prompt.trimmed(), ToDialog(path)));
}

std::optional<std::int32_t> DesktopDialogs::ChooseColour(std::int32_t colour)
{
    const QColor chosen = QColorDialog::getColor(ToQColor(colour), m_owner);
    if (!chosen.isValid())
        return std::nullopt;
    return FromQColor(chosen);
}

} // namespace wb
