// What the display's compositor does with a window that is partly translucent.
#pragma once

class QWindow;

namespace vorlane::platform {

// Whether it blends the window with what is behind it: always on Wayland; on X11 while a
// compositing manager runs.
bool isComposited();

// Says that the outermost `margin` of the window is its shadow, so that on X11 no other one need be
// added, and on Wayland, except under sway, a press there goes to what is behind. To be called at
// each new size.
void declareShadow(QWindow& window, int margin);

}  // namespace vorlane::platform
