#pragma once

#include "engines/AudioProject.h"
#include "engines/DiscDevice.h"
#include "engines/DiscEngine.h"

#include <gmock/gmock.h>

class MockDiscDevice : public DiscDevice
{
public:
    MOCK_METHOD(QString, GetDeviceName, (), (override));
    MOCK_METHOD(bool, GetCapability, (int code), (override));
    MOCK_METHOD(bool, IsDeviceUsable, (), (override));
    MOCK_METHOD(short, GetWriteSpeedCount, (), (override));
    MOCK_METHOD(int, GetWriteSpeedCode, (short index), (override));
    MOCK_METHOD(double, GetWriteSpeedRate, (int code), (override));
    MOCK_METHOD(void, ReleaseDisc, (bool), (override));
    MOCK_METHOD(void, RefreshDisc, (int), (override));
    MOCK_METHOD(DiscInfo, GetDiscInfo, (), (override));
    MOCK_METHOD(qint64, GetFreeSpace, (int), (override));
};

class MockAudioProject : public AudioProject
{
public:
    MOCK_METHOD(void, SetWriteMode, (int mode), (override));
    MOCK_METHOD(void, SetWriteSpeed, (int code), (override));
    MOCK_METHOD(bool, GetTestMode, (), (override));
    MOCK_METHOD(void, SetTestMode, (bool test), (override));
    MOCK_METHOD(void, SetBurnProof, (bool on), (override));
    MOCK_METHOD(void, SetCacheFiles, (bool on), (override));
    MOCK_METHOD(void, AbortWrite, (), (override));
    MOCK_METHOD(void, StartWrite, (DiscDevice * device, bool& ok), (override));
    MOCK_METHOD(void, AddTrack, (const QString& file, int position, bool& ok), (override));
    MOCK_METHOD(void, RemoveTrack, (int position), (override));
    MOCK_METHOD(int, GetTrackCount, (), (override));
    MOCK_METHOD(QString, GetTrackFile, (int position), (override));
    MOCK_METHOD(int, GetTrackFormat, (int position), (override));
    MOCK_METHOD(qint64, GetTrackLength, (int position), (override));
    MOCK_METHOD(void, ClearTracks, (), (override));
    MOCK_METHOD(qint64, GetRequiredSpace, (), (override));
    MOCK_METHOD(void, SetProjectKind, (int kind), (override));
};

class MockDiscEngine : public DiscEngine
{
public:
    MOCK_METHOD(bool, InitDevices, (bool), (override));
    MOCK_METHOD(short, GetDeviceCount, (), (override));
    MOCK_METHOD(DiscDevice*, GetDevice, (short index), (override));
    MOCK_METHOD(AudioProject*, GetAudioProject, (), (override));
};
