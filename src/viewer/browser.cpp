#include "viewer/browser.h"

#include "common/paths.h"
#include "viewer/archivepane.h"
#include "viewer/datpane.h"
#include "viewer/folderpane.h"
#include "widgets/listicons.h"
#include "widgets/picturebutton.h"

#include <QButtonGroup>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace wb
{

Browser::Browser(Settings &settings, const frmRes &res, DatEditor &datEditor, QWidget *parent)
    : QWidget(parent),
      cmdRoot(new PictureButton(QStringLiteral("cmdRoot"), res.imgRoot, tr("В корень (\\)"), this)),
      cmdSub(
          new PictureButton(QStringLiteral("cmdSub"), res.imgUp, tr("На уровень вверх (Backspace)"), this)),
      cmdPacker(
          new PictureButton(QStringLiteral("cmdPacker"), res.imgPacker, tr("Запаковать папку (P)"), this)),
      cmdUnPacker(new PictureButton(QStringLiteral("cmdUnPacker"), res.imgUnPacker,
                                    tr("Распаковать архив (U)"), this)),
      cmdExtract(new PictureButton(QStringLiteral("cmdExtract"), res.imgExtract, tr("Извлечь (E)"), this)),
      txtPath(new QLineEdit(this)), lblFiles(new QLabel(this))
{
    txtPath->setObjectName(QStringLiteral("txtPath"));
    lblFiles->setObjectName(QStringLiteral("lblFiles"));
    const std::vector<QIcon> icons = LoadListIcons();
    m_folders = new FolderPane(settings, icons, this);
    m_entries = new ArchivePane(icons, this);
    m_panes = {m_folders, m_entries, new DatPane(datEditor, icons, this)};

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 0, 10);
    column->setSpacing(8);
    column->addWidget(MakeTopRow());
    column->addWidget(MakeNavigation());
    for (BrowserPane *pane : m_panes) {
        column->addWidget(pane->List(), 1);
        pane->List()->setVisible(pane == m_folders);
        connect(pane->List(), &ListBox::KeyPress, this, &Browser::KeyPress);
        // A list behind the one in view may change by itself.
        connect(pane, &BrowserPane::Changed, this, [this, pane] {
            if (pane == CurrentPane())
                ShowTexts();
        });
    }
    column->addWidget(lblFiles);

    connect(m_entries, &ArchivePane::Left, this, [this] { SetView(Files); });
    connect(&datEditor, &DatEditor::Left, this, [this] { SetView(Files); });
    connect(&datEditor, &DatEditor::Opened, this, [this] { SetView(Records); });
    connect(cmdPacker, &QToolButton::clicked, this, &Browser::WantPacker);
    connect(cmdUnPacker, &QToolButton::clicked, this, &Browser::WantUnpacker);
    connect(cmdExtract, &QToolButton::clicked, this, &Browser::ExtractWanted);
    OrderTabs();
    UpdateButtons();
}

QWidget *Browser::MakeTopRow()
{
    auto *bar = new QWidget(this);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    row->addWidget(MakeViewButtons(), 1);
    row->addWidget(MakeArchiveButtons());
    return bar;
}

// The buttons come and go with what is selected, so each keeps its place: no other one moves under the mouse.
QWidget *Browser::MakeArchiveButtons()
{
    auto *bar = new QWidget(this);
    auto *cells = new QGridLayout(bar);
    cells->setContentsMargins(0, 0, 0, 0);
    cells->setSpacing(4);
    cells->addWidget(cmdUnPacker, 0, 0);
    cells->addWidget(cmdPacker, 0, 1);
    cells->addWidget(cmdExtract, 0, 1); // never in view together with the other
    for (PictureButton *button : {cmdUnPacker, cmdPacker}) {
        QSizePolicy policy = button->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        button->setSizePolicy(policy);
    }
    return bar;
}

