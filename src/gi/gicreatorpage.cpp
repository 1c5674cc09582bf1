#include "gi/gicreatorpage.h"

#include "archive/pkgformat.h"
#include "common/files.h"
#include "common/paths.h"
#include "services/uitext.h"
#include "widgets/colour.h"
#include "widgets/dibimage.h"
#include "widgets/numberfield.h"
#include "widgets/optionframe.h"
#include "widgets/picturearea.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <initializer_list>

namespace wb
{

namespace
{

constexpr int ColumnWidth = 312;
constexpr int Gap = 12;

QPushButton *NewButton(const char *name, const QString &caption, const QString &tip, QWidget *parent)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(QLatin1String(name));
    button->setToolTip(tip);
    return button;
}

QString GiFilter()
{
    return UiText(TextGiFiles) + QStringLiteral(" (*.gi)|*.gi");
}

} // namespace

GiCreatorPage::GiCreatorPage(Settings &settings, Dialogs &dialogs, const frmRes &res, QWidget *parent)
    : Page(parent), m_settings(settings), m_dialogs(dialogs), m_res(res),
      cmdGICR_OpenPNG(NewButton("cmdGICR_OpenPNG", tr("Открыть PNG…"),
                                tr("Открыть картинку, из которой сделать GI"), this)),
      cmdGICR_OpenGI(NewButton("cmdGICR_OpenGI", tr("Открыть GI…"),
                               tr("Открыть GI, чтобы изменить его координаты"), this)),
      cmdGICR_Clean(NewButton("cmdGICR_Clean", tr("Очистить"), tr("Убрать картинку и начать заново"), this)),
      cmdGICR_CreateGI(NewButton("cmdGICR_CreateGI", tr("Создать GI…"), tr("Записать файл GI"), this)),
      optGICR_GIType(new OptionFrame("optGICR_GIType", tr("Тип GI-фрейма"),
                                     {tr("0 (16 или 32 бит)"), tr("1 (16 бит)"), tr("2 (16 бит, Альфа)"),
                                      tr("3 (16 бит, Индекс)"), tr("4 (32 бит, Индекс)"),
                                      QStringLiteral("5 (\?\?\?)"), QStringLiteral("6 (\?\?\?)")},
                                     1, this)),
      optGICR_Color(
          new OptionFrame("optGICR_Color", tr("Цвет"), {tr("16 бит (565)"), tr("32 бит (RGBA)")}, 2, this)),
      optGICR_Layer(new OptionFrame(
          "optGICR_Layer", tr("Показывать"),
          {tr("Общий вид"), tr("Первый слой"), tr("Второй слой"), tr("Третий слой")}, 2, this)),
      chkGICR_CropNull(new QCheckBox(tr("Обрезать пустые края"), this)),
      m_placeFrame(new CompactFrame(tr("Координаты фрейма"), this)),
      picGICR_Picture(
          new PictureArea(QStringLiteral("picGICR_Picture"), res.curOpenHand, res.curClosedHand, this)),
      lblGICR_Info(new QLabel(this)), lblGICR_Size(new QLabel(this))
{
    FillPlaceFrame();
    optGICR_Color->setToolTip(tr("Следует из типа и прозрачности картинки"));
    optGICR_Color->TakeNoFocus(); // it only tells
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(Gap, Gap, Gap, 10);
    row->setSpacing(Gap);
    row->addWidget(MakeChoices());
    row->addWidget(MakePreview(), 1);

    connect(cmdGICR_OpenPNG, &QPushButton::clicked, this,
            [this] { Open(UiText(TextPngFiles) + QStringLiteral(" (*.png)|*.png"), &GiProject::OpenPng); });
    connect(cmdGICR_OpenGI, &QPushButton::clicked, this, [this] { Open(GiFilter(), &GiProject::OpenGi); });
    connect(cmdGICR_CreateGI, &QPushButton::clicked, this, &GiCreatorPage::CreateGi);
    connect(cmdGICR_Clean, &QPushButton::clicked, this, &GiCreatorPage::Clean);
    connect(optGICR_GIType, &OptionFrame::Chosen, this, [this](int type) {
        m_project.SetGiType(type);
        Refresh();
    });
    connect(optGICR_Color, &OptionFrame::Chosen, this, &GiCreatorPage::Refresh);
    connect(optGICR_Layer, &OptionFrame::Chosen, this, &GiCreatorPage::ShowView);
    ShowLoaded();
}

