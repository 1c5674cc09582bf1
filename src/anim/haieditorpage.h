// The "HAI Editor" page: makes an animation of small indexed pictures, with a second list to take frames
// from.
#pragma once

#include "anim/haiproject.h"
#include "anim/projectpage.h"

#include <array>

namespace wb
{

class PictureArea;

class HaiEditorPage final : public ProjectPage<HaiProject>
{
    Q_OBJECT

public:
    HaiEditorPage(Settings &settings, Dialogs &dialogs, const frmRes &res, QWidget *parent);

    void Redraw() override;
    bool MayClose() override;
    // Adds copies of pictures to the animation, each under its name, as soon as no command runs.
    void TakeFrames(std::span<const std::int32_t> handles, const QStringList &names);

protected:
    bool Save() override;
    void ShowFrames() override;
    void ShowFrame() override;

private:
    struct CopyButton;

    FrameListPane *NewList(HaiProject::ListName list, const FrameListPane::Names &names);
    QWidget *MakeCopyButtons();
    QWidget *MakeStore();
    void ConnectControls();

    void Open();
    void AddFiles(HaiProject::ListName list, const QStringList &paths);
    void CopyAll(HaiProject::ListName from);

    // Asks before the frames of the second list are lost, which no command saves.
    bool MayLoseStore();

    std::array<FrameListPane *, 2> m_lists;
    QPushButton *cmdHAICR_OpenHAI;
    QPushButton *cmdHAICR_Clean;
    QPushButton *cmdHAICR_SaveHAI;
    QWidget *m_copies = nullptr;
    QWidget *m_store = nullptr;
    PictureArea *picHAICR_Picture2 = nullptr;
};

} // namespace wb
