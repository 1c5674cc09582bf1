// The user's preferences and their file, Options.ini.
#pragma once

#include "common/bytearray.h"

#include <QString>
#include <cstdint>

namespace wb
{

// Colours are platform colour values: red in the low byte, then green, then blue. A new record is all zero,
// which is what reading a file starts from.
struct Settings {
    bool AutoPlayAnim = false;
    bool AutoPlaySound = false;
    std::int32_t BackColor1 = 0;
    std::int32_t BackColor2 = 0;
    std::int32_t AFTColor = 0;
    std::int32_t SoundVolume = 0; // 0..100
    std::int32_t JPEGQuality = 0; // 0..100
    bool AltGAIMethod = false;
    bool ViewOnTop = false;
    bool ViewDrawOnly = false;
    bool DrawStretch = false;
    bool AssocPKG = false;
    bool AssocGI = false;
    bool AssocGAI = false;
    bool AssocHAI = false;
    bool AssocAFT = false;
    QString Dir;
    QString OpenDir;
    QString Pack_Folder;
    QString Pack_FileName;
    QString UnPack_FileName;
    QString UnPack_Folder;

    bool operator==(const Settings &) const = default;
};

// What holds when there is no file.
Settings DefaultSettings();

// Reads the text of a settings file (ANSI; lines end in CR LF, CR or LF). Never fails: unknown keys and lines
// without "=" are ignored, a key that comes again takes the later value, and a bad value counts as False, 0,
// black or empty. Numbers are decimal, with an optional sign and an optional fraction (rounded, halves to
// even), shorter than 10 characters; exponents and grouping are no numbers.
Settings ParseSettings(ByteView bytes);

// The file's text: 27 lines, ANSI, each ended by CR LF. A path can't hold a line break there: it becomes "?".
ByteArray FormatSettings(const Settings &settings);

// Options.ini in the program folder; in the user's configuration folder when the program folder can't be
// written or is the system's. Empty for a user without one, whose settings are kept nowhere.
QString SettingsPath();
QString SettingsPathIn(const QString &programFolder, const QString &configFolder);

// The settings of the file `path`. A missing file is written at once with the defaults; one that can't be
// read (above 16 MiB counts so) gives the defaults.
Settings LoadSettings(const QString &path);

// Writes the file, making its folder when it is missing.
bool SaveSettings(const QString &path, const Settings &settings);

// "#RRGGBB" in upper case.
QString ColorText(std::int32_t color);

} // namespace wb
