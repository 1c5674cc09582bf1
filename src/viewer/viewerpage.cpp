#include "viewer/viewerpage.h"

#include "common/files.h"
#include "viewer/browser.h"
#include "viewer/display.h"
#include "viewer/documentloader.h"
#include "viewer/folderpane.h"

#include <QAbstractButton>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>

namespace wb
{

namespace
{

struct KeyButton {
    char16_t key;
    const char *button;
};

// What a key pressed in a list clicks.
constexpr KeyButton ViewKeys[] = {
    {u'1', "cmdFileView(0)"},
    {u'2', "cmdFileView(1)"},
    {u'3', "cmdFileView(2)"},
};
constexpr char16_t Escape = 27;
constexpr KeyButton Keys[] = {
    {u'\\', "cmdRoot"},  {Escape, "cmdAbort"}, {u'-', "cmdZoomOut"},
    {u'=', "cmdZoomIn"}, {u'+', "cmdZoomIn"},  {u' ', "cmdPlay"},
};

const char *ButtonOf(std::span<const KeyButton> keys, QChar character)
{
    const auto match = std::ranges::find(keys, character.toLower().unicode(), &KeyButton::key);
    return match == keys.end() ? nullptr : match->button;
}

} // namespace

ViewerPage::ViewerPage(Settings &settings, Dialogs &dialogs, AbortFlag &abort, const frmRes &res,
                       QWidget *parent)
    : Page(parent), m_settings(settings), m_browser(new Browser(settings, res, this)),
      m_display(new Display(settings, dialogs, abort, res, this))
{
    auto *halves = new QSplitter(this);
    halves->setChildrenCollapsible(false);
    halves->setHandleWidth(12);
    halves->addWidget(m_browser);
    halves->addWidget(m_display);
    halves->setStretchFactor(0, 0);
    halves->setStretchFactor(1, 1);
    halves->setSizes({300, 700});
    m_browser->setMinimumWidth(220);
    m_display->setMinimumWidth(400);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 10);
    column->addWidget(halves);

    connect(&m_browser->Folders(), &FolderPane::FileSelected, this, &ViewerPage::FileSelected);
    connect(m_browser, &Browser::KeyPress, this, &ViewerPage::PressKey);
    connect(m_browser, &Browser::ViewDoubleClicked, this, [this](Browser::View view) {
        if (view == Browser::Records)
            Q_EMIT DatEditorWanted();
        else
            Q_EMIT ViewerWanted();
    });
    connect(m_display, &Display::FileDropped, this, &ViewerPage::FileDropped);
    connect(m_display, &Display::Released, this, &ViewerPage::FocusList);
}

void ViewerPage::ApplySettings()
{
    Redraw();
    m_browser->Folders().SetPath(m_settings.Dir);
}

void ViewerPage::Redraw()
{
    m_display->Redraw();
}

void ViewerPage::ScrollList(int rows)
{
    m_browser->ScrollList(rows);
}

void ViewerPage::Release()
{
    m_display->Release();
}

void ViewerPage::FocusList()
{
    m_browser->FocusList();
}

void ViewerPage::showEvent(QShowEvent *)
{
    FocusList();
}

void ViewerPage::OpenNamed(const QString &folder, const QString &name)
{
    m_browser->Folders().SetPath(folder);
    m_browser->Folders().OpenNamed(name);
}

void ViewerPage::OpenInViewer(const QString &path)
{
    m_display->Open(path, [&path] { return OpenDocumentFile(path); });
}

void ViewerPage::FileSelected(const QString &path)
{
    if (path != m_display->DocumentPath())
        OpenInViewer(path);
}

void ViewerPage::FileDropped(const QString &path)
{
    if (FileExists(path))
        OpenInViewer(path);
}

void ViewerPage::PressKey(QChar character)
{
    const char *name = ButtonOf(ViewKeys, character);
    if (name == nullptr && isVisible() && m_browser->CurrentView() != Browser::Records)
        name = ButtonOf(Keys, character);
    if (name == nullptr)
        return;
    if (auto *button = findChild<QAbstractButton *>(QLatin1String(name)); button->isEnabled())
        button->click();
}

} // namespace wb
