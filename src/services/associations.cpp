#include "services/associations.h"

#include "platform/clsregistryobject.h"

namespace wb
{

namespace
{

struct AssociatedType {
    bool Settings::*IsOn;
    const char *Extension;
    const char *Description;
    int Icon; // of the program's icons
};

constexpr AssociatedType Types[] = {
    {&Settings::AssocPKG, "pkg", "PKG Архив (ВЗ)", 1},
    {&Settings::AssocGI, "gi", "Графическое изображение (ВЗ)", 2},
    {&Settings::AssocGAI, "gai", "Графическое изображение (ВЗ)", 3},
    {&Settings::AssocHAI, "hai", "Анимация кораблей (ВЗ)", 4},
    {&Settings::AssocAFT, "aft", "Растровый шрифт (ВЗ)", 5},
};

} // namespace

void ApplyAssociations(const Settings &settings, const QString &programFolder, clsRegistryObject &registry)
{
    const QString classes = QStringLiteral("HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\");
    const QString program = programFolder + QStringLiteral("\\workbench.exe");
    for (const AssociatedType &type : Types) {
        const QString extension = QLatin1String(type.Extension);
        const QString className = extension.toUpper() + QStringLiteral("File");
        const QString extensionKey = classes + u'.' + extension;
        const QString classKey = classes + className;
        if (settings.*type.IsOn) {
            registry.SetValue(extensionKey, {}, className);
            registry.SetValue(classKey, {}, QString::fromUtf8(type.Description));
            registry.SetValue(classKey + QStringLiteral("\\DefaultIcon"), {},
                              program + u',' + QString::number(type.Icon));
            registry.SetValue(classKey + QStringLiteral("\\shell\\open\\command\\"), {},
                              program + QStringLiteral(" %1"));
        } else {
            registry.DeleteKey(extensionKey);
            registry.DeleteKey(classKey);
        }
    }
    registry.Publish();
}

} // namespace wb
