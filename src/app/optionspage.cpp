#include "app/optionspage.h"

#include "widgets/colourswatch.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QSlider>
#include <QVBoxLayout>

namespace wb
{

namespace
{

QFormLayout *NewForm(QGroupBox *group)
{
    auto *form = new QFormLayout(group);
    form->setContentsMargins(0, 0, 0, 0);
    form->setVerticalSpacing(12);
    form->setHorizontalSpacing(16);
    return form;
}

} // namespace

OptionsPage::OptionsPage(Settings &settings, Dialogs &dialogs, QWidget *parent)
    : Page(parent), m_settings(settings), m_dialogs(dialogs)
{
    auto *groups = new QGridLayout;
    groups->setSpacing(12);
    groups->addWidget(MakeViewGroup(), 0, 0);
    groups->addWidget(MakeColourGroup(), 0, 1);
    groups->addWidget(MakeAssociationGroup(), 1, 0);
    groups->addWidget(MakeScaleGroup(), 1, 1);
    groups->setColumnStretch(0, 1);
    groups->setColumnStretch(1, 1);

    // Lines of text and sliders stay readable on a wide screen.
    auto *content = new QWidget(this);
    content->setMaximumWidth(1100);
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(0, 0, 0, 0);
    column->addLayout(groups);
    column->addStretch(1);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(12, 12, 12, 12);
    row->addWidget(content, 1);
    row->addStretch(0);
}

QGroupBox *OptionsPage::MakeViewGroup()
{
    auto *group = new QGroupBox(tr("Просмотр"), this);
    auto *column = new QVBoxLayout(group);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(
        AddCheck("chkAutoPlayAnim", tr("Сразу воспроизводить анимацию"), &Settings::AutoPlayAnim, group));
    column->addWidget(
        AddCheck("chkAutoPlaySound", tr("Сразу воспроизводить звук"), &Settings::AutoPlaySound, group));
    column->addWidget(AddCheck("chkDrawStretch", tr("Уменьшать большие изображения до размера окна"),
                               &Settings::DrawStretch, group));
    column->addWidget(
        AddCheck("chkViewOnTop", tr("Окно предпросмотра поверх других окон"), &Settings::ViewOnTop, group));
    column->addWidget(AddCheck("chkViewDrawOnly", tr("Показывать кадр только в окне предпросмотра"),
                               &Settings::ViewDrawOnly, group));
    column->addWidget(AddCheck("chkAltGAIMethod", tr("Другой способ наложения кадров GAI"),
                               &Settings::AltGAIMethod, group));
    column->addStretch(1);
    return group;
}

QGroupBox *OptionsPage::MakeColourGroup()
{
    auto *group = new QGroupBox(tr("Цвета"), this);
    auto *form = NewForm(group);
    form->addRow(tr("Фон области просмотра"), AddSwatch("picBackColor1", &Settings::BackColor1, true, group));
    form->addRow(tr("Фон под изображением"), AddSwatch("picBackColor2", &Settings::BackColor2, true, group));
    form->addRow(tr("Цвет шрифтов AFT"), AddSwatch("lblAFTColor", &Settings::AFTColor, false, group));
    return group;
}

QGroupBox *OptionsPage::MakeScaleGroup()
{
    auto *group = new QGroupBox(tr("Звук и экспорт"), this);
    auto *form = NewForm(group);
    AddScale("sldVolume", "lblSoundVolume", tr("Громкость"), &Settings::SoundVolume, form);
    AddScale("sldJPEGQuality", "lblJPEGQuality", tr("Качество JPEG"), &Settings::JPEGQuality, form);
    return group;
}

QGroupBox *OptionsPage::MakeAssociationGroup()
{
    auto *group = new QGroupBox(tr("Открывать этой программой"), this);
    auto *column = new QVBoxLayout(group);
    column->setContentsMargins(0, 0, 0, 0);
    auto *row = new QHBoxLayout;
    row->setSpacing(18);
    column->addLayout(row);
    column->addStretch(1);
    row->addWidget(AddCheck("chkPKG", QStringLiteral("PKG"), &Settings::AssocPKG, group));
    row->addWidget(AddCheck("chkGI", QStringLiteral("GI"), &Settings::AssocGI, group));
    row->addWidget(AddCheck("chkGAI", QStringLiteral("GAI"), &Settings::AssocGAI, group));
    row->addWidget(AddCheck("chkHAI", QStringLiteral("HAI"), &Settings::AssocHAI, group));
    row->addWidget(AddCheck("chkAFT", QStringLiteral("AFT"), &Settings::AssocAFT, group));
    row->addStretch(1);
    return group;
}

QCheckBox *OptionsPage::AddCheck(const char *name, const QString &caption, bool Settings::*field,
                                 QWidget *parent)
{
    auto *box = new QCheckBox(caption, parent);
    box->setObjectName(QLatin1String(name));
    m_checks.push_back({box, field});
    connect(box, &QCheckBox::toggled, this, [this, field](bool on) {
        if (m_loading)
            return;
        m_settings.*field = on;
        Q_EMIT OptionsChanged();
    });
    return box;
}

ColourSwatch *OptionsPage::AddSwatch(const char *name, std::int32_t Settings::*field, bool behindPictures,
                                     QWidget *parent)
{
    auto *swatch = new ColourSwatch(QLatin1String(name), parent);
    const Swatch entry{swatch, field, behindPictures};
    m_swatches.push_back(entry);
    connect(swatch, &QAbstractButton::clicked, this, [this, entry] { ChooseColour(entry); });
    return swatch;
}

void OptionsPage::AddScale(const char *name, const char *labelName, const QString &caption,
                           std::int32_t Settings::*field, QFormLayout *form)
{
    auto *line = new QWidget;
    auto *slider = new QSlider(Qt::Horizontal, line);
    slider->setObjectName(QLatin1String(name));
    slider->setAccessibleName(caption);
    slider->setRange(0, 100);
    auto *label = new QLabel(QStringLiteral("0"), line);
    label->setObjectName(QLatin1String(labelName));
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QStringLiteral("000")));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto *row = new QHBoxLayout(line);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(slider, 1);
    row->addWidget(label);
    m_scales.push_back({slider, field});
    connect(slider, &QSlider::valueChanged, this, [this, label, field](int value) {
        label->setText(QString::number(value));
        if (!m_loading)
            m_settings.*field = value;
    });
    form->addRow(caption, line);
}

void OptionsPage::ChooseColour(const Swatch &swatch)
{
    const std::optional<std::int32_t> colour = m_dialogs.ChooseColour(m_settings.*swatch.field);
    if (!colour)
        return;
    m_settings.*swatch.field = *colour;
    swatch.swatch->SetColour(*colour);
    Q_EMIT OptionsChanged();
    if (swatch.behindPictures)
        Q_EMIT BackColoursChanged();
}

void OptionsPage::ApplySettings()
{
    m_loading = true;
    for (const Check &check : m_checks)
        check.box->setChecked(m_settings.*check.field);
    for (const Swatch &swatch : m_swatches)
        swatch.swatch->SetColour(m_settings.*swatch.field);
    for (const Scale &scale : m_scales)
        scale.slider->setValue(m_settings.*scale.field);
    m_loading = false;
}

} // namespace wb
