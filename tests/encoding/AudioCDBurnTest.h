#pragma once

#include "Controls.h"
#include "QtPrinters.h"
#include "encoding/TrackListView.h"
#include "encoding/frmAudioCDBurn.h"
#include "engines/MockDiscEngine.h"
#include "support/MockDialogs.h"
#include "support/controls/ComboBox.h"
#include "support/controls/XP_ProgressBar.h"

#include <gtest/gtest.h>
#include <QCheckBox>
#include <QLabel>
#include <QPointer>
#include <QToolButton>
#include <string>
#include <vector>

/// A track as a project tells it.
struct ToldTrack
{
    QString file;
    int format = AudioProject::Wav;
    qint64 sectors = 0;
};

/// The audio CD writer's window round a strict engine of two devices: a drive with protection against underruns and
/// three speeds, and an image without either.
class AudioCDBurn : public ::testing::Test
{
protected:
    using Device = ::testing::StrictMock<MockDiscDevice>;
    using Project = ::testing::StrictMock<MockAudioProject>;
    using Engine = ::testing::StrictMock<MockDiscEngine>;

    AudioCDBurn()
        : window(new frmAudioCDBurn(makeEngine(), DiscSurroundings{dialog, msgBox}))
        , alive(window)
    {
    }

    ~AudioCDBurn() override { delete alive.data(); }
    Q_DISABLE_COPY_MOVE(AudioCDBurn)

    std::unique_ptr<DiscEngine> makeEngine()
    {
        auto made = std::make_unique<Engine>();
        engine = made.get();
        return made;
    }

    // --- what the engine is asked. To be called within a sequence.

    void expectDeviceList()
    {
        EXPECT_CALL(*engine, GetDeviceCount).WillOnce(::testing::Return(2));
        EXPECT_CALL(*engine, GetDevice(0)).WillOnce(::testing::Return(&drive));
        EXPECT_CALL(drive, IsDeviceUsable).WillOnce(::testing::Return(true));
        EXPECT_CALL(drive, GetDeviceName).WillOnce(::testing::Return("Drive"));
        EXPECT_CALL(*engine, GetDevice(1)).WillOnce(::testing::Return(&image));
        EXPECT_CALL(image, IsDeviceUsable).WillOnce(::testing::Return(true));
        EXPECT_CALL(image, GetDeviceName).WillOnce(::testing::Return("Disc image"));
    }

    void expectSpeed(short index, int code, double rate)
    {
        EXPECT_CALL(drive, GetWriteSpeedCode(index)).WillOnce(::testing::Return(code));
        EXPECT_CALL(drive, GetWriteSpeedRate(code)).WillOnce(::testing::Return(rate));
    }

    void expectDriveIsPicked()
    {
        EXPECT_CALL(*engine, GetDevice(0)).WillOnce(::testing::Return(&drive));
        EXPECT_CALL(drive, RefreshDisc(0));
        EXPECT_CALL(drive, GetWriteSpeedCount).WillOnce(::testing::Return(3));
        expectSpeed(0, 706, 4.0);
        expectSpeed(1, 1411, 8.04);
        expectSpeed(2, 88, 0.5);
        EXPECT_CALL(drive, GetCapability(57)).WillOnce(::testing::Return(true));
        expectDiscInfo(drive);
    }

    void expectImageIsPicked()
    {
        EXPECT_CALL(*engine, GetDevice(1)).WillOnce(::testing::Return(&image));
        EXPECT_CALL(image, RefreshDisc(0));
        EXPECT_CALL(image, GetWriteSpeedCount).WillOnce(::testing::Return(0));
        EXPECT_CALL(image, GetCapability(57)).WillOnce(::testing::Return(false));
        expectDiscInfo(image);
    }

    /// @p count tracks that need @p required sectors of @p free ones.
    void expectDiscInfo(Device& device, int count = 0, qint64 required = 0, qint64 free = 359850)
    {
        EXPECT_CALL(device, RefreshDisc(0));
        EXPECT_CALL(project, GetRequiredSpace).WillOnce(::testing::Return(required));
        EXPECT_CALL(device, GetFreeSpace(0)).WillOnce(::testing::Return(free));
        EXPECT_CALL(project, GetTrackCount).WillOnce(::testing::Return(count));
    }

    void expectRefreshedList(const std::vector<ToldTrack>& told)
    {
        EXPECT_CALL(project, GetTrackCount).WillOnce(::testing::Return(static_cast<int>(told.size())));
        int position = 1;
        for (const ToldTrack& track : told) {
            EXPECT_CALL(project, GetTrackFile(position)).WillOnce(::testing::Return(track.file));
            EXPECT_CALL(project, GetTrackFormat(position)).WillOnce(::testing::Return(track.format));
            EXPECT_CALL(project, GetTrackLength(position)).WillOnce(::testing::Return(track.sectors));
            ++position;
        }
        expectDiscInfo(drive, static_cast<int>(told.size()));
    }

    void expectAddedTrack(const QString& file, int position, bool ok = true)
    {
        EXPECT_CALL(project, AddTrack(file, position, ::testing::_)).WillOnce(::testing::SetArgReferee<2>(ok));
    }

    void expectBox(const QString& text, MsgBox::Look look = MsgBox::Look::Information)
    {
        EXPECT_CALL(msgBox, show(text, look, QString()));
    }

    void expectOpening()
    {
        EXPECT_CALL(*engine, InitDevices(false)).WillOnce(::testing::Return(true));
        EXPECT_CALL(*engine, GetAudioProject).WillOnce(::testing::Return(&project));
        expectDeviceList();
        expectDriveIsPicked();
        EXPECT_CALL(drive, GetCapability(57)).WillOnce(::testing::Return(true));
    }