QWidget *GiCreatorPage::MakeChoices()
{
    auto *side = new QWidget(this);
    side->setFixedWidth(ColumnWidth);
    auto *column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Gap);
    for (QWidget *frame : std::initializer_list<QWidget *>{optGICR_GIType, optGICR_Color, optGICR_Layer,
                                                           MakeCropFrame(), m_placeFrame})
        column->addWidget(frame);
    column->addStretch(1);
    return side;
}

QWidget *GiCreatorPage::MakePreview()
{
    auto *side = new QWidget(this);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(cmdGICR_OpenPNG);
    buttons->addWidget(cmdGICR_OpenGI);
    buttons->addWidget(cmdGICR_Clean);
    buttons->addStretch(1);
    buttons->addWidget(cmdGICR_CreateGI);
    cmdGICR_CreateGI->setProperty("primary", true);

    auto *texts = new QHBoxLayout;
    texts->setSpacing(Gap);
    texts->addWidget(lblGICR_Info, 1);
    texts->addWidget(lblGICR_Size);
    lblGICR_Info->setObjectName(QStringLiteral("lblGICR_Info"));
    lblGICR_Size->setObjectName(QStringLiteral("lblGICR_Size"));

    picGICR_Picture->setAcceptDrops(false);
    auto *column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addLayout(buttons);
    column->addWidget(picGICR_Picture, 1);
    column->addLayout(texts);
    return side;
}

QWidget *GiCreatorPage::MakeCropFrame()
{
    auto *frame = new CompactFrame(tr("Опции создания слоев"), this);
    chkGICR_CropNull->setObjectName(QStringLiteral("chkGICR_CropNull"));
    chkGICR_CropNull->setToolTip(tr("Каждый слой занимает только место своих видимых пикселей"));
    auto *column = new QVBoxLayout(frame);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(chkGICR_CropNull);
    return frame;
}

void GiCreatorPage::FillPlaceFrame()
{
    auto *row = new QHBoxLayout(m_placeFrame);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    AddStart(GiProject::X, QStringLiteral("X"), row);
    row->addSpacing(Gap);
    AddStart(GiProject::Y, QStringLiteral("Y"), row);
}

void GiCreatorPage::AddStart(GiProject::Axis axis, const QString &letter, QHBoxLayout *row)
{
    auto *field = new NumberField(QStringLiteral("GICR_Start") + letter, letter, GiProject::MaxStart, m_res,
                                  m_placeFrame);
    m_start[axis] = field;
    row->addWidget(new QLabel(letter, m_placeFrame));
    row->addSpacing(6);
    row->addWidget(field, 1);
    connect(field, &NumberField::Edited, this, [this, axis, field](std::int32_t value) {
        m_project.SetStart(axis, value);
        field->SetValue(m_project.Start(axis));
    });
    connect(field, &NumberField::UpWanted, this, [this, axis] { ChangeStart(axis, &GiProject::StepUp); });
    connect(field, &NumberField::DownWanted, this, [this, axis] { ChangeStart(axis, &GiProject::StepDown); });
}

void GiCreatorPage::ChangeStart(GiProject::Axis axis, void (GiProject::*step)(GiProject::Axis))
{
    (m_project.*step)(axis);
    m_start[axis]->SetValue(m_project.Start(axis));
}

void GiCreatorPage::Open(const QString &filter, bool (GiProject::*open)(const QString &))
{
    const QString path = m_dialogs.OpenFile(filter, m_settings.OpenDir);
    if (path.isEmpty())
        return;
    (m_project.*open)(path);
    m_settings.OpenDir = GetFolder(path);
    ShowLoaded();
}

