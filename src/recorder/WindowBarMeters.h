#pragma once

#include "engines/RecorderEngine.h"

#include <QPointer>
#include <vector>

class LevelBar;

/// Draws the level bars of a recorder in its own window.
///
/// A bar whose place is that of a control in the window lies on that control: it goes where the layout moves the
/// control, is as wide, and has its name for screen readers. Any other stays where it was put.
///
/// The handles of bars that have gone with their window are not given again.
class WindowBarMeters : public RecorderBarMeters
{
public:
    WindowBarMeters();
    ~WindowBarMeters() override;

    int CreateBar(int parentWindow, int left, int top, int width, int height) override;
    void SetBarRange(const int& handle, int minimum, int maximum) override;
    void SetBarValue(const int& handle, int value) override;
    void GetBarSettings(const int& handle, BarSettings* settings) override;
    void SetBarSettings(const int& handle, const BarSettings* settings) override;

private:
    struct Bar
    {
        QPointer<LevelBar> control;
        BarSettings settings;
    };

    /// Null where there is no bar of this handle any more.
    LevelBar* barOf(int handle) const;

    /// The first has handle 1.
    std::vector<Bar> bars;
};
