#include "gi/gicreatorpage.h"

#include "common/files.h"
#include "common/paths.h"
#include "services/uitext.h"
#include "widgets/colour.h"
#include "widgets/dibimage.h"
#include "widgets/digitbox.h"
#include "widgets/picturearea.h"
#include "widgets/picturebutton.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCoreApplication>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
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

// Five frames one below the other fit the smallest window.
QGroupBox *NewFrame(const QString &title, QWidget *parent)
{
    auto *frame = new QGroupBox(title, parent);
    frame->setProperty("compact", true);
    return frame;
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
      optGICR_GIType(MakeChoice("optGICR_GIType", tr("Тип GI-фрейма"),
                                {tr("0 (16 или 32 бит)"), tr("1 (16 бит)"), tr("2 (16 бит, Альфа)"),
                                 tr("3 (16 бит, Индекс)"), tr("4 (32 бит, Индекс)"),
                                 QStringLiteral("5 (\?\?\?)"), QStringLiteral("6 (\?\?\?)")},
                                1)),
      optGICR_Color(MakeChoice("optGICR_Color", tr("Цвет"), {tr("16 бит (565)"), tr("32 бит (RGBA)")}, 2)),
      optGICR_Layer(MakeChoice("optGICR_Layer", tr("Показывать"),
                               {tr("Общий вид"), tr("Первый слой"), tr("Второй слой"), tr("Третий слой")},
                               2)),
      chkGICR_CropNull(new QCheckBox(tr("Обрезать пустые края"), this)),
      m_placeFrame(NewFrame(tr("Координаты фрейма"), this)),
      picGICR_Picture(
          new PictureArea(QStringLiteral("picGICR_Picture"), res.curOpenHand, res.curClosedHand, this)),
      lblGICR_Info(new QLabel(this)), lblGICR_Size(new QLabel(this))
{
    FillPlaceFrame();
    optGICR_Color.Frame->setToolTip(tr("Следует из типа и прозрачности картинки"));
    for (QAbstractButton *colour : optGICR_Color.Options->buttons())
        colour->setFocusPolicy(Qt::NoFocus); // they only tell
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
    connect(optGICR_GIType.Options, &QButtonGroup::idClicked, this, [this](int type) {
        m_project.SetGiType(type);
        Refresh();
    });
    connect(optGICR_Color.Options, &QButtonGroup::idClicked, this, &GiCreatorPage::Refresh);
    connect(optGICR_Layer.Options, &QButtonGroup::idClicked, this, &GiCreatorPage::ShowView);
    ShowLoaded();
}

QWidget *GiCreatorPage::MakeChoices()
{
    auto *side = new QWidget(this);
    side->setFixedWidth(ColumnWidth);
    auto *column = new QVBoxLayout(side);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(Gap);
    for (QGroupBox *frame :
         {optGICR_GIType.Frame, optGICR_Color.Frame, optGICR_Layer.Frame, MakeCropFrame(), m_placeFrame})
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

GiCreatorPage::Choice GiCreatorPage::MakeChoice(const char *name, const QString &title,
                                                const QStringList &captions, int columns)
{
    auto *frame = NewFrame(title, this);
    auto *options = new QButtonGroup(frame);
    auto *grid = new QGridLayout(frame);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    for (int i = 0; i < captions.size(); ++i) {
        auto *option = new QRadioButton(captions[i], frame);
        option->setObjectName(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i));
        options->addButton(option, i);
        grid->addWidget(option, i / columns, i % columns);
    }
    return {frame, options};
}

QGroupBox *GiCreatorPage::MakeCropFrame()
{
    auto *frame = NewFrame(tr("Опции создания слоев"), this);
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
    const QString name = QStringLiteral("GICR_Start") + letter;
    auto *caption = new QLabel(letter, m_placeFrame);
    auto *box = new DigitBox(QStringLiteral("txt") + name, GiProject::MaxStart, m_placeFrame);
    box->setAccessibleName(letter);
    const QString button = QStringLiteral("cmd") + name;
    auto *down =
        new PictureButton(button + QStringLiteral("(1)"), m_res.imgMinus, tr("Уменьшить на 1"), m_placeFrame);
    auto *up =
        new PictureButton(button + QStringLiteral("(0)"), m_res.imgPlus, tr("Увеличить на 1"), m_placeFrame);
    txtGICR_Start[axis] = box;
    row->addWidget(caption);
    row->addSpacing(6);
    row->addWidget(box, 1);
    row->addWidget(down);
    row->addWidget(up);
    for (PictureButton *step : {down, up}) {
        step->setIconSize(QSize(16, 16));
        step->setAutoRepeat(true);
    }
    connect(box, &DigitBox::Edited, this,
            [this, axis](std::int32_t value) { m_project.SetStart(axis, value); });
    connect(up, &QToolButton::clicked, this, [this, axis] { ChangeStart(axis, &GiProject::StepUp); });
    connect(down, &QToolButton::clicked, this, [this, axis] { ChangeStart(axis, &GiProject::StepDown); });
}

void GiCreatorPage::ChangeStart(GiProject::Axis axis, void (GiProject::*step)(GiProject::Axis))
{
    (m_project.*step)(axis);
    txtGICR_Start[axis]->SetValue(m_project.Start(axis));
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
    const QString title = GetFileTitle(m_project.SourcePath());
    const QString &folder = m_settings.OpenDir;
    const QString path =
        m_dialogs.SaveFile(GiFilter(), folder.isEmpty() ? title : NormalizePath(folder + u'\\' + title));
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
    optGICR_Layer.Options->button(0)->setChecked(true);
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

    for (QAbstractButton *type : optGICR_GIType.Options->buttons())
        type->setEnabled(m_project.CanChooseType(optGICR_GIType.Options->id(type)));
    // An opened GI may have a type that nobody knows.
    QAbstractButton *type = optGICR_GIType.Options->button(m_project.GiType());
    (type != nullptr ? type : optGICR_GIType.Options->button(0))->setChecked(true);

    optGICR_Color.Frame->setEnabled(m_project.CanPlace());
    optGICR_Color.Options->button(m_project.Colour())->setChecked(true);

    m_placeFrame->setEnabled(m_project.CanPlace());
    for (const GiProject::Axis axis : {GiProject::X, GiProject::Y})
        txtGICR_Start[axis]->SetValue(m_project.Start(axis));

    const QButtonGroup &views = *optGICR_Layer.Options;
    for (QAbstractButton *view : views.buttons())
        view->setEnabled(m_project.CanShow(views.id(view)));
    if (views.checkedId() != 0 && !views.checkedButton()->isEnabled()) {
        views.button(0)->setChecked(true);
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
    const int view = optGICR_Layer.Options->checkedId();
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