void GiCreatorPage::TakePicture(std::int32_t handle, const QString &path)
{
    m_project.TakePicture(handle, path);
    ShowLoaded();
}

void GiCreatorPage::Clean()
{
    m_project.Clean();
    ShowLoaded();
}

void GiCreatorPage::Release()
{
    Clean();
}

void GiCreatorPage::CreateGi()
{
    if (m_project.IsBusy())
        return;
    // An entry of an archive may have a name that no file can have.
    const QString title = SafeEntryName(GetFileTitle(m_project.SourcePath()));
    const QString path = m_dialogs.SaveFile(GiFilter(), PathIn(m_settings.OpenDir, title));
    if (path.isEmpty() || !m_project.CanSave())
        return;
    if (m_project.SourceLoaded())
        lblGICR_Info->setText(UiText(TextCreatingGi));
    const ByteArray file = m_project.MakeFile(chkGICR_CropNull->isChecked(), [this] {
        Refresh();
        QCoreApplication::processEvents();
    });
    lblGICR_Info->clear();
    Refresh();
    if (!WriteFileBytes(path, file))
        m_dialogs.Error(FileErrorText(FileError::AccessError), GetFileName(path));
    m_settings.OpenDir = GetFolder(path);
    Q_EMIT Idle();
}

void GiCreatorPage::ShowLoaded()
{
    optGICR_Layer->Check(0);
    picGICR_Picture->ResetPlace();
    Refresh();
    ShowView();
}

void GiCreatorPage::Refresh()
{
    for (QWidget *control :
         std::initializer_list<QWidget *>{cmdGICR_CreateGI, cmdGICR_Clean, picGICR_Picture})
        control->setEnabled(m_project.CanSave());
    cmdGICR_OpenPNG->setEnabled(!m_project.IsBusy());
    cmdGICR_OpenGI->setEnabled(!m_project.IsBusy());
    chkGICR_CropNull->setEnabled(m_project.CanCrop());

    for (int i = 0; i < optGICR_GIType->Count(); ++i)
        optGICR_GIType->EnableOption(i, m_project.CanChooseType(i));
    // An opened GI may have a type that nobody knows.
    const std::int32_t type = m_project.GiType();
    optGICR_GIType->Check(type >= 0 && type < optGICR_GIType->Count() ? type : 0);

    optGICR_Color->setEnabled(m_project.CanPlace());
    optGICR_Color->Check(m_project.Colour());

    m_placeFrame->setEnabled(m_project.CanPlace());
    for (const GiProject::Axis axis : {GiProject::X, GiProject::Y})
        m_start[axis]->SetValue(m_project.Start(axis));

    for (int i = 0; i < GiProject::ViewCount; ++i)
        optGICR_Layer->EnableOption(i, m_project.CanShow(i));
    const int view = optGICR_Layer->Checked();
    if (view != 0 && !optGICR_Layer->IsOptionEnabled(view)) {
        optGICR_Layer->Check(0);
        ShowView();
    }
}

void GiCreatorPage::Redraw()
{
    picGICR_Picture->SetBackColour(ToQColor(m_settings.BackColor1));
    ShowView();
}

void GiCreatorPage::ShowView()
{
    const int view = optGICR_Layer->Checked();
    const QImage image = view == 0 ? ComposedImage(m_project.Picture(), m_settings.BackColor2)
                                   : ComposedImage(m_project.Layer(view), m_settings.BackColor2);
    if (!picGICR_Picture->Show(image, image.size()))
        picGICR_Picture->Clear();
    const bool isEmpty = m_project.Picture().Pixels.empty();
    lblGICR_Size->setText(
        isEmpty ? QStringLiteral("|")
                : QStringLiteral("|  %1 x %2").arg(m_project.SourceWidth()).arg(m_project.SourceHeight()));
}

} // namespace wb