QWidget *Browser::MakeViewButtons()
{
    auto *bar = new QWidget(this);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    auto *group = new QButtonGroup(this);
    const QString captions[] = {tr("Файлы"), QStringLiteral("PKG"), QStringLiteral("DAT")};
    for (int i = 0; i < int(cmdFileView.size()); ++i) {
        auto *button = new QPushButton(captions[i], bar);
        button->setObjectName(QStringLiteral("cmdFileView(%1)").arg(i));
        button->setCheckable(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setProperty("segment", true);
        button->setProperty("first", i == 0);
        button->installEventFilter(this);
        group->addButton(button);
        row->addWidget(button, 1);
        cmdFileView[std::size_t(i)] = button;
        connect(button, &QPushButton::clicked, this, [this, i] { SwitchView(View(i)); });
    }
    cmdFileView[Files]->setChecked(true);
    return bar;
}

QWidget *Browser::MakeNavigation()
{
    auto *bar = new QWidget(this);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(cmdRoot);
    row->addWidget(cmdSub);
    row->addWidget(txtPath, 1);
    txtPath->installEventFilter(this);
    // A way up may lead to another list, which then gets the focus.
    connect(cmdRoot, &QToolButton::clicked, this, [this] {
        CurrentPane()->GoToRoot();
        FocusList();
    });
    connect(cmdRoot, &QToolButton::released, this, &Browser::FocusList);
    connect(cmdSub, &QToolButton::clicked, this, [this] {
        CurrentPane()->GoUp();
        FocusList();
    });
    connect(txtPath, &QLineEdit::returnPressed, this, [this] {
        CurrentPane()->GoTo(txtPath->text());
        FocusList();
    });
    return bar;
}

BrowserPane *Browser::CurrentPane() const
{
    return m_panes[m_view];
}

ListBox *Browser::CurrentList() const
{
    return CurrentPane()->List();
}

void Browser::OrderTabs()
{
    QWidget *const order[] = {
        cmdFileView[0], cmdFileView[1],     cmdFileView[2],     cmdRoot,           cmdSub,
        txtPath,        m_panes[0]->List(), m_panes[1]->List(), m_panes[2]->List()};
    for (std::size_t i = 1; i < std::size(order); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void Browser::SetView(View view)
{
    cmdFileView[view]->click();
}

void Browser::SwitchView(View view)
{
    m_view = view;
    // The chosen list first: hiding the one with the focus must not send the focus elsewhere.
    CurrentList()->show();
    FocusList();
    for (const BrowserPane *pane : m_panes)
        pane->List()->setVisible(pane->List() == CurrentList());
    ShowTexts();
}

void Browser::ShowTexts()
{
    txtPath->setText(CurrentPane()->PathText());
    lblFiles->setText(CurrentPane()->CountText());
    UpdateButtons();
}

void Browser::SetBusy(bool busy)
{
    m_busy = busy;
    UpdateButtons();
}

void Browser::UpdateButtons()
{
    cmdPacker->setVisible(m_view == Files && !m_folders->Path().isEmpty());
    cmdUnPacker->setVisible(m_view == Files && IsPkgPath(m_folders->SelectedFile()));
    cmdExtract->setVisible(m_view == Archive);
    cmdPacker->setEnabled(!m_busy);
    cmdUnPacker->setEnabled(!m_busy);
    cmdExtract->setEnabled(!m_busy && m_entries->SelectedEntry() != nullptr);
}

void Browser::WantPacker()
{
    const QString folder = m_folders->SelectedFolder();
    Q_EMIT PackerWanted(folder, folder + QStringLiteral(".pkg"));
}

void Browser::WantUnpacker()
{
    const QString archive = m_folders->SelectedFile();
    if (archive.isEmpty()) // gone since it was selected
        return;
    Q_EMIT UnpackerWanted(archive, NormalizePath(GetFolder(archive) + u'\\' + GetFileTitle(archive)));
}

void Browser::FocusList()
{
    if (CurrentList()->isVisible() && CurrentList()->isEnabled())
        CurrentList()->setFocus();
}

void Browser::ScrollList(int rows)
{
    CurrentList()->SetTopIndex(CurrentList()->TopIndex() + rows);
}

bool Browser::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == txtPath && event->type() == QEvent::FocusIn) {
        // After the line edit has placed its caret.
        QMetaObject::invokeMethod(txtPath, &QLineEdit::selectAll, Qt::QueuedConnection);
    } else if (event->type() == QEvent::MouseButtonDblClick) {
        for (std::size_t i = 0; i < cmdFileView.size(); ++i)
            if (watched == cmdFileView[i])
                Q_EMIT ViewDoubleClicked(View(i));
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace wb
