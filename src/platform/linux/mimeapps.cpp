#include "platform/linux/mimeapps.h"

#include <QByteArrayList>

#include <functional>

namespace wb
{

namespace
{

const QByteArray Defaults = "[Default Applications]";
const QByteArray Removed = "[Removed Associations]";

using Edit = std::function<void(const QByteArray &group, QByteArrayList &choices)>;

// A line "type=a;b;" with its choices edited; nothing when none is left.
QByteArray EditedLine(const QByteArray &line, const QByteArray &group, const Edit &edit)
{
    const qsizetype equals = line.indexOf('=');
    QByteArrayList choices;
    for (const QByteArray &choice : line.sliced(equals + 1).split(';'))
        if (!choice.trimmed().isEmpty())
            choices.append(choice.trimmed());
    const QByteArrayList before = choices;
    edit(group, choices);
    if (choices == before)
        return line;
    return choices.isEmpty() ? QByteArray() : line.first(equals + 1) + choices.join(';') + ";\n";
}

// The text with the type's choices edited in every group that has a line for it.
QByteArray Edited(const QByteArray &text, const QByteArray &mimeType, const Edit &edit)
{
    QByteArray result;
    QByteArray group;
    for (qsizetype start = 0, end = 0; start < text.size(); start = end) {
        const qsizetype lineBreak = text.indexOf('\n', start);
        end = lineBreak < 0 ? text.size() : lineBreak + 1;
        const QByteArray line = text.sliced(start, end - start);
        if (line.startsWith('['))
            group = line.trimmed();
        const qsizetype equals = line.indexOf('=');
        const bool isMeant = equals > 0 && line.first(equals).trimmed() == mimeType;
        result += isMeant ? EditedLine(line, group, edit) : line;
    }
    return result;
}

// Puts a line first into the group of defaults, which is made at the end when there is none.
void AddDefault(QByteArray &text, const QByteArray &line)
{
    const qsizetype header = ('\n' + text).indexOf('\n' + Defaults);
    if (header >= 0) {
        const qsizetype end = text.indexOf('\n', header);
        text.insert(end < 0 ? text.size() : end + 1, end < 0 ? '\n' + line : line);
        return;
    }
    if (!text.isEmpty())
        text += text.endsWith('\n') ? "\n" : "\n\n";
    text += Defaults + '\n' + line;
}

} // namespace

QByteArray WithDefault(const QByteArray &text, const QByteArray &mimeType, const QByteArray &entry)
{
    bool isThere = false;
    QByteArray result = Edited(text, mimeType, [&](const QByteArray &group, QByteArrayList &choices) {
        if (group == Defaults || group == Removed)
            choices.removeAll(entry);
        if (group == Defaults)
            choices.prepend(entry);
        isThere = isThere || group == Defaults;
    });
    if (!isThere)
        AddDefault(result, mimeType + '=' + entry + ";\n");
    return result;
}

QByteArray WithoutDefault(const QByteArray &text, const QByteArray &mimeType, const QByteArray &entry)
{
    return Edited(text, mimeType,
                  [&entry](const QByteArray &, QByteArrayList &choices) { choices.removeAll(entry); });
}

} // namespace wb
