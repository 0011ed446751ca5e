#pragma once

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
