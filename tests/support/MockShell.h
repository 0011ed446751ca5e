#pragma once

#include "support/Shell.h"

#include <gmock/gmock.h>

class MockShell : public Shell
{
public:
    MOCK_METHOD(bool, canOpen, (const QString&), (const, override));
    MOCK_METHOD(bool, ShellExecute, (const QString&), (override));
};
