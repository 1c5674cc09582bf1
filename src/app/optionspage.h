// The "Опции" page: every control writes its setting at once.
#pragma once

#include "services/dialogs.h"
#include "services/settings.h"
#include "widgets/page.h"

#include <vector>

class QCheckBox;
class QFormLayout;
class QGroupBox;
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
    // A box or a colour has another setting.
    void OptionsChanged();
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
    void AddScale(const char *name, const char *labelName, const QString &caption,
                  std::int32_t Settings::*field, QFormLayout *form);
    void ChooseColour(const Swatch &swatch);

    Settings &m_settings;
    Dialogs &m_dialogs;
    bool m_loading = false;
    std::vector<Check> m_checks;
    std::vector<Swatch> m_swatches;
    std::vector<Scale> m_scales;
};

} // namespace wb
