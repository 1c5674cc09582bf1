// Lets a borderless window be resized by its edges.
#pragma once

#include <QObject>

class QWidget;
class QWindow;

namespace wb
{

// Watches the mouse of one top-level window: near an edge the pointer shows where it pulls, and a press hands
// the resize to the window manager.
class WindowEdges : public QObject
{
    Q_OBJECT

public:
    // `window` has its native window already.
    explicit WindowEdges(QWidget &window);
    ~WindowEdges() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    Qt::Edges EdgesAt(QPointF position) const;
    void ShowPointer(Qt::Edges edges);

    QWidget &m_window;
    Qt::Edges m_shown;
};

} // namespace wb
