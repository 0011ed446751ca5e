#pragma once

#include <QWidget>
#include <memory>

class Mp3EncoderEngine;
namespace Ui {
class BitratePanel;
}

/// How many bits a second of the sound may take, and how much of the processor the encoding may have. Each pick of
/// the user's reaches the encoder at once, and nothing else does.
class BitratePanel : public QWidget
{
    Q_OBJECT

public:
    explicit BitratePanel(Mp3EncoderEngine& LameEncoderX1, QWidget* parent = nullptr);
    ~BitratePanel() override;

private:
    void cmbBitrate_Click();
    void cmbPriority_Click();

    Mp3EncoderEngine& LameEncoderX1;
    const std::unique_ptr<Ui::BitratePanel> ui;
};
