#pragma once

#include <QString>

/// A text as a tool tip that shows it to the letter, also what looks like mark-up, in lines that fit the screen.
QString toolTipText(const QString& text);
