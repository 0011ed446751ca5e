#include "sound/burner/LatinText.h"

#include <QList>
#include <algorithm>
#include <array>

namespace sound {

namespace {

constexpr char unknown = '?';

struct Spelling
{
    char16_t letter;
    const char* plain;
};

// Those that are no letter with an accent, which Unicode itself takes apart.
constexpr std::array spellings{
    Spelling{u'\u0110', "D"},   Spelling{u'\u0111', "d"},    Spelling{u'\u0126', "H"},  Spelling{u'\u0127', "h"},
    Spelling{u'\u0131', "i"},   Spelling{u'\u0138', "k"},    Spelling{u'\u0141', "L"},  Spelling{u'\u0142', "l"},
    Spelling{u'\u014a', "Ng"},  Spelling{u'\u014b', "ng"},   Spelling{u'\u0152', "OE"}, Spelling{u'\u0153', "oe"},
    Spelling{u'\u0166', "T"},   Spelling{u'\u0167', "t"},    Spelling{u'\u1e9e', "SS"}, Spelling{u'\u2010', "-"},
    Spelling{u'\u2011', "-"},   Spelling{u'\u2012', "-"},    Spelling{u'\u2013', "-"},  Spelling{u'\u2014', "-"},
    Spelling{u'\u2015', "-"},   Spelling{u'\u2018', "'"},    Spelling{u'\u2019', "'"},  Spelling{u'\u201a', "'"},
    Spelling{u'\u201b', "'"},   Spelling{u'\u201c', "\""},   Spelling{u'\u201d', "\""}, Spelling{u'\u201e', "\""},
    Spelling{u'\u201f', "\""},  Spelling{u'\u2022', "\xb7"}, Spelling{u'\u2032', "'"},  Spelling{u'\u2033', "\""},
    Spelling{u'\u2039', "<"},   Spelling{u'\u203a', ">"},    Spelling{u'\u2044', "/"},  Spelling{u'\u20ac', "EUR"},
    Spelling{u'\u2116', "No."}, Spelling{u'\u2122', "TM"},   Spelling{u'\u2212', "-"},  Spelling{u'\u266d', "b"},
    Spelling{u'\u266e', ""},    Spelling{u'\u266f', "#"},
};

bool isLatin(char32_t letter)
{
    return (letter >= 0x20 && letter < 0x7f) || (letter >= 0xa0 && letter <= 0xff);
}

const Spelling* spellingOf(char32_t letter)
{
    const auto* const found =
        std::find_if(spellings.begin(), spellings.end(), [&](const Spelling& one) { return one.letter == letter; });
    return found == spellings.end() ? nullptr : found;
}

bool isShown(char32_t letter)
{
    return !QChar::isMark(letter) && QChar::category(letter) != QChar::Other_Format;
}

// The parts that a letter is made of, without its accents.
QByteArray plainParts(char32_t letter)
{
    QByteArray plain;
    for (const uint part : QString::fromUcs4(&letter, 1).normalized(QString::NormalizationForm_KD).toUcs4()) {
        if (const Spelling* spelling = spellingOf(part))
            plain += spelling->plain;
        else if (isLatin(part))
            plain += static_cast<char>(part);
        else if (isShown(part))
            return QByteArray(1, unknown);
    }
    return plain;
}

QByteArray spelled(char32_t letter)
{
    if (isLatin(letter))
        return QByteArray(1, static_cast<char>(letter));
    return plainParts(letter);
}

}  // namespace

QByteArray latinText(const QString& text)
{
    QByteArray latin;
    bool tellsSomething = false;
    for (const uint letter : text.simplified().normalized(QString::NormalizationForm_C).toUcs4()) {
        const QByteArray plain = QChar::category(letter) == QChar::Other_Control ? QByteArray() : spelled(letter);
        latin += plain;
        tellsSomething |= letter == U'?' || (letter != U' ' && !plain.isEmpty() && plain[0] != unknown);
    }
    return tellsSomething ? latin.trimmed() : QByteArray();
}

}  // namespace sound
