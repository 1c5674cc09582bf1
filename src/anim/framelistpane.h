// The list of an animation's frames with the buttons that add to it, take from it and order it. It shows a
// FrameList and changes nothing by itself.
#pragma once

#include "widgets/frmres.h"

#include <QWidget>

class QHBoxLayout;

namespace wb
{

class FrameList;
class ListBox;

class FrameListPane : public QWidget
{
    Q_OBJECT

public:
    // What its controls are called: the list, the buttons, and the two buttons (0) and (1) that move a frame
    // up and down; an empty name stands for no such buttons.
    struct Names {
        QString List;
        QString Add;
        QString Remove;
        QString Move;
    };

    FrameListPane(const Names &names, const frmRes &res, QWidget *parent);

    // Shows other frames, or the same in another order, and the line selected.
    void ShowFrames(const FrameList &frames);

    // Puts a further button behind the others, as far from them as there is room.
    void AddButton(QWidget *button);

    void FocusList();

    // Whether frames can be added, removed and moved.
    void SetChangeable(bool isChangeable);

Q_SIGNALS:
    void AddWanted();
    void RemoveWanted();
    void MoveWanted(int distance); // -1 up, 1 down
    // A line was selected, or the selected one clicked again.
    void LineSelected(int line);
    // In the order given. Comes when the program that they were dragged from has been answered.
    void FilesDropped(const QStringList &paths);

private:
    QWidget *MakeButtons(const Names &names, const frmRes &res);
    void AddMoveButtons(const QString &name, const frmRes &res);

    QWidget *m_bar = nullptr;
    QHBoxLayout *m_buttons = nullptr;
    ListBox *m_list;
};

} // namespace wb
