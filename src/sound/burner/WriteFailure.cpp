#include "sound/burner/WriteFailure.h"

#include "sound/disc/DiscErrors.h"

#include <QRegularExpression>

#include <algorithm>

namespace sound {

namespace {

constexpr int writeHasFailed = 0x0002010b;
constexpr int driveIsLost = 0x000201a6;

// Among the text are the drive's three numbers and what they mean: "[3 0C 00] Medium error. Write error." The code
// 0 is none.
DiscDeviceError deviceError(const QString& text)
{
    static const QRegularExpression senseAndText(
        QStringLiteral("\\[([0-9A-F]) ([0-9A-F]{2}) ([0-9A-F]{2})\\](.*)"));
    const QRegularExpressionMatch sense = senseAndText.match(text);
    const auto part = [&](int group) { return sense.captured(group).toInt(nullptr, 16); };
    DiscDeviceError error;
    error.code = (part(1) << 16) | (part(2) << 8) | part(3);
    error.description = sense.captured(4).trimmed();
    return error;
}

DiscWriteError driveFailure(const DiscDeviceError& told, const QString& maker, const QString& model)
{
    DiscWriteError error;
    error.kind = DiscWriteError::device;
    error.deviceError = told;
    error.deviceError.maker = maker;
    error.deviceError.model = model;
    return error;
}

}  // namespace

DiscWriteError otherFailure(const QString& description)
{
    constexpr int other = 4;
    DiscWriteError error;
    error.kind = other;
    error.description = description;
    return error;
}

DiscWriteError writeFailure(const std::vector<LibburnMessage>& messages, const QString& maker, const QString& model)
{
    for (const LibburnMessage& message : messages) {
        if (message.systemError != 0)
            return systemError(message.systemError);
        if (const DiscDeviceError told = deviceError(message.text); told.code != 0)
            return driveFailure(told, maker, model);
    }
    const auto told = std::find_if_not(messages.begin(), messages.end(), tellsEndOfFailedWrite);
    return otherFailure(told == messages.end() ? QStringLiteral("The drive could not write the disc.")
                                               : told->text);
}

bool tellsLossOfDrive(const LibburnMessage& message)
{
    return message.code == driveIsLost;
}

bool tellsEndOfFailedWrite(const LibburnMessage& message)
{
    return message.code == writeHasFailed;
}

}  // namespace sound
