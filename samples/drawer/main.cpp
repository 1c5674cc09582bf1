// Draws the pictures of a small made-up game, makes its sounds, and writes its data. Usage: sample-drawer OUT
//
// OUT/game gets what is finished as it is; OUT/drawn the PNG files that are to become GI files at the same
// place. The same program draws the same pictures every time.
#include "font.h"
#include "scenery.h"
#include "sounds.h"
#include "sprites.h"
#include "writers.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <stdexcept>

using namespace Qt::StringLiterals;
using namespace wb;

namespace
{

class Folder
{
public:
    explicit Folder(const QString &root) : m_root(root) {}

    void Save(const QString &path, const QByteArray &bytes) const
    {
        QFile file(Prepare(path));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.flush())
            Fail(file.fileName());
    }

    // In the format of the path's extension.
    void Save(const QString &path, const QImage &image) const
    {
        const QString full = Prepare(path);
        const int quality = full.endsWith(u".jpg"_s) ? 92 : -1;
        if (!image.save(full, nullptr, quality))
            Fail(full);
    }

private:
    QString Prepare(const QString &path) const
    {
        QString full = m_root + u'/' + path;
        if (!QDir().mkpath(QFileInfo(full).path()))
            Fail(full);
        return full;
    }

    [[noreturn]] static void Fail(const QString &path)
    {
        throw std::runtime_error("can't write " + path.toStdString());
    }

    QString m_root;
};

const PlanetLook Blue = {
    {0x17, 0x4A, 0x8C}, {0xC9, 0xB0, 0x78}, {0x3E, 0x7A, 0x46}, {0x7A, 0xC4, 0xFF}, false, 3.7F};
const PlanetLook Red = {
    {0x5A, 0x2A, 0x22}, {0xB8, 0x5A, 0x3A}, {0xE0, 0x9A, 0x62}, {0xFF, 0xA6, 0x7A}, false, 11.2F};
const PlanetLook Giant = {
    {0x9A, 0x6A, 0x48}, {0xE8, 0xCF, 0xA2}, {0xF6, 0xEE, 0xDC}, {0xFF, 0xDC, 0xA0}, true, 5.1F};

void DrawSpace(const Folder &game, const Folder &drawn)
{
    const QImage background = DrawStarField(640, 480, 1.3F);
    const QImage panorama = DrawStarField(2400, 600, 8.9F);
    drawn.Save(u"Звёзды/Фон.png"_s, background);
    drawn.Save(u"Звёзды/Панорама.png"_s, panorama);
    game.Save(u"Звёзды/Фон.jpg"_s, background);
    game.Save(u"Звёзды/Панорама.jpg"_s, panorama);
    game.Save(u"Звёзды/Фон.bmp"_s, background.convertToFormat(QImage::Format_RGB32));
    game.Save(u"Звёзды/Фон-DXT1.dds"_s, WriteDdsDxt1(background));
    game.Save(u"Звёзды/Фон.psd"_s, WritePsd(background));

    const QImage planet = DrawPlanet(256, Blue);
    drawn.Save(u"Графика/Планета.png"_s, planet);
    game.Save(u"Графика/Планета.png"_s, planet);
    game.Save(u"Графика/Планета.dds"_s, WriteDds32(planet));
    drawn.Save(u"Графика/Красная планета.png"_s, DrawPlanet(200, Red));
    drawn.Save(u"Графика/Гигант.png"_s, DrawPlanet(320, Giant));
    for (int i = 1; i <= 3; ++i)
        drawn.Save(u"Графика/Астероид%1.png"_s.arg(i), DrawAsteroid(64 + 32 * i, 2.3F * float(i)));
}

void DrawCraft(const Folder &game, const Folder &drawn)
{
    const QImage scout = DrawShip(QColor(0xB4, 0xBE, 0xCC), QColor(0xE4, 0x6C, 0x5A));
    drawn.Save(u"Корабли/Разведчик.png"_s, scout);
    game.Save(u"Корабли/Разведчик.png"_s, scout);
    drawn.Save(u"Корабли/Пират.png"_s, DrawShip(QColor(0x6A, 0x58, 0x62), QColor(0xF2, 0xB8, 0x4B)));
    drawn.Save(u"Корабли/Торговец.png"_s, DrawShip(QColor(0x7E, 0x9C, 0x86), QColor(0x4D, 0x9B, 0xE7)));
}

