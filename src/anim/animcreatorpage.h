// The "Anim Creator" page: turns pictures that follow each other into frames that are drawn over the first.
#pragma once

#include "anim/animproject.h"
#include "anim/projectpage.h"

namespace wb
{

class AnimCreatorPage final : public ProjectPage<AnimProject>
{
    Q_OBJECT

public:
    AnimCreatorPage(Settings &settings, Dialogs &dialogs, const frmRes &res, QWidget *parent);

    // Adds copies of the pictures that have the size of the first, each under its name, as soon as no command
    // runs. The pictures are shown then.
    void TakeFrames(std::span<const std::int32_t> handles, const QStringList &names);

Q_SIGNALS:
    // The GAI editor should come forward and take these frames, which stay the creator's, under their names,
    // and call `taken` when it has them all.
    void GaiEditorWanted(std::span<const FrameBuf> frames, const QStringList &names,
                         const std::function<void()> &taken);

protected:
    bool Save() override; // builds the frames first
    void ShowFrames() override;
    void ShowFrame() override;

private:
    void ConnectControls();

    bool AddFiles(const QStringList &paths);
    void AddDropped(const QStringList &paths);
    void Generate();
    bool MayReplacePngs(const QString &path);
    void ToGai();
    void ShowUnshown();

    FrameListPane *m_list;
    QPushButton *cmdAnimCR_Gen;
    QPushButton *cmdAnimCR_Clean;
    QPushButton *cmdAnimCR_SavePNG;
    QPushButton *cmdAnimCR_AddGAI;
};

} // namespace wb
