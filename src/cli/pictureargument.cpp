#include "cli/pictureargument.h"

#include "gi/giformat.h"

namespace wb::cli
{

QString TypeProblem(const FrameBuf &picture, int type)
{
    return GiTypeAllowed(type, picture.TransType)
               ? QString()
               : QStringLiteral("its transparency does not allow type %1").arg(type);
}

} // namespace wb::cli
