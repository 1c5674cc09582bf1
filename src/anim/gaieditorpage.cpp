#include "anim/gaieditorpage.h"

#include "services/uitext.h"
#include "widgets/dibimage.h"
#include "widgets/numberfield.h"
#include "widgets/optionframe.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace wb
{

namespace
{

constexpr int SideWidth = 256;
constexpr int CaptionWidth = 68;

QString GaiFilter()
{
    return UiText(TextGaiFiles) + QStringLiteral(" (*.gai)|*.gai");
}

} // namespace

// What the controls of a number are called.
struct GaiEditorPage::Number {
    GaiProject::Field field;
    const char *name;
    QString caption;
    QString copyTip = {}; // of the button that gives it to every frame; empty: there is none
};

GaiEditorPage::GaiEditorPage(Settings &settings, Dialogs &dialogs, LogWindow &log, const frmRes &res,
                             QWidget *parent)
    : ProjectPage(settings, dialogs, res, parent), m_log(log),
      m_list(new FrameListPane({QStringLiteral("lstGAICR_List"), QStringLiteral("cmdGAICR_Add"),
                                QStringLiteral("cmdGAICR_Remove"), QStringLiteral("cmdGAICR_MoveFrame")},
                               res, this)),
      cmdGAICR_OpenGAI(NewButton("cmdGAICR_OpenGAI", tr("Открыть GAI…"), tr("Открыть анимацию"))),
      cmdGAICR_Clean(NewButton("cmdGAICR_Clean", tr("Очистить"), tr("Убрать все кадры и начать заново"))),
      cmdGAICR_Compile(NewButton("cmdGAICR_Compile", tr("Проверить"), tr("Найти ошибки в проекте"))),
      cmdGAICR_SaveGAI(
          NewButton("cmdGAICR_SaveGAI", tr("Сохранить GAI…"), tr("Проверить проект и записать файл GAI")))
{
    const Columns columns = LayOut(m_list, {cmdGAICR_OpenGAI, cmdGAICR_Clean},
                                   {cmdGAICR_Compile, cmdGAICR_SaveGAI}, QStringLiteral("GAICR"));
    columns.Middle->addWidget(MakeOptions());
    columns.All->addWidget(MakeSide());
    ConnectControls();
    ShowFrames();
}

QCheckBox *GaiEditorPage::NewOption(const char *name, const QString &caption, const QString &tip,
                                    bool GaiWriting::*option)
{
    auto *box = new QCheckBox(caption, m_options);
    box->setObjectName(QLatin1String(name));
    box->setToolTip(tip);
    connect(box, &QCheckBox::toggled, this, [this, option](bool isOn) {
        GaiWriting options = m_project.Options();
        options.*option = isOn;
        m_project.SetOptions(options);
    });
    return box;
}

QWidget *GaiEditorPage::MakeOptions()
{
    m_options = new CompactFrame(tr("Атрибуты GAI"), this);
    chkGAICR_HaveBg =
        NewOption("chkGAICR_HaveBg", tr("GAI файл требует фоновый GI-фрейм"),
                  tr("Анимация рисуется поверх картинки с тем же именем"), &GaiWriting::Background);
    chkGAICR_Packed = NewOption("chkGAICR_Packed", tr("Сжимать GI-фреймы"), tr("Файл займёт меньше места"),
                                &GaiWriting::Packed);
    chkGAICR_CropNull = NewOption("chkGAICR_CropNull", tr("Подрезать прозрачные пикселы по краям GI-фреймов"),
                                  tr("Кроме кадров типа 4"), &GaiWriting::Crop);
    auto *column = new QVBoxLayout(m_options);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    for (QCheckBox *option : {chkGAICR_HaveBg, chkGAICR_Packed, chkGAICR_CropNull})
        column->addWidget(option);
    return m_options;
}

QWidget *GaiEditorPage::MakeSide()
{
    const auto copyTip = [](const QString &what) { return tr("Дать %1 этого кадра всем кадрам").arg(what); };
    m_side = new QWidget(this);
    m_side->setFixedWidth(SideWidth);
    auto *column = new QVBoxLayout(m_side);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Gap);
    column->addWidget(
        MakeNumberFrame(tr("Рамка GAI"), {{GaiProject::StartX, "GAICR_StartX", QStringLiteral("X")},
                                          {GaiProject::StartY, "GAICR_StartY", QStringLiteral("Y")},
                                          {GaiProject::Width, "GAICR_Width", tr("Ширина")},
                                          {GaiProject::Height, "GAICR_Height", tr("Высота")}}));
    column->addWidget(MakeNumberFrame(
        tr("Координаты фрейма"),
        {{GaiProject::X, "GAICR_GI_StartX", QStringLiteral("X"), copyTip(QStringLiteral("X"))},
         {GaiProject::Y, "GAICR_GI_StartY", QStringLiteral("Y"), copyTip(QStringLiteral("Y"))},
         {GaiProject::Delay, "GAICR_GI_Delay", tr("Задержка"), copyTip(tr("задержку"))}}));
    column->addWidget(MakeTypeFrame());
    column->addStretch(1);
    return m_side;
}

