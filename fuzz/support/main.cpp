// What libFuzzer calls, for every target.
#include "fuzz/support/target.h"

#include "gfx/graphicslibrary.h"
#include "platform/programfolder.h"

#include <cstdio>
#include <cstdlib>

namespace wb
{

void Require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}

} // namespace wb

extern "C" int LLVMFuzzerInitialize(int * /*argc*/, char *** /*argv*/)
{
    wb::Require(wb::LoadGraphicsLibrary(QString::fromStdString(wb::NativeProgramFolder())),
                "the graphics library lies beside the target");
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    wb::FuzzOne({data, size});
    return 0;
}
