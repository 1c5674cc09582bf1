// The "GAI Editor" page: makes an animation of frames, or changes one.
#pragma once

#include "anim/gaiproject.h"
#include "anim/projectpage.h"
#include "services/logwindow.h"

#include <array>
#include <initializer_list>
#include <span>

class QCheckBox;

namespace wb
{

class NumberField;
class OptionFrame;

class GaiEditorPage final : public ProjectPage<GaiProject>
{
    Q_OBJECT

public:
    GaiEditorPage(Settings &settings, Dialogs &dialogs, LogWindow &log, const frmRes &res, QWidget *parent);

    // Adds copies of pictures, each under its name, as soon as no command runs.
    void TakeFrames(std::span<const std::int32_t> handles, const QStringList &names);

    // Likewise adds the frames of an animation that is drawn over a background and gives the box their size.
    // Calls `taken` when all have been added.
    void TakeAnimation(std::span<const FrameBuf> frames, const QStringList &names,
                       const std::function<void()> &taken);

protected:
    bool Save() override;
    void ShowFrames() override;
    void ShowFrame() override;

private:
    struct Number;

    QCheckBox *NewOption(const char *name, const QString &caption, const QString &tip,
                         bool GaiWriting::*option);
    QWidget *MakeOptions();
    QWidget *MakeSide();
    QWidget *MakeNumberFrame(const QString &title, std::initializer_list<Number> numbers);
    NumberField *MakeNumber(const Number &number, QWidget *frame);
    QWidget *MakeTypeFrame();
    void ConnectControls();

    void Open();
    bool Check();
    void AddDropped(const QStringList &paths);
    bool AddFiles(const QStringList &paths);

    void Refresh();

    LogWindow &m_log;

    FrameListPane *m_list;
    QPushButton *cmdGAICR_OpenGAI;
    QPushButton *cmdGAICR_Clean;
    QPushButton *cmdGAICR_Compile;
    QPushButton *cmdGAICR_SaveGAI;
    QWidget *m_options = nullptr;
    QCheckBox *chkGAICR_HaveBg = nullptr;
    QCheckBox *chkGAICR_Packed = nullptr;
    QCheckBox *chkGAICR_CropNull = nullptr;
    QWidget *m_side = nullptr;
    std::array<NumberField *, GaiProject::FieldCount> m_numbers{};
    OptionFrame *optGAICR_GIType = nullptr;
    QPushButton *cmdGAICR_GIType = nullptr;
};

} // namespace wb
