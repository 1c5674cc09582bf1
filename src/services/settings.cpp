#include "services/settings.h"

#include "common/files.h"
#include "common/paths.h"
#include "common/text.h"
#include "platform/ansi.h"
#include "platform/fileio.h"
#include "platform/nativepath.h"
#include "platform/programfolder.h"

#include <algorithm>
#include <cmath>
#include <variant>

namespace wb
{

namespace
{

constexpr std::int64_t MaxFileBytes = 16 << 20;

using BoolMember = bool Settings::*;
using TextMember = QString Settings::*;
struct ColorMember {
    std::int32_t Settings::*Value;
};
struct NumberMember {
    std::int32_t Settings::*Value;
};
using Member = std::variant<std::monostate, BoolMember, TextMember, ColorMember, NumberMember>;

// One line of the file: "Text=" and the member's value, or the text alone.
struct Line {
    const char *Text = "";
    Member Value;
};

const Line Layout[] = {
    {";General", {}},
    {"AutoPlayAnim", &Settings::AutoPlayAnim},
    {"AutoPlaySound", &Settings::AutoPlaySound},
    {"AFTColor", ColorMember{&Settings::AFTColor}},
    {"BackColor1", ColorMember{&Settings::BackColor1}},
    {"BackColor2", ColorMember{&Settings::BackColor2}},
    {"SoundVolume", NumberMember{&Settings::SoundVolume}},
    {"JPEGQuality", NumberMember{&Settings::JPEGQuality}},
    {"AltGAIMethod", &Settings::AltGAIMethod},
    {"ViewOnTop", &Settings::ViewOnTop},
    {"ViewDrawOnly", &Settings::ViewDrawOnly},
    {"DrawStretch", &Settings::DrawStretch},
    {"", {}},
    {";Associations", {}},
    {"AFT", &Settings::AssocAFT},
    {"GI", &Settings::AssocGI},
    {"GAI", &Settings::AssocGAI},
    {"HAI", &Settings::AssocHAI},
    {"PKG", &Settings::AssocPKG},
    {"", {}},
    {";Paths", {}},
    {"Dir", &Settings::Dir},
    {"OpenDir", &Settings::OpenDir},
    {"Pack_Folder", &Settings::Pack_Folder},
    {"Pack_FileName", &Settings::Pack_FileName},
    {"UnPack_FileName", &Settings::UnPack_FileName},
    {"UnPack_Folder", &Settings::UnPack_Folder},
};

// Blanks only: a tab is part of a value.
QStringView TrimBlanks(QStringView text)
{
    while (text.startsWith(u' '))
        text = text.sliced(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

bool ParseBool(QStringView value)
{
    const QString lower = value.toString().toLower();
    return lower == u"yes" || lower == u"true" || lower == u"1";
}

std::int32_t ParseColor(QStringView value)
{
    const auto part = [value](qsizetype start) {
        return value.size() > start + 1 ? HexToLong(value.sliced(start).left(2)) : 0;
    };
    return value.startsWith(u'#') ? part(1) | part(3) << 8 | part(5) << 16 : 0;
}

std::int32_t ParseNumber(QStringView value)
{
    if (value.isEmpty() || value.size() >= 10)
        return 0;
    const QStringView digits = value[0] == u'-' || value[0] == u'+' ? value.sliced(1) : value;
    const auto isDigitOrPoint = [](QChar character) {
        return character == u'.' || (character >= u'0' && character <= u'9');
    };
    if (!std::all_of(digits.begin(), digits.end(), isDigitOrPoint))
        return 0;
    bool isNumber = false; // two points, or no digit, are none
    const double number = value.toString().toDouble(&isNumber);
    return isNumber ? std::int32_t(std::nearbyint(number)) : 0;
}

void SetMember(Settings &settings, const Member &member, QStringView value)
{
    if (const BoolMember *flag = std::get_if<BoolMember>(&member))
        settings.**flag = ParseBool(value);
    else if (const TextMember *text = std::get_if<TextMember>(&member))
        settings.**text = value.toString();
    else if (const ColorMember *color = std::get_if<ColorMember>(&member))
        settings.*color->Value = ParseColor(value);
    else if (const NumberMember *number = std::get_if<NumberMember>(&member))
        settings.*number->Value = std::clamp(ParseNumber(value), 0, 100);
}

QString MemberText(const Settings &settings, const Member &member)
{
    if (const BoolMember *flag = std::get_if<BoolMember>(&member))
        return settings.**flag ? QStringLiteral("True") : QStringLiteral("False");
    if (const ColorMember *color = std::get_if<ColorMember>(&member))
        return ColorText(settings.*color->Value);
    if (const NumberMember *number = std::get_if<NumberMember>(&member))
        return QString::number(settings.*number->Value);
    QString text = settings.*std::get<TextMember>(member);
    return text.replace(u'\r', u'?').replace(u'\n', u'?');
}

void ParseLine(Settings &settings, QStringView line)
{
    const qsizetype equals = line.indexOf(u'=');
    if (equals < 0)
        return;
    const QStringView key = TrimBlanks(line.first(equals));
    QStringView value = TrimBlanks(line.sliced(equals + 1));
    if (const qsizetype comment = value.indexOf(u';'); comment >= 0)
        value = TrimBlanks(value.first(comment));
    for (const Line &known : Layout) {
        if (key.compare(QLatin1String(known.Text), Qt::CaseInsensitive) == 0)
            SetMember(settings, known.Value, value);
    }
}

} // namespace

Settings DefaultSettings()
{
    Settings settings;
    settings.BackColor1 = 0xEDE9EB;
    settings.SoundVolume = 100;
    return settings;
}

Settings ParseSettings(ByteView bytes)
{
    Settings settings;
    const QString text = FromAnsi(bytes);
    qsizetype start = 0;
    for (qsizetype index = 0; index <= text.size(); ++index) {
        if (index == text.size() || text[index] == u'\r' || text[index] == u'\n') {
            ParseLine(settings, QStringView(text).sliced(start, index - start));
            start = index + 1;
        }
    }
    return settings;
}

ByteArray FormatSettings(const Settings &settings)
{
    QString text;
    for (const Line &line : Layout) {
        text += QLatin1String(line.Text);
        if (!std::holds_alternative<std::monostate>(line.Value))
            text += u'=' + MemberText(settings, line.Value);
        text += QStringLiteral("\r\n");
    }
    return ToAnsi(text);
}

QString SettingsPathIn(const QString &programFolder, const QString &configFolder)
{
    const std::string native = ToNativePath(programFolder);
    const bool isOwn = CanWriteFolder(native) && !IsSystemFolder(native);
    const QString &folder = isOwn ? programFolder : configFolder;
    return folder.isEmpty() ? QString() : folder + QStringLiteral("\\Options.ini");
}

QString SettingsPath()
{
    return SettingsPathIn(ProgramFolder(), UserConfigFolder());
}

Settings LoadSettings(const QString &path)
{
    if (!FileExists(path)) {
        SaveSettings(path, DefaultSettings());
        return DefaultSettings();
    }
    ByteArray bytes;
    const bool isRead = ReadWholeFile(ToNativePath(path), bytes, MaxFileBytes) == FileError::None;
    return isRead ? ParseSettings(bytes) : DefaultSettings();
}

bool SaveSettings(const QString &path, const Settings &settings)
{
    return !path.isEmpty() && MakePath(GetFolder(path)) && WriteFileBytes(path, FormatSettings(settings));
}

QString ColorText(std::int32_t color)
{
    const auto part = [color](int shift) {
        return QStringLiteral("%1").arg(color >> shift & 0xFF, 2, 16, QLatin1Char('0'));
    };
    return u'#' + (part(0) + part(8) + part(16)).toUpper();
}

} // namespace wb
