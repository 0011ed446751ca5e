#pragma once

#include <QStringList>
#include <QStringView>

/// Cuts a text that comes in pieces into fields.
///
/// A comma and a line end (CR LF, LF or CR) end a field; an empty line is an empty field. Blanks and tabs at both
/// ends of a field are dropped. A field that begins with a double quote runs to the next double quote, over commas
/// and line ends, and without the quotes; what follows the closing quote on the same line is the next field.
class FieldReader
{
public:
    void feed(QStringView piece);

    /// The text is at its end: the field that no comma and no line end has closed is complete.
    void finish();

    /// Hands over the fields that are complete so far.
    QStringList takeFields();

private:
    enum class Place
    {
        BeforeField,
        InField,
        InQuotes,
        AfterQuotes,
    };

    void endField();

    Place place = Place::BeforeField;
    bool lineFeedBelongsToLineEnd = false;
    bool blanksOnly = false;
    QString field;
    QStringList fields;
};
