#include "anim/framelistpane.h"

#include "anim/framelist.h"
#include "widgets/filedrop.h"
#include "widgets/listbox.h"
#include "widgets/listicons.h"
#include "widgets/picturebutton.h"

#include <QDropEvent>
#include <QVBoxLayout>

#include <functional>

namespace wb
{

namespace
{

constexpr char16_t DeleteKey = 127;

class Rows : public RowSource
{
public:
    explicit Rows(QStringList names) : m_names(std::move(names)) {}

    int Count() const override { return int(m_names.size()); }
    QString Text(int row) const override { return m_names[row]; }
    QIcon Picture(int) const override
    {
        static const QIcon picture = LoadListIcon(ListIcon::Gi);
        return picture;
    }

private:
    QStringList m_names;
};

class DropListBox : public ListBox
{
public:
    DropListBox(const QString &name, std::function<void(const QStringList &)> dropped, QWidget *parent)
        : ListBox(name, parent), m_dropped(std::move(dropped))
    {
        setAcceptDrops(true);
    }

protected:
    void dragEnterEvent(QDragEnterEvent *event) override { AcceptFiles(*event); }
    void dragMoveEvent(QDragMoveEvent *event) override { AcceptFiles(*event); }
    void dropEvent(QDropEvent *event) override
    {
        if (AcceptFiles(*event))
            m_dropped(DroppedFiles(*event));
    }

private:
    std::function<void(const QStringList &)> m_dropped;
};

} // namespace

FrameListPane::FrameListPane(const Names &names, const frmRes &res, QWidget *parent)
    : QWidget(parent), m_list(new DropListBox(
                           names.List,
                           [this](const QStringList &paths) {
                               QMetaObject::invokeMethod(
                                   this, [this, paths] { Q_EMIT FilesDropped(paths); }, Qt::QueuedConnection);
                           },
                           this))
{
    m_list->setAccessibleName(tr("Кадры"));
    m_list->setToolTip(tr("Сюда можно перетащить файлы"));
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(MakeButtons(names, res));
    column->addWidget(m_list, 1);
    connect(m_list, &ListBox::SelectionChanged, this, [this] { Q_EMIT LineSelected(m_list->ListIndex()); });
    connect(m_list, &ListBox::KeyPress, this, [this](QChar key) {
        if (key == DeleteKey)
            Q_EMIT RemoveWanted();
    });
}

QWidget *FrameListPane::MakeButtons(const Names &names, const frmRes &res)
{
    m_bar = new QWidget(this);
    m_buttons = new QHBoxLayout(m_bar);
    m_buttons->setContentsMargins(0, 0, 0, 0);
    m_buttons->setSpacing(2);
    auto *add = new PictureButton(names.Add, res.imgAddFrame, tr("Добавить кадры из файлов"), m_bar);
    auto *remove = new PictureButton(names.Remove, res.imgRemoveFrame, tr("Удалить кадр (Del)"), m_bar);
    connect(add, &QToolButton::clicked, this, &FrameListPane::AddWanted);
    connect(remove, &QToolButton::clicked, this, &FrameListPane::RemoveWanted);
    m_buttons->addWidget(add);
    m_buttons->addWidget(remove);
    if (!names.Move.isEmpty())
        AddMoveButtons(names.Move, res);
    m_buttons->addStretch(1);
    return m_bar;
}

void FrameListPane::AddMoveButtons(const QString &name, const frmRes &res)
{
    auto *up = new PictureButton(name + QStringLiteral("(0)"), res.imgUp, tr("Передвинуть кадр выше"), m_bar);
    auto *down =
        new PictureButton(name + QStringLiteral("(1)"), res.imgDown, tr("Передвинуть кадр ниже"), m_bar);
    connect(up, &QToolButton::clicked, this, [this] { Q_EMIT MoveWanted(-1); });
    connect(down, &QToolButton::clicked, this, [this] { Q_EMIT MoveWanted(1); });
    m_buttons->addWidget(up);
    m_buttons->addWidget(down);
}

void FrameListPane::AddButton(QWidget *button)
{
    m_buttons->addWidget(button);
}

void FrameListPane::FocusList()
{
    m_list->setFocus();
}

void FrameListPane::SetChangeable(bool isChangeable)
{
    m_bar->setEnabled(isChangeable);
    m_list->setAcceptDrops(isChangeable);
}

void FrameListPane::ShowFrames(const FrameList &frames)
{
    m_list->SetRows(std::make_shared<Rows>(frames.Names()), frames.Selected());
}

} // namespace wb
