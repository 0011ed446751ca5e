#pragma once

#include <QDialog>
#include <memory>

class MsgBox;
namespace Ui {
class frmAbout;
}

/// Names the program and its version.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    explicit frmAbout(MsgBox& msgBox, QWidget* parent = nullptr);
    ~frmAbout() override;

private:
    /// There is no system information tool to start here, and the user is told so.
    void StartSysInfo();

    MsgBox& msgBox;
    const std::unique_ptr<Ui::frmAbout> ui;
};
