// What is fuzzed: each takes any bytes at all, and ends the process when something does not hold.
#pragma once

#include "fuzz/Input.h"

namespace vorlane::fuzz {

void alerts(Input input);     // the engine alone, against the rules said plainly
void reminders(Input input);  // the whole model on a laptop in memory, against the same

void history(Input input);   // the history file's text
void settings(Input input);  // the settings file: its text, and the store on it
void supplies(Input input);  // the kernel's power supplies, up to the reading of the battery

// On the bus, whatever anybody there says.
void upower(Input input);
void notifications(Input input);
void tray(Input input);

void windows(Input input);  // the messages between the program and its windows process

}  // namespace vorlane::fuzz
