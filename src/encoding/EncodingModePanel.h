#pragma once

#include <QWidget>
#include <memory>

class Mp3EncoderEngine;
namespace Ui {
class EncodingModePanel;
}

/// What becomes of the two sides of the sound.
///
/// A click on an option writes its index to the encoder, also on the one that is selected already: that is how a
/// user makes sure of the one that the panel begins with.
class EncodingModePanel : public QWidget
{
    Q_OBJECT

public:
    explicit EncodingModePanel(Mp3EncoderEngine& LameEncoderX1, QWidget* parent = nullptr);
    ~EncodingModePanel() override;

private:
    void optMode_Click(int index);

    Mp3EncoderEngine& LameEncoderX1;
    const std::unique_ptr<Ui::EncodingModePanel> ui;

    /// The option that the button or the key goes down on is selected already.
    bool pressedAgain = false;
};
