// File name patterns.
#pragma once

#include <QString>

namespace wb
{

// A pattern in which "*" stands for any characters, also none, and "?" for any single one; case is ignored.
// "*.*" takes every name, with or without a dot, as patterns always have; an empty pattern takes none.
class Wildcard
{
public:
    explicit Wildcard(const QString &pattern);

    bool Matches(QStringView name) const;

private:
    enum class Form { Everything, Ending, General };

    Form m_form = Form::General;
    QString m_text; // upper case; of an Ending what follows the "*"
};

} // namespace wb
