// The settings file: any text is read, and what was read is written and read again without a change.
#include "fuzz/support/target.h"

#include "services/settings.h"

void wb::FuzzOne(ByteView bytes)
{
    const Settings read = ParseSettings(bytes);
    Require(ParseSettings(FormatSettings(read)) == read, "settings come back as they were written");
}
