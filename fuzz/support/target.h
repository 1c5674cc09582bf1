// What a fuzz target is: one function over the bytes that the fuzzer makes up. Whatever it does wrong the
// sanitizers see; what they can't see it says with Require.
#pragma once

#include "common/bytearray.h"

namespace wb
{

// Runs the code under test over the bytes. Each target defines it.
void FuzzOne(ByteView bytes);

// Ends the program with `what` unless it holds.
void Require(bool holds, const char *what);

} // namespace wb
