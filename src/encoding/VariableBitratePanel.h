#pragma once

#include <QWidget>
#include <memory>

class Mp3EncoderEngine;
namespace Ui {
class VariableBitratePanel;
}

/// Whether the bitrate follows the sound, and within which bounds. Each change of the user's reaches the encoder at
/// once, and nothing else does: the lists may be set before the box is checked.
class VariableBitratePanel : public QWidget
{
    Q_OBJECT

public:
    explicit VariableBitratePanel(Mp3EncoderEngine& LameEncoderX1, QWidget* parent = nullptr);
    ~VariableBitratePanel() override;

private:
    void cmbVBRQuality_Click();
    void cmbMinVBRRate_Click();
    void cmbMaxVBRRate_Click();

    Mp3EncoderEngine& LameEncoderX1;
    const std::unique_ptr<Ui::VariableBitratePanel> ui;
};
