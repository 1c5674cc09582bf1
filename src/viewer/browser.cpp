#include "viewer/browser.h"

#include "common/files.h"
#include "platform/fileio.h"
#include "platform/nativepath.h"
#include "platform/programfolder.h"
#include "viewer/filetype.h"
#include "viewer/viewertexts.h"
#include "widgets/listicons.h"
#include "widgets/picturebutton.h"

#include <QButtonGroup>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace wb
{

Browser::Browser(Settings &settings, const frmRes &res, QWidget *parent)
    : QWidget(parent), m_settings(settings),
      cmdRoot(new PictureButton(QStringLiteral("cmdRoot"), res.imgRoot, tr("В корень (\\)"), this)),
      cmdSub(new PictureButton(QStringLiteral("cmdSub"), res.imgUp, tr("На уровень вверх"), this)),
      txtPath(new QLineEdit(this)), lstPKG(new ListBox(QStringLiteral("lstPKG"), this)),
      lstDAT(new ListBox(QStringLiteral("lstDAT"), this)), lblFiles(new QLabel(this))
{
    lstFiles = new FileListBox(QStringLiteral("lstFiles"), FolderListPictures(LoadListIcons()),
                               FilePatterns(), ProgramFolder(), this);
    txtPath->setObjectName(QStringLiteral("txtPath"));
    lblFiles->setObjectName(QStringLiteral("lblFiles"));

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(MakeViewButtons());
    column->addWidget(MakeNavigation());
    for (ListBox *list : Lists()) {
        column->addWidget(list, 1);
        list->setVisible(list == lstFiles);
        connect(list, &ListBox::KeyPress, this, &Browser::KeyPress);
    }
    column->addWidget(lblFiles);

    connect(lstFiles, &FileListBox::ChangeFolder, this, &Browser::FolderChanged);
    connect(lstFiles, &ListBox::SelectionChanged, this, &Browser::SelectionChanged);
    connect(lstFiles, &FileListBox::RowsRefreshed, this, &Browser::ShowFolderTexts);
    OrderTabs();
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
    connect(txtPath, &QLineEdit::returnPressed, this, &Browser::GoToTypedPath);
    connect(cmdRoot, &QToolButton::clicked, this, &Browser::GoToRoot);
    connect(cmdRoot, &QToolButton::released, this, &Browser::FocusList);
    connect(cmdSub, &QToolButton::clicked, this, &Browser::GoUp);
    return bar;
}

std::array<ListBox *, 3> Browser::Lists() const
{
    return {lstFiles, lstPKG, lstDAT};
}

ListBox *Browser::CurrentList() const
{
    return Lists()[m_view];
}

void Browser::OrderTabs()
{
    QWidget *const order[] = {cmdFileView[0], cmdFileView[1], cmdFileView[2], cmdRoot, cmdSub,
                              txtPath,        lstFiles,       lstPKG,         lstDAT};
    for (std::size_t i = 1; i < std::size(order); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void Browser::SetView(View view)
{
    cmdFileView[view]->click();
}

void Browser::SwitchView(View view)
{
    m_switching = true;
    m_view = view;
    // The chosen list first: hiding the one with the focus must not send the focus elsewhere.
    CurrentList()->show();
    FocusList();
    for (ListBox *list : Lists())
        list->setVisible(list == CurrentList());
    if (view == Files) {
        SelectionChanged();
    } else {
        txtPath->clear();
        lblFiles->setText(ObjectsText(0));
    }
    m_switching = false;
}

QString Browser::SelectedFile() const
{
    const QString name = lstFiles->SelectedName();
    if (name.isEmpty())
        return {};
    const QString file = Path().endsWith(u'\\') ? Path() + name : Path() + u'\\' + name;
    return FileExists(file) ? file : QString();
}

bool Browser::SelectFile(const QString &name)
{
    const int row = name.isEmpty() ? -1 : lstFiles->FindName(name, 1);
    if (row >= 0)
        lstFiles->SetListIndex(row);
    return row >= 0;
}

int Browser::ObjectCount() const
{
    return Path().isEmpty() ? lstFiles->ListCount() : lstFiles->ListCount() - 1;
}

void Browser::FolderChanged()
{
    m_settings.Dir = Path();
    ShowFolderTexts();
}

// The folder list goes on by itself behind the other lists, whose texts then stand there.
void Browser::ShowFolderTexts()
{
    if (m_view != Files)
        return;
    txtPath->setText(Path());
    const QString file = SelectedFile();
    lblFiles->setText(file.isEmpty() ? ObjectsText(ObjectCount())
                                     : ObjectsText(ObjectCount(), GetFileFacts(ToNativePath(file)).Size));
}

void Browser::SelectionChanged()
{
    ShowFolderTexts();
    const QString file = SelectedFile();
    if (m_view == Files && !m_switching && !file.isEmpty())
        Q_EMIT FileSelected(file);
}

void Browser::DeselectOther(const QString &file)
{
    if (SelectedFile() != file)
        lstFiles->SetListIndex(-1);
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

void Browser::GoUp()
{
    if (m_view == Files && !Path().isEmpty()) {
        lstFiles->SetListIndex(0);
        lstFiles->OpenSelected();
    }
    FocusList();
}

void Browser::GoToRoot()
{
    constexpr int DriveRootLength = 3;
    if (m_view == Files && Path().size() > DriveRootLength)
        lstFiles->SetPath(Path().left(DriveRootLength));
    FocusList();
}

void Browser::GoToTypedPath()
{
    if (m_view != Files)
        return;
    lstFiles->SetPath(PathFromUserText(txtPath->text()));
    FocusList();
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
