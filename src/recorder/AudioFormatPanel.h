#pragma once

#include <QWidget>
#include <memory>

class ComboBox;
class RecorderEngine;
struct RecordingFormat;
namespace Ui {
class AudioFormatPanel;
}

/// In which format a recording is written.
///
/// The lists are the only store. Each selection reaches the engine at once, so that a recording is started by one
/// call; and since a list that is filled selects its usual item, some settings reach it twice, the first time with
/// what makes sense only when all lists are filled. The last values are the ones that hold.
class AudioFormatPanel : public QWidget
{
    Q_OBJECT

public:
    explicit AudioFormatPanel(RecorderEngine& Recorder, QWidget* parent = nullptr);
    ~AudioFormatPanel() override;

    /// Offers the formats and selects MP3. Once.
    void FillCodecCombo();

    /// For the save dialog, whose file types are in step with it.
    ComboBox& ComboCodec();

    /// Of the files that are named automatically, without its dot.
    QString extension() const;

private:
    void ComboCodec_Click();
    void ComboBitrate_Click();
    void ComboSamplerate_Click();
    void ComboChannel_Click();
    const RecordingFormat* chosenFormat() const;
    void writeFormat(const RecordingFormat& format);
    void writeBitrate(const RecordingFormat& format);

    RecorderEngine& Recorder;
    const std::unique_ptr<Ui::AudioFormatPanel> ui;
};
