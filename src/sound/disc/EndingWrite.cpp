#include "sound/disc/EndingWrite.h"

#include "sound/disc/DiscWrite.h"

#include <QCoreApplication>
#include <chrono>
#include <utility>

namespace sound {

using namespace std::chrono_literals;

void EndingWrite::see(std::shared_ptr<DiscWrite> write)
{
    new EndingWrite(std::move(write));  // belongs to the application
}

EndingWrite::EndingWrite(std::shared_ptr<DiscWrite> ending)
    : QObject(QCoreApplication::instance())
    , write(std::move(ending))
{
    connect(&looks, &QTimer::timeout, this, [this] {
        if (hasCome(write->over()))
            deleteLater();
    });
    looks.start(50ms);
}

}  // namespace sound
