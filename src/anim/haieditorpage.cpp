#include "anim/haieditorpage.h"

#include "anim/haiframe.h"
#include "gfx/pixels.h"
#include "services/uitext.h"
#include "widgets/colour.h"
#include "widgets/dibimage.h"
#include "widgets/optionframe.h"
#include "widgets/picturearea.h"
#include "widgets/picturebutton.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace wb
{

namespace
{

constexpr int StoreWidth = 240;
constexpr int StorePictureHeight = 146; // a frame of the usual size, and some room

QString HaiFilter()
{
    return UiText(TextHaiFiles) + QStringLiteral(" (*.hai)|*.hai");
}

} // namespace

struct HaiEditorPage::CopyButton {
    HaiProject::ListName from;
    bool all;
    const char *name;
    QIcon frmRes::*picture;
    QString tip;
};

HaiEditorPage::HaiEditorPage(Settings &settings, Dialogs &dialogs, const frmRes &res, QWidget *parent)
    : ProjectPage(settings, dialogs, res, parent), m_lists{NewList(HaiProject::Animation,
                                                                   {QStringLiteral("lstHAICR_List"),
                                                                    QStringLiteral("cmdHAICR_Add(0)"),
                                                                    QStringLiteral("cmdHAICR_Remove"),
                                                                    QStringLiteral("cmdHAICR_MoveFrame")})},
      cmdHAICR_OpenHAI(NewButton("cmdHAICR_OpenHAI", tr("Открыть HAI…"), tr("Открыть анимацию"))),
      cmdHAICR_Clean(NewButton("cmdHAICR_Clean", tr("Очистить"), tr("Убрать все кадры и начать заново"))),
      cmdHAICR_SaveHAI(
          NewButton("cmdHAICR_SaveHAI", tr("Сохранить HAI…"), tr("Записать анимацию в файл HAI")))
{
    const Columns columns = LayOut(m_lists[HaiProject::Animation], {cmdHAICR_OpenHAI, cmdHAICR_Clean},
                                   {cmdHAICR_SaveHAI}, QStringLiteral("HAICR"));
    columns.All->addWidget(MakeCopyButtons());
    columns.All->addWidget(MakeStore());
    ConnectControls();
    ShowFrames();
}

FrameListPane *HaiEditorPage::NewList(HaiProject::ListName list, const FrameListPane::Names &names)
{
    auto *pane = new FrameListPane(names, m_res, this);
    connect(pane, &FrameListPane::AddWanted, this, [this, list] {
        AddFrom(PngFilter(), [this, list](const QStringList &paths) { AddFiles(list, paths); });
    });
    ConnectDrops(pane, [this, list](const QStringList &paths) { AddFiles(list, paths); });
    ConnectList(pane, list);
    for (const QAbstractButton *button : pane->findChildren<QAbstractButton *>())
        connect(button, &QAbstractButton::clicked, pane, &FrameListPane::FocusList);
    return pane;
}

QWidget *HaiEditorPage::MakeCopyButtons()
{
    const CopyButton buttons[] = {
        {HaiProject::Animation, false, "cmdHAICR_Copy", &frmRes::imgRight,
         tr("Скопировать кадр в рабочий список")},
        {HaiProject::Animation, true, "cmdHAICR_CopyAll", &frmRes::imgRightAll,
         tr("Скопировать все кадры в рабочий список")},
        {HaiProject::Store, false, "cmdHAICR_Copy2", &frmRes::imgLeft, tr("Скопировать кадр в анимацию")},
        {HaiProject::Store, true, "cmdHAICR_CopyAll2", &frmRes::imgLeftAll,
         tr("Скопировать все кадры в анимацию")},
    };
    m_copies = new QWidget(this);
    auto *column = new QVBoxLayout(m_copies);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    column->addStretch(1);
    for (const CopyButton &copy : buttons) {
        auto *button = new PictureButton(QLatin1String(copy.name), m_res.*copy.picture, copy.tip, m_copies);
        column->addWidget(button);
        connect(button, &QToolButton::clicked, this, [this, from = copy.from, all = copy.all] {
            if (all)
                CopyAll(from);
            else
                m_project.CopySelected(from);
            ShowFrames();
            m_lists[from]->FocusList();
        });
    }
    column->addStretch(1);
    return m_copies;
}

QWidget *HaiEditorPage::MakeStore()
{
    m_store = new CompactFrame(tr("Рабочий список"), this);
    m_store->setFixedWidth(StoreWidth);
    FrameListPane *pane = NewList(HaiProject::Store, {QStringLiteral("lstHAICR_List2"),
                                                      QStringLiteral("cmdHAICR_Add(1)"),
                                                      QStringLiteral("cmdHAICR_Remove2"),
                                                      {}});
    m_lists[HaiProject::Store] = pane;
    auto *clean = NewButton("cmdHAICR_Clean2", tr("Очистить"), tr("Убрать все кадры рабочего списка"));
    pane->AddButton(clean);
    connect(clean, &QPushButton::clicked, this, [this, pane] {
        if (MayLoseStore())
            m_project.Clean(HaiProject::Store);
        ShowFrames();
        pane->FocusList();
    });
    picHAICR_Picture2 =
        new PictureArea(QStringLiteral("picHAICR_Picture2"), m_res.curOpenHand, m_res.curClosedHand, m_store);
    picHAICR_Picture2->setAcceptDrops(false);
    picHAICR_Picture2->setFixedHeight(StorePictureHeight);
    auto *column = new QVBoxLayout(m_store);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(pane, 1);
    column->addWidget(picHAICR_Picture2);
    return m_store;
}

void HaiEditorPage::ConnectControls()
{
    FrameListPane *list = m_lists[HaiProject::Animation];
    ConnectOrder(list, HaiProject::Animation);
    connect(cmdHAICR_OpenHAI, &QPushButton::clicked, this, &HaiEditorPage::Open);
    connect(cmdHAICR_Clean, &QPushButton::clicked, this, [this] { Clean(HaiProject::Animation); });
    connect(cmdHAICR_SaveHAI, &QPushButton::clicked, this, &HaiEditorPage::Save);
    for (const QPushButton *button : {cmdHAICR_OpenHAI, cmdHAICR_Clean, cmdHAICR_SaveHAI})
        connect(button, &QPushButton::clicked, list, &FrameListPane::FocusList);
}

void HaiEditorPage::Open()
{
    OpenFrom(HaiFilter(), UiText(TextReadingFrames),
             [this](const QString &path, const FrameStep &step) { return m_project.Open(path, step); });
}

bool HaiEditorPage::Save()
{
    const Command command(*this);
    const std::int32_t otherSized = m_project.OtherSized();
    if (otherSized != 0 &&
        !m_dialogs.Warning(tr("Кадров другого размера, чем 128 x 128: %1. В файле они будут обрезаны или "
                              "дополнены. Продолжить?")
                               .arg(otherSized),
                           UiText(TextErrors)))
        return false;
    return SaveTo(HaiFilter(), tr("Запись фреймов: "),
                  [this](const QString &path, const FrameStep &step) { return m_project.Save(path, step); });
}

void HaiEditorPage::AddFiles(HaiProject::ListName list, const QStringList &paths)
{
    RunAdding([&](const FrameStep &step) { return m_project.AddFiles(list, paths, step); });
}

void HaiEditorPage::CopyAll(HaiProject::ListName from)
{
    RunJob(tr("Копирование фреймов: "), [&](const FrameStep &step) { m_project.CopyAll(from, step); });
}

void HaiEditorPage::TakeFrames(std::span<const std::int32_t> handles, const QStringList &names)
{
    // Brought to their size at once, large ones take little memory until their colours are reduced.
    TakeCopies(
        handles.size(), [handles](std::size_t i) { return ScaledToHai(DibToFrameBuf(handles[i])); },
        UiText(TextAddingFrames),
        [this, names](std::vector<FrameBuf> frames, const FrameStep &step) {
            m_project.AddFrames(HaiProject::Animation, std::move(frames), names, step);
        });
}

bool HaiEditorPage::MayClose()
{
    return MayLoseWork() && MayLoseStore();
}

bool HaiEditorPage::MayLoseStore()
{
    return m_project.List(HaiProject::Store).IsEmpty() ||
           m_dialogs.Question(tr("Кадры рабочего списка не сохраняются. Очистить его?"), tr("Вопрос"));
}

void HaiEditorPage::Redraw()
{
    picHAICR_Picture2->SetBackColour(ToQColor(m_settings.BackColor1));
    FramePage::Redraw();
}

void HaiEditorPage::ShowFrames()
{
    for (const auto list : {HaiProject::Animation, HaiProject::Store})
        m_lists[list]->ShowFrames(m_project.List(list));
    ShowFrame();
}

void HaiEditorPage::ShowFrame()
{
    const auto shown = [this](HaiProject::ListName list) {
        return ComposedImage(m_project.Shown(list), m_settings.BackColor2);
    };
    m_preview->ShowPicture(shown(HaiProject::Animation));
    const QImage store = shown(HaiProject::Store);
    if (!picHAICR_Picture2->Show(store, store.size()))
        picHAICR_Picture2->Clear();

    const FrameList &frames = m_project.List(HaiProject::Animation);
    const bool isFree = !m_project.IsBusy();
    for (QWidget *control : std::initializer_list<QWidget *>{m_lists[HaiProject::Animation], m_store,
                                                             m_copies, cmdHAICR_OpenHAI, cmdHAICR_Clean})
        control->setEnabled(isFree);
    cmdHAICR_SaveHAI->setEnabled(isFree && !frames.IsEmpty());
    m_preview->ShowPlace(frames.Count(), frames.Current(), !isFree);
}

} // namespace wb
