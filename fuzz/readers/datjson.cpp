// Any text may be given for the JSON of a DAT; what is taken is a DAT that can be read.
#include "fuzz/support/target.h"

#include "dat/datjson.h"
#include "dat/datreader.h"

void wb::FuzzOne(ByteView bytes)
{
    const DatFromJsonResult result = DatFromJson(bytes);
    Require(result.Problem.isEmpty() != result.Plain.empty(), "bytes, or what is wrong");
    Require(result.Plain.empty() || DatParse(result.Plain).Count() > 0, "what is taken can be read");
}
