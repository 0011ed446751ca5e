#include "support/FieldReader.h"

#include <utility>

namespace {

bool isBlank(QChar character)
{
    return character == u' ' || character == u'\t';
}

bool isLineEnd(QChar character)
{
    return character == u'\r' || character == u'\n';
}

}  // namespace

void FieldReader::feed(QStringView piece)
{
    for (const QChar character : piece) {
        const bool secondOfLineEnd = character == u'\n' && lineFeedBelongsToLineEnd;
        lineFeedBelongsToLineEnd = character == u'\r' && place != Place::InQuotes;
        if (secondOfLineEnd)
            continue;

        if (place == Place::InQuotes) {
            if (character == u'"') {
                fields << std::exchange(field, {});
                place = Place::AfterQuotes;
            } else {
                field += character;
            }
        } else if (character == u',' || isLineEnd(character)) {
            if (place == Place::AfterQuotes)
                place = Place::BeforeField;
            else
                endField();
        } else if (place == Place::InField) {
            field += character;
        } else if (isBlank(character)) {
            blanksOnly = place == Place::BeforeField;
        } else {
            blanksOnly = false;
            place = character == u'"' ? Place::InQuotes : Place::InField;
            if (place == Place::InField)
                field += character;
        }
    }
}

void FieldReader::finish()
{
    if (place == Place::InField || place == Place::InQuotes || blanksOnly)
        endField();
}

QStringList FieldReader::takeFields()
{
    return std::exchange(fields, {});
}

void FieldReader::endField()
{
    if (place == Place::InField) {
        while (!field.isEmpty() && isBlank(field.back()))
            field.chop(1);
    }
    fields << std::exchange(field, {});
    place = Place::BeforeField;
    blanksOnly = false;
}
