#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/// A home folder for the life of this object, with a recordings folder in it.
class HomeOfItsOwn
{
public:
    HomeOfItsOwn()
    {
        qputenv("HOME", folder.path().toUtf8());
        QDir().mkpath(recordings());
    }

    ~HomeOfItsOwn() { qputenv("HOME", before); }
    Q_DISABLE_COPY_MOVE(HomeOfItsOwn)

    QString recordings() const { return folder.filePath("Documents/Larkspin Recordings"); }
    QString in() const { return recordings() + "/tmpWavIn.wav"; }
    QString out() const { return recordings() + "/tmpWavOut.wav"; }

    static void write(const QString& path)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            qFatal("cannot write %s", qPrintable(path));
        file.write("sound");
    }

private:
    const QByteArray before = qgetenv("HOME");
    const QTemporaryDir folder;
};
