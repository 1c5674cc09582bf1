#include "viewer/exportbar.h"

#include "widgets/picturebutton.h"

#include <QHBoxLayout>

namespace wb
{

namespace
{

struct CopyButton {
    const char *name;
    QIcon frmRes::*picture;
    FrameTarget target;
    bool all;
    const char *tip;
};

constexpr CopyButton CopyButtons[] = {
    {"cmdCopyGICR", &frmRes::imgCopyGICR, FrameTarget::GiCreator, false, "Передать кадр в GI Editor (G)"},
    {"cmdCopyGAICR", &frmRes::imgCopyGAICR, FrameTarget::GaiEditor, false, "Передать кадр в GAI Editor (V)"},
    {"cmdCopyGAICRAll", &frmRes::imgCopyGAICRAll, FrameTarget::GaiEditor, true,
     "Передать все кадры в GAI Editor (B)"},
    {"cmdCopyHAICR", &frmRes::imgCopyHAICR, FrameTarget::HaiEditor, false, "Передать кадр в HAI Editor"},
    {"cmdCopyHAICRAll", &frmRes::imgCopyHAICRAll, FrameTarget::HaiEditor, true,
     "Передать все кадры в HAI Editor"},
    {"cmdCopyAnimCR", &frmRes::imgCopyAnimCR, FrameTarget::AnimCreator, false,
     "Передать кадр в Anim Creator (N)"},
    {"cmdCopyAnimCRAll", &frmRes::imgCopyAnimCRAll, FrameTarget::AnimCreator, true,
     "Передать все кадры в Anim Creator (M)"},
};

} // namespace

ExportBar::ExportBar(const frmRes &res, QWidget *parent) : QWidget(parent)
{
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(ButtonGap);
    for (const CopyButton &copy : CopyButtons) {
        PictureButton *button = Add(copy.name, res.*copy.picture, tr(copy.tip));
        m_actions.push_back({button, copy.all, true});
        button->hide();
        connect(button, &QToolButton::clicked, this,
                [this, copy] { Q_EMIT CopyWanted(copy.target, copy.all); });
    }
    row->addSpacing(GroupGap);
    auto *cmdSavePNG = Add("cmdSavePNG", res.imgSavePNG, tr("Сохранить кадр в PNG (S)"));
    auto *cmdSaveJPG = Add("cmdSaveJPG", res.imgSaveJPG, tr("Сохранить кадр в JPG (J)"));
    auto *cmdSaveAllPNG = Add("cmdSaveAllPNG", res.imgSaveAllPNG, tr("Сохранить все кадры в PNG (A)"));
    connect(cmdSavePNG, &QToolButton::clicked, this, [this] { Q_EMIT SaveWanted(ExportFormat::Png); });
    connect(cmdSaveJPG, &QToolButton::clicked, this, [this] { Q_EMIT SaveWanted(ExportFormat::Jpeg); });
    connect(cmdSaveAllPNG, &QToolButton::clicked, this, &ExportBar::SaveAllWanted);
    m_actions.insert(m_actions.end(),
                     {{cmdSavePNG, false, false}, {cmdSaveJPG, false, false}, {cmdSaveAllPNG, true, false}});
}

PictureButton *ExportBar::Add(const char *name, const QIcon &picture, const QString &tip)
{
    auto *button = new PictureButton(QLatin1String(name), picture, tip, this);
    layout()->addWidget(button);
    return button;
}

void ExportBar::ShowDocument(const FrameSet &document, bool isBusy)
{
    const bool pictures = document.Mode == DocumentMode::Pictures && document.Count > 0;
    for (const Action &action : m_actions) {
        action.button->setEnabled(pictures && !isBusy && (!action.several || document.Count > 1));
        if (action.comes)
            action.button->setVisible(pictures);
    }
}

QWidgetList ExportBar::Buttons() const
{
    QWidgetList buttons;
    for (const Action &action : m_actions)
        buttons << action.button;
    return buttons;
}

} // namespace wb
