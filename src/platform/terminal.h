// The terminal that a stream goes to.
#pragma once

#include <cstdio>

namespace wb
{

// How many characters fit into a row of it; 0 when the stream goes elsewhere.
int TerminalColumns(std::FILE *stream);

} // namespace wb
