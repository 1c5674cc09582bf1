// The viewer's buttons that take frames elsewhere: to other pages, and into files.
#pragma once

#include "gfx/frameset.h"
#include "viewer/frameexport.h"
#include "widgets/frmres.h"

#include <QWidget>

#include <vector>

namespace wb
{

class PictureButton;

enum class FrameTarget { GiCreator, GaiEditor, HaiEditor, AnimCreator };

class ExportBar : public QWidget
{
    Q_OBJECT

public:
    static constexpr int ButtonGap = 2;
    static constexpr int GroupGap = 8; // besides those between buttons

    ExportBar(const frmRes &res, QWidget *parent);

    // Shows and enables what can be done with the document: nothing while the viewer is busy.
    void ShowDocument(const FrameSet &document, bool isBusy);

    // From left to right.
    QWidgetList Buttons() const;

Q_SIGNALS:
    // The current frame, or all of them.
    void CopyWanted(FrameTarget target, bool all);
    void SaveWanted(ExportFormat format);
    void SaveAllWanted();

private:
    struct Action {
        PictureButton *button;
        bool several; // takes all frames of several
        bool comes;   // into view with pictures; other buttons stay
    };

    PictureButton *Add(const char *name, const QIcon &picture, const QString &tip);

    std::vector<Action> m_actions;
};

} // namespace wb
