// A page that has nothing on it yet.
#pragma once

#include "widgets/page.h"

namespace wb
{

class EmptyPage : public Page
{
    Q_OBJECT

public:
    EmptyPage(const QString &caption, QWidget *parent);
};

} // namespace wb
