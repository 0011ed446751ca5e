#pragma once

/// The players of a vocal remover's window.
enum RemoverPlayer : short
{
    SourcePlayer = 0,
    ResultPlayer = 1,  ///< Of the last preview.
};
