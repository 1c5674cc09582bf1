#include "archive/pkgformat.h"

#include "common/bytes.h"
#include "common/paths.h"
#include "platform/ansi.h"

#include <algorithm>

namespace wb
{

namespace
{

constexpr std::int32_t DirectoryLead = 170; // a directory's header and one record

ByteArray NameBytes(const QString &name)
{
    ByteArray bytes = ToAnsi(name);
    bytes.resize(std::size_t(PkgNameSize), 0);
    return bytes;
}

// Letter by letter: one whose capital the code page lacks stays.
QString UpperName(QString name)
{
    for (QChar &character : name) {
        const QChar upper = character.toUpper();
        if (FromAnsi(ToAnsi(QStringView(&upper, 1))) == upper)
            character = upper;
    }
    return name;
}

bool IsUnsafe(QChar character)
{
    return character == u'\\' || character == u'/' || character == u':' ||
           character.category() == QChar::Other_Control;
}

void Append(ByteArray &bytes, std::int32_t value)
{
    auto end = ByteCount(bytes);
    AppendLong(bytes, end, value);
}

void AppendName(ByteArray &bytes, const QString &name)
{
    const ByteArray field = NameBytes(name);
    bytes.insert(bytes.end(), field.begin(), field.end());
}

} // namespace

bool IsPkgPath(const QString &path)
{
    return GetExtension(path).compare(QStringLiteral("pkg"), Qt::CaseInsensitive) == 0;
}

QString PkgReadName(ByteView field)
{
    return FromAnsi(field.first(std::size_t(std::ranges::find(field, 0) - field.begin())));
}

QString PkgWrittenName(const QString &name)
{
    return PkgReadName(NameBytes(name));
}

bool IsSafeEntryName(const QString &name)
{
    return !name.isEmpty() && name != QStringLiteral(".") && name != QStringLiteral("..") &&
           std::ranges::none_of(name, IsUnsafe);
}

QString SafeEntryName(QString name)
{
    std::ranges::replace_if(name, IsUnsafe, QChar(u'_'));
    return IsSafeEntryName(name) ? name : QStringLiteral("_");
}

ByteArray PkgDirectoryBytes(const PkgEntryList &list)
{
    ByteArray bytes;
    bytes.reserve(std::size_t(PkgDirectoryHeaderSize) + list.size() * PkgRecordSize);
    for (const std::int32_t value : {DirectoryLead, std::int32_t(list.size()), PkgRecordSize})
        Append(bytes, value);
    for (const PkgEntry &entry : list) {
        Append(bytes, entry.PackedSize);
        Append(bytes, entry.Size);
        AppendName(bytes, UpperName(entry.Name));
        AppendName(bytes, entry.Name);
        for (const std::int32_t value : {entry.Type, entry.Type, 0, 0, entry.Offset, 0})
            Append(bytes, value);
    }
    return bytes;
}

} // namespace wb
