#include "platform/linux/filetypes.h"

#include "platform/clsregistryobject.h"
#include "platform/fileio.h"
#include "platform/linux/mimeapps.h"
#include "platform/nativepath.h"

#include <QFile>
#include <QProcess>

#include <algorithm>
#include <filesystem>

namespace wb
{

namespace
{

const QString Classes = QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\");
const QByteArray Entry = "workbench-files.desktop";
constexpr int ProgramIcon = 0;
constexpr int ToolPatience = 10'000; // ms

// How files begin, whatever they are called.
struct KnownType {
    const char *extension;
    const char *magic; // as the type's definition has it
};
constexpr KnownType KnownTypes[] = {
    {"pkg",
     R"(<match type="little32" value="170" offset="4"><match type="little32" value="158" offset="12"/></match>)"},
    {"gi", R"(<match type="string" value="gi\0\0" offset="0"/>)"},
    {"gai", R"(<match type="string" value="gai\0" offset="0"/>)"},
    {"hai", R"(<match type="string" value="\x20\x04\x21\x04" offset="0"/>)"},
    {"aft", R"(<match type="string" value="aft\0" offset="0"/>)"},
};

QByteArray MimeTypeOf(const QByteArray &extension)
{
    return "application/x-workbench-" + extension;
}

const RegisteredType *Find(const std::vector<RegisteredType> &types, const QByteArray &extension)
{
    const auto found = std::ranges::find(types, extension, &RegisteredType::Extension);
    return found != types.end() ? &*found : nullptr;
}

QByteArray Icon(int number)
{
    QFile file(QStringLiteral(":/filetypes/%1.svg").arg(number));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The weight is above that of other programs' types: the user chose this program for the extension.
QByteArray MimePackage(const std::vector<RegisteredType> &types)
{
    QByteArray text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n";
    for (const KnownType &known : KnownTypes) {
        const RegisteredType *type = Find(types, known.extension);
        if (type == nullptr)
            continue;
        text += "  <mime-type type=\"" + MimeTypeOf(type->Extension) + "\">\n";
        text += "    <comment>" + type->Description.toHtmlEscaped().toUtf8() + "</comment>\n";
        text += "    <glob pattern=\"*." + type->Extension + "\" weight=\"60\"/>\n";
        text += QByteArray("    <magic>") + known.magic + "</magic>\n  </mime-type>\n";
    }
    return types.empty() ? QByteArray() : text + "</mime-info>\n";
}

// A path as one argument of a command line, and that as a value of an entry.
QByteArray CommandOf(const std::string &program)
{
    QByteArray quoted;
    for (const char character : program) {
        if (character == '"' || character == '`' || character == '$' || character == '\\')
            quoted += '\\';
        if (character == '%')
            quoted += '%';
        quoted += character;
    }
    return '"' + quoted.replace("\\", "\\\\") + '"';
}

// Desktops leave the entry out while there is no such program.
QByteArray DesktopEntry(const std::vector<RegisteredType> &types)
{
    if (types.empty())
        return {};
    const std::string &program = types.front().Program;
    QByteArray text = "[Desktop Entry]\nType=Application\nName=Workbench\nNoDisplay=true\n"
                      "Icon=workbench-files\nStartupWMClass=workbench\n";
    text += "TryExec=" + QByteArray::fromStdString(program).replace("\\", "\\\\") + '\n';
    text += "Exec=" + CommandOf(program) + " %f\nMimeType=";
    for (const RegisteredType &type : types)
        text += MimeTypeOf(type.Extension) + ';';
    return text + '\n';
}

// False when nothing had to be changed.
bool KeepIcons(const std::vector<RegisteredType> &types, const std::string &theme)
{
    bool isChanged = false;
    const auto keep = [&](const std::string &name, const QByteArray &bytes) {
        KeepUserFile(theme + "/scalable/" + name + ".svg", bytes, &isChanged);
    };
    keep("apps/workbench-files", types.empty() ? QByteArray() : Icon(ProgramIcon));
    for (const KnownType &known : KnownTypes) {
        const RegisteredType *type = Find(types, known.extension);
        keep("mimetypes/application-x-workbench-" + std::string(known.extension),
             type != nullptr ? Icon(type->Icon) : QByteArray());
    }
    std::error_code ignored; // a theme's time tells desktops that a cache of it is old
    if (isChanged)
        std::filesystem::last_write_time(theme, std::filesystem::file_time_type::clock::now(), ignored);
    return isChanged;
}

// One that can't be read stays as it is.
void KeepDefaults(const std::vector<RegisteredType> &types, const std::string &file)
{
    QByteArray text;
    if (!ReadUserFile(file, text))
        return;
    QByteArray wanted = text;
    for (const KnownType &known : KnownTypes) {
        const auto with = Find(types, known.extension) != nullptr ? WithDefault : WithoutDefault;
        wanted = with(wanted, MimeTypeOf(known.extension), Entry);
    }
    if (wanted != text)
        KeepUserFile(file, wanted);
}

// Whether the desktop's table of types was made from what is registered now.
bool IsTableMade(const std::vector<RegisteredType> &types, const std::string &mimeFolder)
{
    return std::ranges::all_of(KnownTypes, [&](const KnownType &known) {
        const std::string made = mimeFolder + '/' + MimeTypeOf(known.extension).toStdString() + ".xml";
        return GetFileFacts(made).Exists == (Find(types, known.extension) != nullptr);
    });
}

// Where the tool is missing, desktops find what it would have told them later or not at all.
void RunTool(const QString &name, const std::string &folder)
{
    QProcess tool;
    tool.setStandardInputFile(QProcess::nullDevice());
    tool.setStandardOutputFile(QProcess::nullDevice());
    tool.setStandardErrorFile(QProcess::nullDevice());
    tool.start(name, {QFile::decodeName(folder.c_str())});
    if (tool.waitForFinished(ToolPatience) || tool.state() == QProcess::NotRunning)
        return;
    tool.kill();
    tool.waitForFinished();
}

} // namespace

std::vector<RegisteredType> RegisteredTypes(const clsRegistryObject &registry)
{
    std::vector<RegisteredType> types;
    for (const KnownType &known : KnownTypes) {
        const QString className = registry.Value(Classes + u'.' + QLatin1String(known.extension));
        if (className.isEmpty())
            continue;
        const QString key = Classes + className;
        QString program = registry.Value(key + QStringLiteral("\\shell\\open\\command"));
        program.chop(program.endsWith(QStringLiteral(" %1")) ? 3 : 0);
        program.chop(program.endsWith(QStringLiteral(".exe")) ? 4 : 0); // programs have no extension here
        const QString icon = registry.Value(key + QStringLiteral("\\DefaultIcon"));
        types.push_back(
            {known.extension, registry.Value(key), icon.section(u',', -1).toInt(), ToNativePath(program)});
    }
    return types;
}

void BringDesktopInLine(const std::vector<RegisteredType> &types, const XdgFolders &folders)
{
    if (folders.Data.empty() || folders.Config.empty())
        return;
    const std::string mimeFolder = folders.Data + "/mime";
    const std::string entryFolder = folders.Data + "/applications";
    bool isChanged = KeepIcons(types, folders.Data + "/icons/hicolor");
    KeepUserFile(mimeFolder + "/packages/workbench-files.xml", MimePackage(types), &isChanged);
    KeepUserFile(entryFolder + '/' + Entry.toStdString(), DesktopEntry(types), &isChanged);
    KeepDefaults(types, folders.Config + "/mimeapps.list");
    if (!isChanged && IsTableMade(types, mimeFolder))
        return;
    RunTool(QStringLiteral("update-mime-database"), mimeFolder);
    RunTool(QStringLiteral("update-desktop-database"), entryFolder);
}

} // namespace wb
