// Real numbers as text, with a point in every locale.
#pragma once

#include <string>

namespace vorlane {

// Rounded as printf rounds: to the nearest, of two equally near to the one that ends even.
std::string decimalText(double value, int places);

}  // namespace vorlane
