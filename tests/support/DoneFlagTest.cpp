#include "support/DoneFlag.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QTimer>

namespace {

TEST(ADoneFlag, IsNotSetAtFirst)
{
    EXPECT_FALSE(DoneFlag().isSet());
}

TEST(ADoneFlag, ThatIsSetBeforeTheWaitEndsItAtOnce)
{
    DoneFlag flag;
    flag.set();
    EXPECT_TRUE(flag.wait());
}

TEST(ADoneFlag, EndsTheWaitWhenAnEventSetsItWhileOtherEventsGoOn)
{
    DoneFlag flag;
    QStringList order;
    QTimer::singleShot(0, [&] { order << "other"; });
    QTimer::singleShot(1, [&] {
        order << "done";
        flag.set();
    });
    EXPECT_TRUE(flag.wait());
    EXPECT_EQ(order, QStringList({"other", "done"}));
}

TEST(ADoneFlag, WaitsAgainAfterItWasCleared)
{
    DoneFlag flag;
    flag.set();
    flag.clear();
    EXPECT_FALSE(flag.isSet());
    bool fired = false;
    QTimer::singleShot(0, [&] {
        fired = true;
        flag.set();
    });
    EXPECT_TRUE(flag.wait());
    EXPECT_TRUE(fired);
}

TEST(ADoneFlag, SetDuringAnotherFlagsWaitEndsItsOwnWaitAfterThatOne)
{
    DoneFlag outer;
    DoneFlag inner;
    bool innerEnded = false;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [&] { outer.set(); });
        QTimer::singleShot(1, [&] { inner.set(); });
        innerEnded = inner.wait();
    });
    EXPECT_TRUE(outer.wait());
    EXPECT_TRUE(innerEnded);
}

TEST(ADoneFlag, EndsAllItsWaitsTheInnermostFirst)
{
    DoneFlag flag;
    QStringList order;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [&] { flag.set(); });
        EXPECT_TRUE(flag.wait());
        order << "inner";
    });
    EXPECT_TRUE(flag.wait());
    order << "outer";
    EXPECT_EQ(order, QStringList({"inner", "outer"}));
}

TEST(ADoneFlag, GoesOnWithTheOuterWaitWhereItIsClearedBehindTheInnerOne)
{
    DoneFlag flag;
    bool setAgain = false;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [&] { flag.set(); });
        EXPECT_TRUE(flag.wait());
        flag.clear();
        QTimer::singleShot(0, [&] {
            setAgain = true;
            flag.set();
        });
    });
    EXPECT_TRUE(flag.wait());
    EXPECT_TRUE(setAgain);
}

TEST(ADoneFlag, EndsAllItsWaitsWhenItIsGivenUp)
{
    DoneFlag flag;
    bool inner = true;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [&] { flag.giveUp(); });
        inner = flag.wait();
    });
    EXPECT_FALSE(flag.wait());
    EXPECT_FALSE(inner);
}

TEST(ADoneFlag, IsNotWaitedForOnceItIsGivenUp)
{
    DoneFlag flag;
    flag.giveUp();
    EXPECT_FALSE(flag.wait());
    flag.clear();
    flag.set();
    EXPECT_FALSE(flag.wait());
}

TEST(ADoneFlag, ThatIsSetAndGivenUpInOneGoIsGivenUp)
{
    DoneFlag flag;
    QTimer::singleShot(0, [&] {
        flag.set();
        flag.giveUp();
    });
    EXPECT_FALSE(flag.wait());
}

TEST(ADoneFlag, ThatWasGivenUpIsNotWaitedForAgainWhereItIsSetAndClearedBehindTheInnerWait)
{
    DoneFlag flag;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [&] {
            flag.giveUp();
            flag.set();
        });
        EXPECT_FALSE(flag.wait());
        flag.clear();
    });
    EXPECT_FALSE(flag.wait());
}

TEST(ADoneFlag, EndsItsWaitUnsetWhenTheProgramIsClosed)
{
    DoneFlag flag;
    bool result = true;
    bool again = true;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [] { QCoreApplication::quit(); });
        result = flag.wait();
        again = flag.wait();
    });
    QCoreApplication::exec();
    EXPECT_FALSE(result);
    EXPECT_FALSE(again);
    EXPECT_FALSE(flag.isSet());
}

}  // namespace