QWidget *GaiEditorPage::MakeNumberFrame(const QString &title, std::initializer_list<Number> numbers)
{
    auto *frame = new CompactFrame(title, m_side);
    auto *grid = new QGridLayout(frame);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(6);
    grid->setVerticalSpacing(6);
    grid->setColumnMinimumWidth(0, CaptionWidth);
    for (const Number &number : numbers) {
        const int row = grid->count() / 2;
        grid->addWidget(new QLabel(number.caption, frame), row, 0);
        grid->addWidget(MakeNumber(number, frame), row, 1);
    }
    return frame;
}

NumberField *GaiEditorPage::MakeNumber(const Number &number, QWidget *frame)
{
    const GaiProject::Field field = number.field;
    auto *control =
        new NumberField(QLatin1String(number.name), number.caption, GaiProject::MaxValue, m_res, frame);
    m_numbers[field] = control;
    connect(control, &NumberField::Edited, this,
            [this, field](std::int32_t value) { m_project.SetValue(field, value); });
    connect(control, &NumberField::UpWanted, this, [this, field] {
        m_project.StepUp(field);
        Refresh();
    });
    connect(control, &NumberField::DownWanted, this, [this, field] {
        m_project.StepDown(field);
        Refresh();
    });
    if (!number.copyTip.isEmpty()) {
        control->AddCopyButton(number.copyTip);
        connect(control, &NumberField::CopyWanted, this, [this, field] { m_project.CopyToAll(field); });
    }
    return control;
}

QWidget *GaiEditorPage::MakeTypeFrame()
{
    optGAICR_GIType = new OptionFrame("optGAICR_GIType", tr("Тип GI-фрейма"),
                                      {tr("0 (16 или 32 бита)"), tr("1 (16 бит)"), tr("2 (16 бит, Альфа)"),
                                       tr("3 (16 бит, Индекс)"), tr("4 (32 бит, Индекс)")},
                                      1, m_side);
    cmdGAICR_GIType = NewButton("cmdGAICR_GIType", QStringLiteral("="),
                                tr("Дать этот тип всем кадрам, которым он подходит"));
    optGAICR_GIType->AddButton(cmdGAICR_GIType);
    return optGAICR_GIType;
}

void GaiEditorPage::ConnectControls()
{
    connect(m_list, &FrameListPane::AddWanted, this, [this] {
        AddFrom(UiText(TextPngAndGiFiles) + QStringLiteral(" (*.png, *.gi)|*.png;*.gi"),
                [this](const QStringList &paths) { AddFiles(paths); });
    });
    ConnectDrops(m_list, [this](const QStringList &paths) { AddDropped(paths); });
    ConnectList(m_list);
    ConnectOrder(m_list);
    connect(cmdGAICR_OpenGAI, &QPushButton::clicked, this, &GaiEditorPage::Open);
    connect(cmdGAICR_Clean, &QPushButton::clicked, this, [this] { Clean(); });
    connect(cmdGAICR_Compile, &QPushButton::clicked, this, &GaiEditorPage::Check);
    connect(cmdGAICR_SaveGAI, &QPushButton::clicked, this, &GaiEditorPage::Save);
    connect(optGAICR_GIType, &OptionFrame::Chosen, this, [this](int type) { m_project.SetGiType(type); });
    connect(cmdGAICR_GIType, &QPushButton::clicked, this, [this] { m_project.CopyTypeToAll(); });
}

