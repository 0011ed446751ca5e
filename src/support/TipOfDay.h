#pragma once

#include <QDialog>
#include <cstdint>
#include <memory>

class SettingsStore;
namespace Ui {
class TipOfDay;
}

/// Where the tips have got to. The program keeps one for as long as it runs and lends it to each tip window, so
/// that the next window goes on with the next tip.
struct TipPlace
{
    std::uint8_t number = 0;
};

/// Shows a hint at each start of the program, and the next ones for who asks.
///
/// Whether it is wanted is kept in the settings, "Show Tips at Startup"; its check box writes there at once.
class TipOfDay : public QDialog
{
    Q_OBJECT

public:
    /// The settings and the place outlive the window.
    TipOfDay(SettingsStore& settings, TipPlace& place, QWidget* parent = nullptr);
    ~TipOfDay() override;

    /// Whether tips are to be shown at the start of the program.
    static bool wantedAtStartup(const SettingsStore& settings);

    /// Returns at once, without the window having been seen, where the settings say 0.
    int exec() override;

private:
    void Load();
    void makeRoomForAllTips();
    void chkLoadTipsAtStartup_Click();
    void MyButton1_Click();

    SettingsStore& settings;
    TipPlace& place;
    const std::unique_ptr<Ui::TipOfDay> ui;
    bool hidden = false;
};
