#pragma once

#include "Controls.h"
#include "QtPrinters.h"
#include "engines/MockEditorEffects.h"
#include "engines/MockEditorEngine.h"
#include "engines/MockEncodeFormats.h"
#include "engines/MockEngineSet.h"
#include "engines/MockOutputMixer.h"
#include "engines/MockPlayerEngine.h"
#include "engines/MockRecorderEngine.h"
#include "engines/MockVocalRemoverEngine.h"
#include "support/MockDialogs.h"
#include "support/controls/Slider.h"
#include "vocalremover/HomeOfItsOwn.h"
#include "vocalremover/frmVocalRemover.h"

#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTimer>
#include <functional>

/// The vocal remover's window round strict engines and dialogs, with a home folder of its own.
///
/// The engines' done events come from the event loop, as the contracts say.
class VocalRemoverWindow : public ::testing::Test
{
protected:
    using Event = std::function<void()>;
    using Player = ::testing::StrictMock<MockPlayerEngine>;
    using Editor = ::testing::StrictMock<MockEditorEngine>;
    using Remover = ::testing::StrictMock<MockVocalRemoverEngine>;
    using ExtendedRemover = ::testing::StrictMock<MockVocalRemoverExtendedEngine>;

    VocalRemoverWindow()
        : window(new frmVocalRemover(makeEngines(), surroundings()))
        , alive(window)
    {
        EXPECT_CALL(*editor, Effects).WillRepeatedly(::testing::ReturnRef(effects));
        EXPECT_CALL(*editor, EncodeFormats).WillRepeatedly(::testing::ReturnRef(formats));
    }

    ~VocalRemoverWindow() override { delete alive.data(); }
    Q_DISABLE_COPY_MOVE(VocalRemoverWindow)

    VocalRemoverSurroundings surroundings()
    {
        return {dialog, msgBox, [this](int context) { helpContexts << context; }};
    }

    VocalRemoverEngines makeEngines()
    {
        using ::testing::ByMove;
        using ::testing::Return;
        auto itsPlayer = std::make_unique<Player>();
        auto itsEditor = std::make_unique<Editor>();
        auto itsRemover = std::make_unique<Remover>();
        auto itsExtended = std::make_unique<ExtendedRemover>();
        player = itsPlayer.get();
        editor = itsEditor.get();
        remover = itsRemover.get();
        extended = itsExtended.get();
        ::testing::StrictMock<MockEngineSet> set;
        EXPECT_CALL(set, createPlayer).WillOnce(Return(ByMove(std::move(itsPlayer))));
        EXPECT_CALL(set, createEditor).WillOnce(Return(ByMove(std::move(itsEditor))));
        EXPECT_CALL(set, createVocalRemover).WillOnce(Return(ByMove(std::move(itsRemover))));
        EXPECT_CALL(set, createVocalRemoverExtended).WillOnce(Return(ByMove(std::move(itsExtended))));
        return VocalRemoverEngines::from(set);
    }

    void load()
    {
        EXPECT_CALL(*player, InitPlayers);
        EXPECT_CALL(*editor, InitEditor);
        window->Load();
    }

    // --- files

    /// A real file that can be chosen as a source.
    QString makeSource(const QString& name = "song.mp3") const
    {
        const QString path = home.recordings() + u'/' + name;
        HomeOfItsOwn::write(path);
        return path;
    }

    QString outputOfSource(const QString& name = "songNoVocal.mp3") const
    {
        return home.recordings() + u'/' + name;
    }

    static FileDialogAnswer answering(const QString& fileName)
    {
        FileDialogAnswer answer;
        answer.fileName = fileName;
        return answer;
    }

    void expectMp3()
    {
        EXPECT_CALL(formats, FormatForExport(2));
        EXPECT_CALL(formats.mp3, Mode(1));
        EXPECT_CALL(formats.mp3, BitRate(128000));
    }

