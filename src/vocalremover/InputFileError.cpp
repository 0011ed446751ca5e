#include "vocalremover/InputFileError.h"

#include "support/dialogs/MsgBox.h"

#include <algorithm>

std::span<const InputFileReason> inputFileReasons()
{
    static constexpr InputFileReason reasons[] = {
        {nullptr},
        {"Cannot open input file!"},
        {"Input file is not a standard RIFF file!"},
        {"Input file has missing or incorrect WAVE header!"},
        {"Input file has missing or incorrect chunk header!"},
        {"Input file is not a PCM or IEEE wave file!"},
        {"Input file is not stereo!"},
        {"Input file is not 8, 16, 24 or 32 bits!"},
        {"Input file is not standard wave file!"},
        {"Input file is missing or it has an incorrect form header!"},
        {"Cannot open input file!"},
    };
    return reasons;
}

void ShowInputFileError(short code, MsgBox& msgBox, std::span<const InputFileReason> reasons)
{
    const auto reason = std::ranges::find(reasons, code, &InputFileReason::label);
    if (reason != reasons.end() && reason->message)
        msgBox.show(QString::fromLatin1(reason->message), MsgBox::Look::Plain, QStringLiteral("Error"));
}
