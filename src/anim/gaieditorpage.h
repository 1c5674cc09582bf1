// The "GAI Editor" page: makes an animation of frames, or changes one.
#pragma once

#include "anim/gaiproject.h"
#include "services/dialogs.h"
#include "services/logwindow.h"
#include "services/settings.h"
#include "widgets/frmres.h"
#include "widgets/page.h"

#include <array>
#include <functional>
#include <initializer_list>
#include <span>

class QCheckBox;
class QGridLayout;
class QPushButton;

namespace wb
{

class FrameListPane;
class FramePreview;
class NumberField;
class OptionFrame;
enum UiTextIndex : int;

class GaiEditorPage : public Page
{
    Q_OBJECT

public:
    GaiEditorPage(Settings &settings, Dialogs &dialogs, LogWindow &log, const frmRes &res, QWidget *parent);

    void Redraw() override;
    bool IsBusy() const override { return m_project.IsBusy(); }
    void Abort() override { m_project.Stop(); }
    bool MayClose() override;
    void Release() override;

    // Adds copies of pictures, each under its name. No event runs meanwhile.
    void TakeFrames(std::span<const std::int32_t> handles, const QStringList &names);

private:
    struct Number;

    QPushButton *NewButton(const char *name, const QString &caption, const QString &tip);
    QCheckBox *NewOption(const char *name, const QString &caption, const QString &tip,
                         bool GaiWriting::*option);
    QWidget *MakeMiddle();
    QWidget *MakeSide();
    QWidget *MakeNumberFrame(const QString &title, std::initializer_list<Number> numbers);
    NumberField *MakeNumber(const Number &number, QWidget *frame);
    QWidget *MakeTypeFrame();
    void FillOptionFrame();
    void ConnectControls();

    void Open();
    bool Save();
    bool Check();
    void Clean();
    void AddFromDialog();
    void AddDropped(const QStringList &paths);
    bool AddFiles(const QStringList &paths);
    void RemoveFrame();

    void RunJob(UiTextIndex what, const std::function<void(const FrameStep &)> &job);
    QString ProposedPath() const;
    void ShowList();
    void ShowFrame();
    void Refresh();

    Settings &m_settings;
    Dialogs &m_dialogs;
    LogWindow &m_log;
    const frmRes &m_res;
    GaiProject m_project;

    FrameListPane *m_list;
    QPushButton *cmdGAICR_OpenGAI;
    QPushButton *cmdGAICR_Clean;
    QPushButton *cmdGAICR_Compile;
    QPushButton *cmdGAICR_SaveGAI;
    FramePreview *m_preview;
    QWidget *m_options;
    QCheckBox *chkGAICR_HaveBg;
    QCheckBox *chkGAICR_Packed;
    QCheckBox *chkGAICR_CropNull;
    QWidget *m_side;
    std::array<NumberField *, GaiProject::FieldCount> m_numbers{};
    OptionFrame *optGAICR_GIType = nullptr;
    QPushButton *cmdGAICR_GIType = nullptr;
};

} // namespace wb