    void expectWav()
    {
        EXPECT_CALL(formats, FormatForExport(1));
        EXPECT_CALL(formats.wav, Mode(1));
    }

    /// Chooses a source of this length, in milliseconds, that stands at its beginning.
    void chooseSource(int duration = 200000)
    {
        source = makeSource();
        {
            const ::testing::InSequence order;
            EXPECT_CALL(dialog, ShowOpen).WillOnce(::testing::Return(answering(source)));
            expectMp3();
            EXPECT_CALL(*player, LoadSoundForExport(0, source)).WillOnce(::testing::Return(0));
            EXPECT_CALL(*player, GetDuration(0)).WillOnce(::testing::Return(duration));
            EXPECT_CALL(*player, GetPosition(0)).WillOnce(::testing::Return(0));
        }
        click("cmdInput");
    }

    // --- the steps of a run and of a preview. To be called within a sequence.

    void expectLoadedSource(int result = 0)
    {
        EXPECT_CALL(*player, CloseSound(0));
        EXPECT_CALL(*player, CloseSound(1));
        EXPECT_CALL(*player, GetPlayerStatus(0)).WillOnce(::testing::Return(3));
        EXPECT_CALL(*player, LoadSoundForExport(0, source)).WillOnce(::testing::Return(result));
    }

    /// Starts an export of which @p meanwhile runs before its end.
    void expectExport(int begin, int end, const Event& meanwhile = {})
    {
        EXPECT_CALL(*player, ExportSoundRange(0, home.in(), begin, end)).WillOnce([this, meanwhile] {
            return soon(meanwhile, [this] { emit player->ConversionDone(0, 1); });
        });
    }

    void expectWholeExport(const Event& meanwhile = {})
    {
        expectLoadedSource();
        EXPECT_CALL(*player, GetDuration(0)).WillOnce(::testing::Return(200000));
        expectExport(0, 200000, meanwhile);
        EXPECT_CALL(*player, CloseSound(0)).WillOnce([this] { EXPECT_LT(working, mostAtWork); });
    }

    template <typename AnyRemover>
    void expectSetUp(AnyRemover& engine, int low = 200, int high = 8000)
    {
        EXPECT_CALL(engine, LowCutOff(low));
        EXPECT_CALL(engine, HighCutOff(high));
        EXPECT_CALL(engine, InputFile(home.in()));
        EXPECT_CALL(engine, OutputFile(home.out()));
    }

    /// A removal out of whose percentages @p meanwhile is called from the event loop.
    void expectRemoval(const Event& meanwhile = {})
    {
        expectSetUp(*remover);
        EXPECT_CALL(*remover, RemoveVocals).WillOnce([this, meanwhile] { return removal(*remover, meanwhile); });
    }

    void expectExtendedRemoval(const Event& meanwhile = {})
    {
        expectSetUp(*extended);
        EXPECT_CALL(*extended, RemoveVocals).WillOnce([this, meanwhile] { return removal(*extended, meanwhile); });
    }

    VocalRemoval removal(VocalRemoverEngine& engine, const Event& meanwhile)
    {
        EXPECT_LT(working, mostAtWork);
        emit engine.ProcessPercent(0);
        if (meanwhile)
            QTimer::singleShot(0, &engine, meanwhile);
        emit engine.ProcessPercent(50);
        return VocalRemoval::Done;
    }

    void expectForgottenFiles()
    {
        EXPECT_CALL(*remover, InputFile(QString()));
        EXPECT_CALL(*remover, OutputFile(QString()));
    }

    void expectLoadedResult(const Event& meanwhile = {})
    {
        EXPECT_CALL(*editor, LoadSound(home.out())).WillOnce([this, meanwhile] {
            return soon(meanwhile, [this] { emit editor->LoadDone(0); });
        });
    }

