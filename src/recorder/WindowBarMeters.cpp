#include "recorder/WindowBarMeters.h"

#include "support/controls/LevelBar.h"

#include <QVBoxLayout>

namespace {

std::uint32_t withBlueHigh(QRgb color)
{
    return static_cast<std::uint32_t>(qBlue(color) << 16 | qGreen(color) << 8 | qRed(color));
}

QRgb fromBlueHigh(std::uint32_t color)
{
    return qRgb(static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF),
                static_cast<int>(color >> 16 & 0xFF));
}

RecorderBarMeters::BarSettings settingsOf(const LevelBar::Colors& colors)
{
    RecorderBarMeters::BarSettings settings{};
    settings[RecorderBarMeters::BarMode] = 1;
    settings[RecorderBarMeters::LevelColor] = withBlueHigh(colors.level);
    settings[RecorderBarMeters::TopColor] = withBlueHigh(colors.top);
    settings[RecorderBarMeters::EmptyColor] = withBlueHigh(colors.empty);
    return settings;
}

QWidget* controlAt(const QRect& place, const QWidget& window)
{
    for (QWidget* control : window.findChildren<QWidget*>()) {
        if (!control->isWindow() && control->window() == &window &&
            QRect(control->mapTo(&window, QPoint(0, 0)), control->size()) == place)
            return control;
    }
    return nullptr;
}

// A reader would find both the control and the bar: one of them keeps the name.
void layOn(QWidget& control, LevelBar& bar)
{
    bar.setAccessibleName(control.accessibleName());
    control.setAccessibleName({});
    if (!control.layout()) {
        auto* whole = new QVBoxLayout(&control);
        whole->setContentsMargins(0, 0, 0, 0);
    }
    bar.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    control.layout()->addWidget(&bar);
}

}  // namespace

WindowBarMeters::WindowBarMeters() = default;
WindowBarMeters::~WindowBarMeters() = default;

int WindowBarMeters::CreateBar(int parentWindow, int left, int top, int width, int height)
{
    QWidget* window = QWidget::find(static_cast<WId>(static_cast<unsigned>(parentWindow)));
    if (!window)
        return 0;
    const QRect place(left, top, width, height);
    QWidget* under = controlAt(place, *window);
    auto* bar = new LevelBar(under ? under : window);
    if (under)
        layOn(*under, *bar);
    else
        bar->setGeometry(place);
    bar->show();
    bars.push_back({bar, settingsOf(bar->colors())});
    return static_cast<int>(bars.size());
}

void WindowBarMeters::SetBarRange(const int& handle, int minimum, int maximum)
{
    if (LevelBar* bar = barOf(handle))
        bar->SetBarRange(minimum, maximum);
}

void WindowBarMeters::SetBarValue(const int& handle, int value)
{
    if (LevelBar* bar = barOf(handle))
        bar->SetBarValue(value);
}

void WindowBarMeters::GetBarSettings(const int& handle, BarSettings* settings)
{
    if (barOf(handle))
        *settings = bars[static_cast<std::size_t>(handle) - 1].settings;
}

void WindowBarMeters::SetBarSettings(const int& handle, const BarSettings* settings)
{
    LevelBar* bar = barOf(handle);
    if (!bar)
        return;
    bars[static_cast<std::size_t>(handle) - 1].settings = *settings;
    bar->setColors({fromBlueHigh((*settings)[LevelColor]), fromBlueHigh((*settings)[TopColor]),
                    fromBlueHigh((*settings)[EmptyColor])});
}

LevelBar* WindowBarMeters::barOf(int handle) const
{
    const bool known = handle > 0 && static_cast<std::size_t>(handle) <= bars.size();
    return known ? bars[static_cast<std::size_t>(handle) - 1].control.data() : nullptr;
}
