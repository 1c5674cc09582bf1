// Settings of any values come back as they were written, where the file can hold them.
#include "fuzz/support/input.h"
#include "fuzz/support/target.h"

#include "platform/ansi.h"
#include "services/settings.h"

void wb::FuzzOne(ByteView bytes)
{
    FuzzInput input(bytes);
    Settings settings;
    for (bool Settings::*flag : {&Settings::AutoPlayAnim, &Settings::AltGAIMethod, &Settings::AssocPKG})
        settings.*flag = input.Flag();
    for (std::int32_t Settings::*colour : {&Settings::BackColor1, &Settings::BackColor2, &Settings::AFTColor})
        settings.*colour = input.Long() & 0xFFFFFF;
    settings.SoundVolume = input.Number(100);
    for (QString Settings::*path : {&Settings::Dir, &Settings::OpenDir, &Settings::Pack_Folder})
        settings.*path = input.Text(300);
    const Settings once = ParseSettings(FormatSettings(settings));
    Require(once.BackColor1 == settings.BackColor1 && once.SoundVolume == settings.SoundVolume &&
                once.AssocPKG == settings.AssocPKG,
            "numbers and options come back");
    Require(ParseSettings(FormatSettings(once)) == once, "what was read is written so again");
}
