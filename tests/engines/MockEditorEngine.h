#pragma once

#include "engines/EditorEngine.h"

#include <gmock/gmock.h>

class MockEditorEngine : public EditorEngine
{
public:
    MOCK_METHOD(void, InitEditor, (int owner), (override));
    MOCK_METHOD(int, LoadSound, (const QString& path), (override));
    MOCK_METHOD(int, ExportToFile, (int frequency, int channels, int zero, int start, int end, const QString& path),
                (override));
    MOCK_METHOD(void, CloseSound, (), (override));
    MOCK_METHOD(int, LastError, (), (const, override));
    MOCK_METHOD(EditorEffects&, Effects, (), (override));
    MOCK_METHOD(::EncodeFormats&, EncodeFormats, (), (override));
};