void GaiEditorPage::Open()
{
    OpenFrom(GaiFilter(), UiText(TextReadingFrames), [this](const QString &path, const FrameStep &step) {
        const auto leftOut = m_project.Open(path, step);
        chkGAICR_HaveBg->setChecked(m_project.Options().Background);
        return leftOut;
    });
}

bool GaiEditorPage::Check()
{
    m_log.Show();
    m_log.Clean();
    const GaiErrors errors = m_project.Check();
    m_log.AddLine(errors.Text);
    return errors.Count == 0;
}

bool GaiEditorPage::Save()
{
    const Command command(*this);
    if (Check())
        m_log.Hide();
    else if (!m_dialogs.Warning(UiText(TextGaiHasErrors), UiText(TextErrors)))
        return false;
    return SaveTo(GaiFilter(), UiText(TextCreatingGiFrames),
                  [this](const QString &path, const FrameStep &step) { return m_project.Save(path, step); });
}

void GaiEditorPage::AddDropped(const QStringList &paths)
{
    if (!AddFiles(paths))
        m_dialogs.Information(UiText(TextSomeNotAdded), UiText(TextInformation));
}

bool GaiEditorPage::AddFiles(const QStringList &paths)
{
    return RunAdding([&](const FrameStep &step) { return m_project.AddFiles(paths, step); });
}

void GaiEditorPage::TakeFrames(std::span<const std::int32_t> handles, const QStringList &names)
{
    TakeCopies(handles, UiText(TextAddingFrames),
               [this, names](std::vector<FrameBuf> frames, const FrameStep &step) {
                   m_project.AddPictures(std::move(frames), names, step);
               });
}

void GaiEditorPage::TakeAnimation(std::span<const FrameBuf> frames, const QStringList &names,
                                  const std::function<void()> &taken)
{
    TakeCopies(
        frames.size(), [frames](std::size_t i) { return frames[i]; }, UiText(TextAddingFrames),
        [this, names, count = frames.size(), taken](std::vector<FrameBuf> copies, const FrameStep &step) {
            if (copies.empty())
                return;
            const bool hasAll = copies.size() == count;
            m_project.SetValue(GaiProject::Width, copies.front().Width);
            m_project.SetValue(GaiProject::Height, copies.front().Height);
            if (m_project.AddGis(std::move(copies), names, step) && hasAll)
                taken();
            chkGAICR_HaveBg->setChecked(true);
        });
}

void GaiEditorPage::ShowFrames()
{
    m_list->ShowFrames(m_project.List());
    ShowFrame();
}

void GaiEditorPage::ShowFrame()
{
    const FrameBuf *frame = m_project.List().CurrentFrame();
    m_preview->ShowPicture(frame != nullptr ? ComposedImage(*frame, m_settings.BackColor2) : QImage());
    Refresh();
}

void GaiEditorPage::Refresh()
{
    const FrameList &frames = m_project.List();
    const bool isFree = !m_project.IsBusy();
    const bool hasFrames = !frames.IsEmpty();
    const bool hasSeveral = frames.Count() > 1;
    for (QWidget *control :
         std::initializer_list<QWidget *>{m_list, cmdGAICR_OpenGAI, cmdGAICR_Clean, m_options, m_side})
        control->setEnabled(isFree);
    cmdGAICR_SaveGAI->setEnabled(isFree && hasFrames);
    cmdGAICR_Compile->setEnabled(isFree && hasFrames);
    m_preview->ShowPlace(frames.Count(), frames.Current(), !isFree);

    for (int i = 0; i < GaiProject::FieldCount; ++i) {
        const auto field = GaiProject::Field(i);
        m_numbers[field]->SetValue(m_project.Value(field));
        if (field < GaiProject::X)
            continue;
        m_numbers[field]->setEnabled(hasFrames);
        m_numbers[field]->SetCopyEnabled(hasSeveral);
    }
    for (int type = 0; type < optGAICR_GIType->Count(); ++type)
        optGAICR_GIType->EnableOption(type, m_project.CanChooseType(type));
    optGAICR_GIType->Check(hasFrames ? m_project.GiType() : 0);
    cmdGAICR_GIType->setEnabled(hasSeveral);
}

} // namespace wb
