// What the desktop does for the program's windows.
#pragma once

#include <Qt>

class QWidget;

namespace wb
{

// Puts a shown top-level window above all others, or releases it; neither moves, sizes nor activates it.
void SetTopMost(QWidget &window, bool topMost);

// True while the window is the one the user works in.
bool IsForeground(const QWidget &window);

// Hands the move or resize of a top-level window, started by a mouse press, to the window manager. False when
// it offers no such thing.
bool StartWindowMove(QWidget &window);
bool StartWindowResize(QWidget &window, Qt::Edges edges);

// For a mouse button that was released over the window after all: a press and release too quick for the
// window manager to see would leave it moving the window until the next click.
void CancelWindowMove(const QWidget &window);

// Whether windows are shown with the transparency that they are painted with: on X11 while a compositor runs,
// elsewhere always.
bool IsComposited();

} // namespace wb
