// Where the program's streams go.
#pragma once

#include <cstdio>

namespace wb
{

// For the start of a program: sees to it that no file gets the number of a standard stream that was closed,
// by which what is printed would go into the file. Using such a stream still fails.
void ReserveStandardStreams();

// How many characters fit into a row of the terminal that the stream goes to; 0 when it goes elsewhere.
int TerminalColumns(std::FILE *stream);

// While there is one, what is written to standard error is dropped: for libraries that remark on what they
// are given. The stream is the whole process's, so there may be but one, while no other thread has anything
// to say.
class StandardErrorDropped
{
public:
    StandardErrorDropped();
    ~StandardErrorDropped();
    StandardErrorDropped(const StandardErrorDropped &) = delete;
    StandardErrorDropped &operator=(const StandardErrorDropped &) = delete;

private:
    int m_kept; // a descriptor of where it goes; -1 when it could not be turned away
};

} // namespace wb
