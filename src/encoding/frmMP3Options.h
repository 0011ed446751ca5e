#pragma once

#include <QDialog>
#include <memory>

class BitratePanel;
class CommonDialog;
class EncodingModePanel;
class EncodingPanel;
class MiscPropertiesPanel;
class Mp3EncoderEngine;
class VariableBitratePanel;
namespace Ui {
class frmMP3Options;
}

/// The MP3 encoder: makes one MP3 file of one WAV or RAW file.
///
/// It composes: a panel for the files and the progress, and below it, shown or hidden, a panel each for the groups
/// of options. Each option is a property of the encoder and is written the moment the user changes it. Until then
/// the encoder's own default holds, which the window takes to be what it shows; nothing is written at its opening.
///
/// Closing it is never refused and saves nothing: an encoding that runs is given up with the encoder, and that goes
/// with the window. Escape does not close it, for an encoding takes minutes.
class frmMP3Options : public QDialog
{
    Q_OBJECT

public:
    /// The dialog outlives the window.
    frmMP3Options(std::unique_ptr<Mp3EncoderEngine> encoder, CommonDialog& dialog, QWidget* parent = nullptr);
    ~frmMP3Options() override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void placePanels();
    void orderTabs();
    void cmdOptions_Click();
    QSize sizeOfAll(const QSize& room) const;
    void setHeight(int wanted);

    const std::unique_ptr<Mp3EncoderEngine> LameEncoderX1;
    const std::unique_ptr<Ui::frmMP3Options> ui;
    EncodingPanel* const encoding;
    EncodingModePanel* const mode;
    BitratePanel* const bitrate;
    VariableBitratePanel* const variableBitrate;
    MiscPropertiesPanel* const misc;
    bool OptionsShown = false;
};
