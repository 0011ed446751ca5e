#pragma once

#include <QString>

class TemporaryFiles;
class VocalRemoverEngine;
struct RemoverParts;

// The stages that a run and a preview share. Each result is false where the rest is to be given up: the user has
// been told why, or has closed the window.

/// Empties both players and loads the source into its own.
bool loadSource(const RemoverParts& parts);

/// Has the player write the stretch of the source, in milliseconds, as the remover's input, and waits for it.
bool exportSource(const RemoverParts& parts, const TemporaryFiles& files, int begin, int end);

/// Gives a remover its cut-offs and its two files.
void setUpRemover(VocalRemoverEngine& remover, const RemoverParts& parts, const TemporaryFiles& files);

/// Has a remover do its work. A failure of it is not looked at: then there is no result, which shows in what
/// follows.
bool removeVocals(VocalRemoverEngine& remover, const RemoverParts& parts);

/// The action that failed, and under it why the engine says that it did.
void showFailure(const RemoverParts& parts, const QString& action, int lastError);
