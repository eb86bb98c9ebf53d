#include "App/RingView.h"

#include <string>

namespace vorlane {

RingContent RingView::content() const
{
    return {.percent = percent, .color = color, .text = std::to_string(percent) + "%"};
}

}  // namespace vorlane