void DrawInterface(const Folder &game, const Folder &drawn)
{
    const QImage portrait = DrawPortrait();
    drawn.Save(u"Интерфейс/Капитан.png"_s, portrait);
    game.Save(u"Интерфейс/Капитан.png"_s, portrait);
    drawn.Save(u"Интерфейс/ButtonN.png"_s, DrawButton(ButtonState::Normal));
    drawn.Save(u"Интерфейс/ButtonH.png"_s, DrawButton(ButtonState::Hover));
    drawn.Save(u"Интерфейс/ButtonP.png"_s, DrawButton(ButtonState::Pressed));
    drawn.Save(u"Интерфейс/ButtonD.png"_s, DrawButton(ButtonState::Disabled));
    game.Save(u"Интерфейс/Шрифт.aft"_s, DrawFont());
}

DatItem Craft(const QString &name, const QString &text, int price, int speed)
{
    const DatItem weapons = {
        u"Оружие"_s,
        {},
        {{u"Лазер"_s, QString::number(speed % 4 + 1), {}}, {u"Ракета"_s, QString::number(speed % 3), {}}},
        true};
    return {name,
            {},
            {{u"Название"_s, name, {}},
             {u"Описание"_s, text, {}},
             {u"Цена"_s, QString::number(price), {}},
             {u"Скорость"_s, QString::number(speed), {}},
             weapons}};
}

void WriteData(const Folder &game)
{
    const DatItem crafts = {
        u"Корабли"_s,
        {},
        {Craft(u"Разведчик"_s, u"Лёгкий корабль для дальних вылазок. Быстр, но почти не защищён."_s, 4200,
               910),
         Craft(u"Торговец"_s, u"Вместительный трюм и терпеливый экипаж."_s, 7800, 430),
         Craft(u"Пират"_s, u"Никто не знает, кому он принадлежал раньше."_s, 6100, 720)}};
    const DatItem planets = {u"Планеты"_s,
                             {},
                             {{u"Голубая"_s, u"Океаны, острова и один космопорт."_s, {}},
                              {u"Красная"_s, u"Пыль и шахты."_s, {}},
                              {u"Гигант"_s, u"Сесть некуда, но топливо почти даром."_s, {}}}};
    const DatItem greetings = {u"Диалоги"_s,
                               {},
                               {{u"Приветствие"_s, u"Добро пожаловать на борт, капитан!"_s, {}},
                                {u"Прощание"_s, u"Чистого неба."_s, {}}},
                               true};
    game.Save(u"Данные/Игра.dat"_s,
              WriteDat({{}, {}, {{u"Версия"_s, u"1.0"_s, {}}, crafts, planets, greetings}}));
}

void DrawSequence(const Folder &game, const Folder &drawn, const QString &name, const QImage &frame,
                  int number)
{
    const QString path = u"%1_%2.png"_s.arg(name).arg(number, 3, 10, QChar(u'0'));
    game.Save(path, frame);
    drawn.Save(path, frame);
}

void DrawExtras(const Folder &game, const Folder &drawn)
{
    constexpr int explosion = 12;
    for (int i = 0; i < explosion; ++i)
        DrawSequence(game, drawn, u"Разное/Взрыв/Взрыв"_s, DrawExplosion(128, i, explosion), i);
    constexpr int radar = 24;
    for (int i = 0; i < radar; ++i)
        DrawSequence(game, drawn, u"Интерфейс/Радар/Радар"_s, DrawRadar(i, radar), i);
    // A download that broke off.
    QByteArray whole;
    QBuffer buffer(&whole);
    DrawPlanet(200, Giant).save(&buffer, "PNG");
    game.Save(u"Разное/Оборванный.png"_s, whole.first(whole.size() / 2));
}

void MakeSounds(const Folder &game)
{
    game.Save(u"Звуки/Выстрел.wav"_s, MakeShot());
    game.Save(u"Звуки/Музыка.mp3"_s, MakeMusic());
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fputs("usage: sample-drawer OUT\n", stderr);
        return 2;
    }
    const QString out = QFile::decodeName(argv[1]);
    const Folder game(out + u"/game"_s), drawn(out + u"/drawn"_s);
    try {
        DrawSpace(game, drawn);
        DrawCraft(game, drawn);
        DrawInterface(game, drawn);
        DrawExtras(game, drawn);
        MakeSounds(game);
        WriteData(game);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "sample-drawer: %s\n", error.what());
        return 1;
    }
    return 0;
}
