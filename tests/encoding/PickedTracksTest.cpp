#include "encoding/PickedTracks.h"

#include "QtPrinters.h"
#include "encoding/IsNoMp3Platform.h"

#include <gtest/gtest.h>

namespace {

QString joined(const QStringList& parts)
{
    return parts.join(QChar::Null);
}

TEST(PickedTracks, OfOneFileAreItsWholePath)
{
    EXPECT_EQ(pickedTracks("/music/a.wav"), QStringList("/music/a.wav"));
}

TEST(PickedTracks, OfNoFileAreOneEmptyName)
{
    EXPECT_EQ(pickedTracks(""), QStringList(""));
}

TEST(PickedTracks, OfTwoPartsAreOneNameWithBoth)
{
    const QString name = joined({"/music", "a.wav"});
    EXPECT_EQ(pickedTracks(name), QStringList(name));
}

TEST(PickedTracks, OfSeveralFilesAreTheirBareNamesInTheDialogsOrder)
{
    EXPECT_EQ(pickedTracks(joined({"/music", "b.wav", "a.mp3", "c.wma"})),
              QStringList({"b.wav", "a.mp3", "c.wma"}));
}

TEST(AFileForADisc, IsToldByItsLastThreeLettersInAnyCase)
{
    for (const char* name : {"/a.wav", "a.WAV", "a.Mp3", "a.wMA", "alwav", "wav"})
        EXPECT_TRUE(isAllowedOnDisc(name)) << name;
    for (const char* name : {"", "av", "a.ogg", "a.wave", "a.wav ", "a.mp3.flac", "/wav/a.aif"})
        EXPECT_FALSE(isAllowedOnDisc(name)) << name;
}

TEST(TheFilterOfTracks, OffersMp3WhereThePlatformReadsIt)
{
    EXPECT_EQ(trackFilter(false),
              "All supported audio formats|*.wav;*.mp3;*.wma|WAV files (*.wav)|*.wav|"
              "MP3 files (*.mp3)|*.mp3|Windows Media Audio files (*.wma)|*.wma");
    EXPECT_EQ(trackFilter(true),
              "All supported audio formats|*.wav;*.wma|WAV files (*.wav)|*.wav|"
              "Windows Media Audio files (*.wma)|*.wma");
}

TEST(APlatformWithoutMp3, IsVersionSixOfNt)
{
    EXPECT_TRUE(IsNoMp3Platform({true, 6}));
    EXPECT_FALSE(IsNoMp3Platform({true, 5}));
    EXPECT_FALSE(IsNoMp3Platform({true, 10}));
    EXPECT_FALSE(IsNoMp3Platform({false, 6}));
}

TEST(APlatformWithoutMp3, IsNotTheOneTheseTestsRunOn)
{
    EXPECT_FALSE(HostPlatform::current().isWindowsNt);
    EXPECT_FALSE(IsNoMp3Platform(HostPlatform::current()));
}

}  // namespace
