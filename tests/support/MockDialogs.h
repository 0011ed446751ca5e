#pragma once

#include "support/dialogs/BrowseForFolderModule.h"
#include "support/dialogs/CommonDialog.h"
#include "support/dialogs/MsgBox.h"

#include <gmock/gmock.h>

class MockMsgBox : public MsgBox
{
public:
    using MsgBox::show;
    MOCK_METHOD(void, show, (const QString& text, Look look, const QString& title), (override));
};

class MockCommonDialog : public CommonDialog
{
public:
    MOCK_METHOD(FileDialogAnswer, ShowOpen, (const FileDialogSetup& setup), (override));
    MOCK_METHOD(FileDialogAnswer, ShowSave, (const FileDialogSetup& setup), (override));
};

class MockBrowseForFolder : public BrowseForFolderModule
{
public:
    MOCK_METHOD(QString, BrowseForFolder, (QWidget & owner, const QString& startFolder), (override));
};
