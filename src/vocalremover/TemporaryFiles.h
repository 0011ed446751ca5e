#pragma once

#include <QString>

/// Where a run and a preview lay down what goes into a vocal remover and what comes out of it: two files in the
/// recordings folder, always the same ones. The folder is looked up when this is made.
class TemporaryFiles
{
public:
    TemporaryFiles();

    /// The source as WAV.
    const QString& in() const { return tmpWavIn; }

    /// The result.
    const QString& out() const { return tmpWavOut; }

    /// What a run ends with: each file is deleted if it is absent. So both of them stay, until the next run or
    /// preview writes over them.
    void cleanUp() const;

private:
    QString tmpWavIn;
    QString tmpWavOut;
};
