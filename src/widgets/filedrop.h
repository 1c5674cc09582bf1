// Files dragged here from other programs.
#pragma once

#include <QStringList>

class QDropEvent;

namespace wb
{

// Takes a drag or a drop that carries files of this machine. Always as a copy: after a move the other program
// would delete them. False, with the event left as it is, for any other.
bool AcceptFiles(QDropEvent &event);

// The files, as paths of the program.
QStringList DroppedFiles(const QDropEvent &event);

} // namespace wb
