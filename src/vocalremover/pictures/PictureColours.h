#pragma once

#include <QColor>

class QByteArray;
class QPalette;

/// What the pictures are drawn with: colours of a window's palette and mixtures of them, so that they can be told
/// apart in light windows and in dark ones.
struct PictureColours
{
    explicit PictureColours(const QPalette& palette);

    QColor ground;
    QColor letters;
    QColor line;
    QColor faint;

    /// What takes part, and what does not.
    QColor accent;
    QColor muted;

    QColor knob;
    QColor rim;

    /// What a drawing shows a level in: one of the two above.
    QColor level;

    /// A drawing with var(--ground), var(--letters) and so on in these colours.
    QByteArray in(QByteArray drawing) const;
};
