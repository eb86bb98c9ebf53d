// How the display's compositor treats a window that is partly translucent.
#pragma once

class QWindow;

namespace vorlane::platform {

// Whether the compositor blends the window with what is behind it: always on Wayland; on X11 while
// a compositing manager runs.
bool isComposited();

// Whether an open popup receives the presses outside of it: not on Wayland.
bool canGrabPointer();

// Declares the outermost `margin` of the window as its shadow. On X11, a compositing manager that
// reads this adds no second shadow. On Wayland, except under sway, a press on the margin goes to
// the window behind. Call again after each resize.
void declareShadow(QWindow& window, int margin);

}  // namespace vorlane::platform
