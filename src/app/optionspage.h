// The "Опции" page: every control writes its setting at once.
#pragma once

#include "services/dialogs.h"
#include "services/settings.h"
#include "widgets/page.h"

#include <vector>

class QCheckBox;
class QGroupBox;
class QLabel;
class QSlider;

namespace wb
{

class ColourSwatch;

class OptionsPage : public Page
{
    Q_OBJECT

public:
    OptionsPage(Settings &settings, Dialogs &dialogs, QWidget *parent);

    void ApplySettings() override;

Q_SIGNALS:
    // A check box or a colour has changed; the settings hold the new value already.
    void SettingsChanged();
    // What pictures are drawn over has changed.
    void BackColoursChanged();

private:
    struct Check {
        QCheckBox *box;
        bool Settings::*field;
    };
    struct Swatch {
        ColourSwatch *swatch;
        std::int32_t Settings::*field;
        bool behindPictures;
    };
    struct Scale {
        QSlider *slider;
        std::int32_t Settings::*field;
    };

    QGroupBox *MakeViewGroup();
    QGroupBox *MakeColourGroup();
    QGroupBox *MakeScaleGroup();
    QGroupBox *MakeAssociationGroup();
    QCheckBox *AddCheck(const char *name, const QString &caption, bool Settings::*field, QWidget *parent);
    ColourSwatch *AddSwatch(const char *name, std::int32_t Settings::*field, bool behindPictures,
                            QWidget *parent);
    QWidget *AddScale(const char *name, const char *labelName, std::int32_t Settings::*field,
                      QWidget *parent);
    void ChooseColour(const Swatch &swatch);

    Settings &m_settings;
    Dialogs &m_dialogs;
    bool m_loading = false;
    std::vector<Check> m_checks;
    std::vector<Swatch> m_swatches;
    std::vector<Scale> m_scales;
};

} // namespace wb
