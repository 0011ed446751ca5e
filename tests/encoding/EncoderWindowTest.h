#pragma once

#include "Controls.h"
#include "QtPrinters.h"
#include "encoding/frmMP3Options.h"
#include "engines/MockMp3EncoderEngine.h"
#include "support/MockDialogs.h"
#include "support/controls/ComboBox.h"

#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

/// The MP3 encoder's window round a strict encoder and a strict dialog: what is not expected is not to be called.
class EncoderWindow : public ::testing::Test
{
protected:
    using Encoder = ::testing::StrictMock<MockMp3EncoderEngine>;

    EncoderWindow()
    {
        auto owned = std::make_unique<Encoder>();
        encoder = owned.get();
        window = std::make_unique<frmMP3Options>(std::move(owned), dialog);
    }

    static FileDialogAnswer answering(const QString& fileName)
    {
        FileDialogAnswer answer;
        answer.fileName = fileName;
        return answer;
    }

    void browse(const QString& fileName)
    {
        EXPECT_CALL(dialog, ShowOpen).WillOnce(::testing::Return(answering(fileName)));
        click("cmdBrowse");
    }

    /// To be called within a sequence.
    void expectEncoding(const QString& from, const QString& to)
    {
        EXPECT_CALL(*encoder, InputFile(from));
        EXPECT_CALL(*encoder, OutputFile(to));
        EXPECT_CALL(*encoder, Encode).WillOnce(::testing::Return(true));
    }

    void showOptions() const
    {
        window->show();
        click("cmdOptions");
        QApplication::processEvents();
    }

    void click(const char* button) const { control<QAbstractButton>(*window, button).click(); }
    ComboBox& list(const char* name) const { return control<ComboBox>(*window, name); }
    QString boxOf(const char* name) const { return control<QLineEdit>(*window, name).text(); }
    void edit(const char* name, const QString& text) const { control<QLineEdit>(*window, name).setText(text); }
    QString status() const { return control<QLabel>(*window, "Label8").text(); }
    int bar() const { return control<QWidget>(*window, "progress").property("Value").toInt(); }
    bool isEnabled(const char* name) const { return control<QWidget>(*window, name).isEnabled(); }

    QTimer& tmrFinish() const { return control<QTimer>(*window, "tmrFinish"); }
    void fireFinish() const { QMetaObject::invokeMethod(&tmrFinish(), "timeout"); }

    ::testing::StrictMock<MockCommonDialog> dialog;
    Encoder* encoder = nullptr;
    std::unique_ptr<frmMP3Options> window;
};
