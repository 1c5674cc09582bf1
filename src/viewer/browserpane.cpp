#include "viewer/browserpane.h"

#include "viewer/viewertexts.h"

namespace wb
{

BrowserPane::BrowserPane(ListBox *list) : QObject(list), m_list(list) {}

QString BrowserPane::PathText() const
{
    return {};
}

QString BrowserPane::CountText() const
{
    return ObjectsText(0);
}

void BrowserPane::GoUp()
{
    List()->SetListIndex(0);
    List()->Activate();
}

} // namespace wb
