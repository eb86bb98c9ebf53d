// The fuzz targets: each accepts any bytes and aborts if a requirement is violated.
#pragma once

#include "fuzz/Input.h"

namespace vorlane::fuzz {

void alerts(Input input);     // the alert engine alone, compared with a plain model
void reminders(Input input);  // the application model on a simulated laptop, compared likewise

void history(Input input);   // the text of the history file
void settings(Input input);  // the text of the settings file, and the store that uses it
void supplies(Input input);  // from the kernel's power supplies to the battery reading

// Arbitrary messages on the bus.
void upower(Input input);
void notifications(Input input);
void tray(Input input);

void windows(Input input);  // messages between the resident program and the windows process

}  // namespace vorlane::fuzz