    // --- what the window has done

    void load()
    {
        const ::testing::InSequence order;
        expectOpening();
        window->Load();
    }

    static FileDialogAnswer answering(const QString& fileName)
    {
        FileDialogAnswer answer;
        answer.fileName = fileName;
        return answer;
    }

    /// Puts these tracks into the list.
    void list(const std::vector<ToldTrack>& told)
    {
        const ::testing::InSequence order;
        EXPECT_CALL(dialog, ShowOpen).WillOnce(::testing::Return(answering("/music/one.wav")));
        expectAddedTrack("/music/one.wav", 1);
        expectRefreshedList(told);
        click("cmdAddTrack");
    }

    void expectBlankDisc()
    {
        EXPECT_CALL(drive, RefreshDisc(0));
        EXPECT_CALL(drive, GetDiscInfo).WillOnce(::testing::Return(DiscInfo(true, true, 0)));
    }

    void expectSpaces(qint64 free, qint64 required)
    {
        EXPECT_CALL(drive, GetFreeSpace(0)).WillOnce(::testing::Return(free));
        EXPECT_CALL(project, GetRequiredSpace).WillOnce(::testing::Return(required));
    }

    /// What the project is told with the window as it opens.
    void expectUsualSettings()
    {
        EXPECT_CALL(project, SetProjectKind(1));
        EXPECT_CALL(project, SetWriteSpeed(706));
        EXPECT_CALL(project, SetCacheFiles(true));
        EXPECT_CALL(project, SetTestMode(false));
        EXPECT_CALL(project, SetBurnProof(true));
        EXPECT_CALL(project, SetWriteMode(2));
    }

    void expectStart(bool ok)
    {
        EXPECT_CALL(project, StartWrite(&drive, ::testing::_)).WillOnce(::testing::SetArgReferee<1>(ok));
    }

    void startWriting()
    {
        const ::testing::InSequence order;
        expectBlankDisc();
        expectSpaces(1000, 10);
        expectUsualSettings();
        expectStart(true);
        click("cmdWriteDisc");
    }

    void expectIdleAgain() { EXPECT_CALL(drive, GetCapability(57)).WillOnce(::testing::Return(true)); }

    void tell(DiscStage stage, int total = 0, int track = 0, int percent = 0) const
    {
        emit engine->WriteProgress(total, track, percent, stage);
    }

    // --- the window

    void click(const char* button) const { control<QToolButton>(*window, button).click(); }
    QString labelOf(const char* name) const { return control<QLabel>(*window, name).text(); }
    QString status() const { return labelOf("lblStatus"); }
    int valueOf(const char* bar) const { return control<XP_ProgressBar>(*window, bar).Value(); }
    bool isEnabled(const char* name) const { return control<QWidget>(*window, name).isEnabled(); }
    ComboBox& combo(const char* name) const { return control<ComboBox>(*window, name); }
    QCheckBox& box(const char* name) const { return control<QCheckBox>(*window, name); }
    TrackListView& tracks() const { return control<TrackListView>(*window, "lvwAudioTracks"); }
    bool showsHourglass() const { return window->cursor().shape() == Qt::WaitCursor; }

    QStringList itemsOf(const char* name) const
    {
        QStringList items;
        for (int i = 0; i < combo(name).count(); ++i)
            items << combo(name).itemText(i);
        return items;
    }

    /// The rows, a text each, with bars between the columns.
    QStringList rows() const
    {
        QStringList shown;
        for (int row = 0; row < tracks().topLevelItemCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < tracks().columnCount(); ++column)
                cells << tracks().topLevelItem(row)->text(column);
            shown << cells.join(u'|');
        }
        return shown;
    }

    /// Selects the row of this number, from 1.
    void select(int row) const { tracks().setCurrentItem(tracks().topLevelItem(row - 1)); }

    void expectIdle() const
    {
        for (const char* name : {"cboDevices", "cboWriteSpeed", "lvwAudioTracks", "cmdWriteDisc", "chkCacheFiles",
                                 "chkTestWrite", "chkDiscAtOnce", "chkUseBurnProof", "cmdAddTrack", "cmdMoveDown",
                                 "cmdMoveFirst", "cmdMoveLast", "cmdMoveUp", "cmdRemoveTrack"})
            EXPECT_TRUE(isEnabled(name)) << name;
        EXPECT_FALSE(isEnabled("cmdCancel"));
        EXPECT_FALSE(showsHourglass());
    }

    void expectWriting() const
    {
        for (const char* name : {"cboDevices", "cboWriteSpeed", "lvwAudioTracks", "cmdWriteDisc", "chkCacheFiles",
                                 "chkTestWrite", "chkDiscAtOnce", "chkUseBurnProof", "cmdAddTrack", "cmdMoveDown",
                                 "cmdMoveFirst", "cmdMoveLast", "cmdMoveUp", "cmdRemoveTrack"})
            EXPECT_FALSE(isEnabled(name)) << name;
        EXPECT_TRUE(isEnabled("cmdCancel"));
        EXPECT_TRUE(showsHourglass());
    }

    ::testing::StrictMock<MockCommonDialog> dialog;
    ::testing::StrictMock<MockMsgBox> msgBox;
    Device drive;
    Device image;
    Project project;
    Engine* engine = nullptr;
    frmAudioCDBurn* const window;

    /// The same, while it is there.
    const QPointer<QWidget> alive;
};
