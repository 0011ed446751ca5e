#pragma once

#include <QObject>

/// Gives every picture of the program a source: icons come from the user's own theme by their freedesktop names,
/// and from Breeze where that theme has none. What the standard has no name for are drawings of the program's own,
/// named "larkspin-...". Light or dark pictures follow the palette, also while the program runs.
///
/// Made once, after the application and before the first window.
class IconTheme : public QObject
{
    Q_OBJECT

public:
    explicit IconTheme(QObject* parent = nullptr);

    bool eventFilter(QObject* watched, QEvent* event) override;
};
