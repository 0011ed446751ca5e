#pragma once

#include <span>

class MsgBox;

/// Why a vocal remover refuses a file, as the user would read it.
struct InputFileReason
{
    /// Null for success.
    const char* message;

    /// The code that stands for it; 0 where none has been given.
    short label = 0;
};

/// The reasons in the order of the checks. None of them has been given a code.
std::span<const InputFileReason> inputFileReasons();

/// Shows the reason of the first label that is @p code; nothing for success, or where no label is.
///
/// The labels of inputFileReasons() are all unset and read as 0, so with these no code shows anything: 0 is taken
/// for success, and any other is none of them. Nothing calls this yet. The window does not ask a vocal remover for
/// its result: a file that was refused shows when what should have been made of it is missing. To tell the reason
/// is a change of its own, which begins with the codes of VocalRemoval as labels.
void ShowInputFileError(short code, MsgBox& msgBox, std::span<const InputFileReason> reasons = inputFileReasons());
