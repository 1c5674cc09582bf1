#include "widgets/filedrop.h"

#include "platform/nativepath.h"

#include <QDropEvent>
#include <QMimeData>
#include <QUrl>

namespace wb
{

bool AcceptFiles(QDropEvent &event)
{
    const QList<QUrl> urls = event.mimeData()->urls();
    if (urls.isEmpty() || !urls.front().isLocalFile() || !(event.possibleActions() & Qt::CopyAction))
        return false;
    event.setDropAction(Qt::CopyAction);
    event.accept();
    return true;
}

QStringList DroppedFiles(const QDropEvent &event)
{
    QStringList paths;
    for (const QUrl &url : event.mimeData()->urls())
        if (url.isLocalFile())
            paths << PathFromUserText(url.toLocalFile());
    return paths;
}

} // namespace wb
