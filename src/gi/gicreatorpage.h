// The "GI Editor" page: makes a GI of a picture, or gives a GI another place.
#pragma once

#include "gi/giproject.h"
#include "services/dialogs.h"
#include "services/settings.h"
#include "widgets/frmres.h"
#include "widgets/page.h"

#include <array>

class QCheckBox;
class QHBoxLayout;
class QLabel;
class QPushButton;

namespace wb
{

class NumberField;
class OptionFrame;
class PictureArea;

class GiCreatorPage : public Page
{
    Q_OBJECT

public:
    GiCreatorPage(Settings &settings, Dialogs &dialogs, const frmRes &res, QWidget *parent);

    void Redraw() override;
    bool IsBusy() const override { return m_project.IsBusy(); }
    void Release() override;

    // Loads a copy of a picture, known by the path of its file.
    void TakePicture(std::int32_t handle, const QString &path);

private:
    QWidget *MakeChoices();
    QWidget *MakePreview();
    QWidget *MakeCropFrame();
    void FillPlaceFrame();
    void AddStart(GiProject::Axis axis, const QString &letter, QHBoxLayout *row);

    void Open(const QString &filter, bool (GiProject::*open)(const QString &));
    void Clean();
    void CreateGi();
    void ChangeStart(GiProject::Axis axis, void (GiProject::*step)(GiProject::Axis));
    void ShowLoaded();
    void Refresh();
    void ShowView();

    Settings &m_settings;
    Dialogs &m_dialogs;
    const frmRes &m_res;
    GiProject m_project;

    QPushButton *cmdGICR_OpenPNG;
    QPushButton *cmdGICR_OpenGI;
    QPushButton *cmdGICR_Clean;
    QPushButton *cmdGICR_CreateGI;
    OptionFrame *optGICR_GIType;
    OptionFrame *optGICR_Color;
    OptionFrame *optGICR_Layer;
    QCheckBox *chkGICR_CropNull;
    QWidget *m_placeFrame;
    std::array<NumberField *, 2> m_start{}; // X, Y
    PictureArea *picGICR_Picture;
    QLabel *lblGICR_Info;
    QLabel *lblGICR_Size;
};

} // namespace wb