    void expectGain(float percent, const Event& meanwhile = {}, int result = 0)
    {
        EXPECT_CALL(effects, ApplyGain(0, -1, 0, percent, 0)).WillOnce([this, meanwhile, result] {
            soon(meanwhile, [this, result] { emit editor->EffectDone(13, result); });
            return result;
        });
    }

    void expectExportedResult(const QString& path, const Event& meanwhile = {})
    {
        EXPECT_CALL(*editor, ExportToFile(44100, 2, 0, 0, -1, path)).WillOnce([this, meanwhile] {
            return soon(meanwhile, [this] { emit editor->ExportDone(0); });
        });
    }

    void expectSuccess()
    {
        EXPECT_CALL(*editor, CloseSound).WillOnce([this] { EXPECT_LT(working, mostAtWork); });
        EXPECT_CALL(msgBox, show(QString("Audio successfuly created."), MsgBox::Look::Information, QString()));
    }

    /// All of a run with the usual settings.
    void expectRun()
    {
        expectWholeExport();
        expectRemoval();
        expectForgottenFiles();
        expectLoadedResult();
        expectExportedResult(outputOfSource());
        expectSuccess();
    }

    void expectPlayedPreview()
    {
        EXPECT_CALL(*player, LoadSoundForExport(1, home.out())).WillOnce(::testing::Return(0));
        EXPECT_CALL(*player, PlaySound(1));
    }

    /// All of a preview with the usual settings, from the beginning of the source.
    void expectPreview()
    {
        expectLoadedSource();
        expectExport(0, 15000);
        expectExtendedRemoval();
        expectPlayedPreview();
    }

    void expectFailure(const char* text)
    {
        EXPECT_CALL(msgBox, show(QString(text), MsgBox::Look::Critical, QString()));
    }

    void expectGivenUp()
    {
        EXPECT_CALL(*remover, GiveUp);
        EXPECT_CALL(*extended, GiveUp);
    }

    /// From the event loop, first the one, then the other; 0 for a job that has been started.
    int soon(const Event& meanwhile, const Event& done)
    {
        ++working;
        EXPECT_LE(working, mostAtWork);
        QTimer::singleShot(0, window, [this, meanwhile, done] {
            if (meanwhile)
                meanwhile();
            QTimer::singleShot(0, window, [this, done] {
                --working;
                done();
            });
        });
        return 0;
    }

    // --- the window

    void click(const char* button) const { control<QAbstractButton>(*window, button).click(); }
    void put(const char* slider, int value) const { control<Slider>(*window, slider).setValue(value); }
    int valueOf(const char* slider) const { return control<Slider>(*window, slider).value(); }
    QString labelOf(const char* name) const { return control<QLabel>(*window, name).text(); }
    QString status() const { return labelOf("lblStatus"); }
    QString boxOf(const char* name) const { return control<QLineEdit>(*window, name).text(); }
    int percentDone() const { return control<QWidget>(*window, "prgPercentDone").property("Value").toInt(); }
    bool isEnabled(const char* name) const { return control<QWidget>(*window, name).isEnabled(); }

    /// That no run is under way shows in that one can be started.
    void expectIdle()
    {
        const ::testing::InSequence order;
        expectRun();
        click("cmdProcess");
    }

    const HomeOfItsOwn home;
    ::testing::StrictMock<MockCommonDialog> dialog;
    ::testing::StrictMock<MockMsgBox> msgBox;
    ::testing::StrictMock<MockEditorEffects> effects;
    ::testing::StrictMock<MockEncodeFormats> formats;
    QList<int> helpContexts;
    Player* player = nullptr;
    Editor* editor = nullptr;
    Remover* remover = nullptr;
    ExtendedRemover* extended = nullptr;
    frmVocalRemover* const window;

    /// The same, while it is there.
    const QPointer<QWidget> alive;

    QString source;

    /// Jobs of the player and the editor that have been started and not been reported done.
    int working = 0;

    /// What a test of one routine allows.
    int mostAtWork = 1;
};
