#pragma once

#include <QByteArray>
#include <algorithm>
#include <random>

namespace sound::test {

/// Damages of every kind, the same for the same number.
class Damage
{
public:
    explicit Damage(unsigned number)
        : kind(number % 10)
        , random(number + 1)
    {
    }

    QByteArray operator()(QByteArray bytes)
    {
        switch (kind) {
        case 0:
            bytes.truncate(below(bytes.size()));
            break;
        case 1:
            flipBits(bytes, 1, bytes.size());
            break;
        case 2:
            flipBits(bytes, 50, bytes.size());
            break;
        case 3:
            flipBits(bytes, 3, std::min<qsizetype>(bytes.size(), 400));
            break;
        case 4:  // a number in the header becomes the largest there is
            forge(bytes, 0xFF);
            break;
        case 5:
            forge(bytes, 0x00);
            break;
        case 6:
            bytes.remove(below(bytes.size()), 1 + below(5000));
            break;
        case 7: {
            const qsizetype from = below(bytes.size());
            bytes.insert(below(bytes.size()), bytes.mid(from, 5000));
            break;
        }
        case 8: {
            const qsizetype from = below(bytes.size());
            bytes.replace(from, std::min<qsizetype>(5000, bytes.size() - from), QByteArray(5000, '\0'));
            break;
        }
        default:
            flipBits(bytes, 20, std::min<qsizetype>(bytes.size(), 100));
            flipBits(bytes, 200, bytes.size());
            bytes.truncate(bytes.size() - below(bytes.size() / 2));
            break;
        }
        return bytes;
    }

private:
    qsizetype below(qsizetype limit) { return static_cast<qsizetype>(random()) % std::max<qsizetype>(limit, 1); }

    void flipBits(QByteArray& bytes, int count, qsizetype within)
    {
        for (int i = 0; i < count; ++i) {
            const qsizetype place = below(within);
            bytes[place] = static_cast<char>(bytes[place] ^ (1 << below(8)));
        }
    }

    void forge(QByteArray& bytes, int value)
    {
        const qsizetype place = below(std::min<qsizetype>(bytes.size() - 8, 200));
        const qsizetype size = qsizetype{1} << below(4);
        bytes.replace(place, size, QByteArray(size, static_cast<char>(value)));
    }

    unsigned kind;
    std::minstd_rand random;
};

}  // namespace sound::test
