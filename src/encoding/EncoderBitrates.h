#pragma once

class ComboBox;

/// Fills a list with the bitrates that an MP3 file can have, in kbit/s, and selects the usual one.
void offerBitrates(ComboBox& list);

/// What is selected in a list of numbers.
int chosenNumber(const ComboBox& list);
