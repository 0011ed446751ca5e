#pragma once

#include "sound/disc/DiscDrive.h"

#include <QDateTime>
#include <QString>
#include <functional>
#include <vector>

namespace sound {

class WholeFile;

/// Writes discs as images that other programs read as an audio CD: a cue sheet, and beside it a file of raw
/// sectors. There is always a blank disc in it.
///
/// Images are named by the time at which they begin, "Disc image Mar-05-2007 14-03.cue"; where there is one of that
/// name it gets a number behind it. They appear when they are whole, and never in place of another file.
class DiscImageDrive : public DiscDrive
{
public:
    /// @p folder is made when it is missing.
    explicit DiscImageDrive(
        QString folder, std::function<QDateTime()> now = [] { return QDateTime::currentDateTime(); });

    QString name() const override;
    bool usable() const override { return true; }
    bool hasUnderrunProtection() const override { return false; }
    void refresh() override {}
    LoadedDisc disc() const override { return {true, true, 0, Sectors::wholeDisc}; }
    std::vector<WriteSpeed> speeds() const override { return {}; }
    std::optional<DiscWriteError> objectionTo(const DiscPlan& plan) override;
    WriteOutcome write(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) override;
    void eject() override {}

private:
    WriteOutcome writeImage(const DiscPlan& plan, SectorFeed& feed, WriteWatch& watch) const;
    WriteOutcome nameImage(const DiscPlan& plan, WholeFile& image, const QString& wanted) const;
    WriteOutcome writeSheet(const DiscPlan& plan, const QString& name) const;
    QString path(const QString& fileName) const;
    bool isFree(const QString& name) const;
    QString freeName(const QString& wanted) const;

    const QString folder;
    const std::function<QDateTime()> now;
};

}  // namespace sound
