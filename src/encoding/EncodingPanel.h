#pragma once

#include <QWidget>
#include <memory>

class CommonDialog;
class Mp3EncoderEngine;
class QTimer;
class QToolButton;
namespace Ui {
class EncodingPanel;
}

/// Chooses the file to encode and names the one that it becomes, starts the encoding, and tells how far it is.
///
/// The names go to the encoder as they stand in their boxes, where they may be edited. Nothing is disabled while an
/// encoding runs: one that is started meanwhile is the encoder's to queue. That an encoding failed shows in nothing
/// but that the bar stays where it is.
class EncodingPanel : public QWidget
{
    Q_OBJECT

public:
    /// The encoder and the dialog outlive the panel's use.
    EncodingPanel(Mp3EncoderEngine& LameEncoderX1, CommonDialog& CommonDialog1, QWidget* parent = nullptr);
    ~EncodingPanel() override;

    /// Puts the keyboard where the work begins.
    void focusOnBrowse();

    /// What it does is the window's.
    QToolButton& cmdOptions();

private:
    void cmdBrowse_Click();
    void cmdEncode_Click();
    void LameEncoderX1_EncodePercent(int percent);
    void tmrFinish_Timer();

    Mp3EncoderEngine& LameEncoderX1;
    CommonDialog& CommonDialog1;
    const std::unique_ptr<Ui::EncodingPanel> ui;
    QTimer* const tmrFinish;

    /// The name that the dialog holds from one opening to the next.
    QString dialogsFileName;

    int LastPercent = 0;
};
