// The colours used in content. The renderer chooses the shades.
#pragma once

namespace vorlane {

enum class Color { accent, green, orange, red };

}  // namespace vorlane
