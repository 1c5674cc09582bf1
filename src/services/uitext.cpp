#include "services/uitext.h"

#include <array>

namespace wb
{

const QString &UiText(int index)
{
    static const std::array<QString, UiTextCount> texts = {
        QStringLiteral("Объектов: "),
        QStringLiteral("Размер: "),
        QStringLiteral("Память:"),
        QStringLiteral("Свободно памяти: "),
        QStringLiteral("Все файлы"),
        QStringLiteral("JPG файлы"),
        QStringLiteral("PNG файлы"),
        QStringLiteral("PNG и GI файлы"),
        QStringLiteral("GI файлы"),
        QStringLiteral("GAI файлы"),
        QStringLiteral("HAI файлы"),
        QStringLiteral("PKG архивы"),
        QStringLiteral("DAT файлы"),
        QStringLiteral("байт"),
        QStringLiteral("Кб"),
        QStringLiteral("Мб"),
        QStringLiteral("Тип: "),
        QStringLiteral("Тип фрейма: "),
        QStringLiteral("Частота: "),
        QStringLiteral("Кадр: "),
        QStringLiteral("Сохранение в PNG: "),
        QStringLiteral("Чтение фреймов: "),
        QStringLiteral("PKG UnPacker занят."),
        QStringLiteral("Создание GI ..."),
        QStringLiteral("Кадры: "),
        QStringLiteral("Добавление фреймов: "),
        QStringLiteral("Создание GI-фреймов: "),
        QStringLiteral("GAI проект содержит ошибки. Продолжить?"),
        QStringLiteral("Ошибки"),
        QStringLiteral("Некоторые файлы не были добавлены, т.к. они не принадлежат к формату PNG или GI."),
        QStringLiteral("Информация"),
        QStringLiteral(" - Координата X: начало GI-фрейма за пределами GAI файла"),
        QStringLiteral(" - Координата Y: начало GI-фрейма за пределами GAI файла"),
        QStringLiteral(" - Ширина: GI-фрейм шире GAI файла"),
        QStringLiteral(" - Высота: GI-фрейм выше GAI файла"),
        QStringLiteral(" - По горизонтали: GI-фрейм выходит за пределы GAI файла"),
        QStringLiteral(" - По вертикали: GI-фрейм выходит за пределы GAI файла"),
        QStringLiteral(" - Ширина: GI-фрейма 4-го типа и GAI файла должна совпадать"),
        QStringLiteral(" - Высота: GI-фрейма 4-го типа и GAI файла должна совпадать"),
        QStringLiteral("Кадр "),
        QStringLiteral("Количество ошибок: "),
    };
    return texts.at(std::size_t(index));
}

} // namespace wb
