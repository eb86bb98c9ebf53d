// The colours that a rule may choose; each desktop shows them in its own shades.
#pragma once

namespace vorlane {

enum class Color { accent, green, orange, red };

}  // namespace vorlane
