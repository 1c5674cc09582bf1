// The way out of libpng and libjpeg, whose error handlers must not return.
#pragma once

#include <csetjmp>

namespace rastgl
{

// Runs the work; false when something inside it jumped. The jump skips destructors, so neither the work nor
// what it calls may own anything: what is to be released belongs to the caller.
template <typename Work>
bool RunUntilJump(std::jmp_buf &jump, const Work &work)
{
    if (setjmp(jump) != 0)
        return false;
    work();
    return true;
}

} // namespace rastgl
