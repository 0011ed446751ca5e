// Decodes a sound file from its beginning to its end and says how many frames there were.

#include "sound/media/DecodedSound.h"

#include <QString>
#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s FILE\n", argv[0]);
        return 2;
    }
    const auto opened = sound::DecodedSound::open(QString::fromLocal8Bit(argv[1]));
    if (!opened.sound || !opened.sound->waitFor(opened.sound->length()))
        return 1;
    std::printf("%lld\n", static_cast<long long>(opened.sound->length().value));
    return 0;
}
