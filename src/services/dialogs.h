// Everything the program asks or tells in a box of its own. Pages get it handed, so that tests can answer.
#pragma once

#include "platform/fileio.h"

#include <QStringList>

#include <cstdint>
#include <functional>
#include <optional>

namespace wb
{

class Dialogs
{
public:
    virtual ~Dialogs() = default;

    // A message box with the critical-stop icon and one button.
    virtual void Error(const QString &text, const QString &title) = 0;

    // A message box with the information icon and one button.
    virtual void Information(const QString &text, const QString &title) = 0;

    // A box with the question icon, and one with the exclamation icon: True for Yes.
    virtual bool Question(const QString &text, const QString &title) = 0;
    virtual bool Warning(const QString &text, const QString &title) = 0;

    // A box with the exclamation icon and three buttons.
    enum class Choice { Yes, No, Cancel };
    virtual Choice YesNoCancel(const QString &text, const QString &title) = 0;

    // Let the user choose a file, files or a folder; empty when cancelled. Paths are those of the program.
    // `filter` is "name|*.ext", or several of them parted by "|"; `path` is the name proposed, with or
    // without a folder. A name typed without an extension gets that of the filter when it is to be saved, and
    // a file that is there is replaced only when the user says so.
    virtual QString OpenFile(const QString &filter, const QString &path) = 0;
    virtual QStringList OpenFiles(const QString &filter, const QString &path) = 0;
    virtual QString SaveFile(const QString &filter, const QString &path) = 0;
    virtual QString ChooseFolder(const QString &prompt, const QString &path) = 0;

    // Lets the user choose a colour, starting at `colour`; nothing when cancelled. Platform colour values:
    // red in the low byte.
    virtual std::optional<std::int32_t> ChooseColour(std::int32_t colour) = 0;
};

// The path that a save dialog gives for the one the user typed: a name without an extension gets the first of
// the filter. A dot in the name proposed is part of a title, and so are those before digits and long texts.
QString CompletedPath(const QString &typed, const QString &filter, const QString &proposed);

// The title of every box that reports an error.
inline const QString ErrorTitle = QStringLiteral("Error");
// The title of boxes that have none of their own.
inline const QString DefaultTitle = QStringLiteral("Workbench");

// Whether the file may be replaced.
QString ReplaceQuestion(const QString &path);

// Asks whether to save what was changed before it is lost; `fileName` is empty for what has none yet. True
// when `save` has saved it, or when it may be lost.
bool AskToSave(Dialogs &dialogs, const QString &fileName, const std::function<bool()> &save);

// Tells that memory did not suffice for so many frames of an animation, if for any.
void TellLeftOut(Dialogs &dialogs, std::int32_t frames);

// What an error box says of a file error; empty for one that has no text.
QString FileErrorText(FileError error);

// Shows that in a box. False, with no box, when it has no text.
bool ReportFileError(Dialogs &dialogs, FileError error);

} // namespace wb
