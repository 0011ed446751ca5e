#include "support/FieldReader.h"

#include <gtest/gtest.h>

namespace {

struct LineRow
{
    const char* name;
    const char* text;
    QStringList fields;
};

std::string nameOfLine(const ::testing::TestParamInfo<LineRow>& info)
{
    return info.param.name;
}

class Fields : public ::testing::TestWithParam<LineRow>
{
protected:
    static std::string shown(const QStringList& fields) { return ("[" + fields.join("][") + "]").toStdString(); }
};

TEST_P(Fields, AreCutFromATextInOnePiece)
{
    FieldReader reader;
    reader.feed(QString(GetParam().text));
    reader.finish();
    EXPECT_EQ(shown(reader.takeFields()), shown(GetParam().fields));
}

TEST_P(Fields, AreTheSameWhenTheTextComesCharacterByCharacter)
{
    FieldReader reader;
    QStringList fields;
    for (const QChar character : QString(GetParam().text)) {
        reader.feed(QStringView(&character, 1));
        fields << reader.takeFields();
    }
    reader.finish();
    fields << reader.takeFields();
    EXPECT_EQ(shown(fields), shown(GetParam().fields));
}

INSTANTIATE_TEST_SUITE_P(
    Texts, Fields,
    ::testing::Values(
        LineRow{"NothingHasNoField", "", {}}, LineRow{"OneLine", "a song\r\n", {"a song"}},
        LineRow{"TwoLines", "a\r\nb\r\n", {"a", "b"}}, LineRow{"LastLineWithoutLineEnd", "a\r\nb", {"a", "b"}},
        LineRow{"LineFeedsAlone", "a\nb\n", {"a", "b"}}, LineRow{"CarriageReturnsAlone", "a\rb\r", {"a", "b"}},
        LineRow{"EmptyLineIsAnEmptyField", "a\r\n\r\nb\r\n", {"a", "", "b"}},
        LineRow{"OnlyEmptyLines", "\r\n\r\n", {"", ""}},
        LineRow{"LineOfBlanksIsAnEmptyField", "  \t\r\na\r\n", {"", "a"}},
        LineRow{"LastLineOfBlanks", "a\r\n  ", {"a", ""}},
        LineRow{"CommaEndsAField", "Blue, Bossa\r\n", {"Blue", "Bossa"}},
        LineRow{"TwoCommas", "a,,b\r\n", {"a", "", "b"}},
        LineRow{"CommaAtTheLineEnd", "a,\r\nb\r\n", {"a", "", "b"}}, LineRow{"CommaAtTheTextEnd", "a,", {"a"}},
        LineRow{"CommaAlone", ",\r\n", {"", ""}}, LineRow{"BlanksAtBothEndsGo", "  a song \t\r\n", {"a song"}},
        LineRow{"BlanksInsideStay", "a  b\r\n", {"a  b"}}, LineRow{"BlanksRoundACommaGo", "a , b\r\n", {"a", "b"}},
        LineRow{"QuotesHoldACommaIn", "\"a,b\"\r\nc\r\n", {"a,b", "c"}},
        LineRow{"QuotesHoldBlanksIn", "\" a \"\r\n", {" a "}},
        LineRow{"QuotesHoldALineEndIn", "\"a\r\nb\"\r\nc\r\n", {"a\r\nb", "c"}},
        LineRow{"BlanksBeforeQuotesGo", "  \"a,b\"  ,c\r\n", {"a,b", "c"}},
        LineRow{"TextBehindQuotesIsTheNextField", "\"a\"b,c\r\n", {"a", "b", "c"}},
        LineRow{"QuotesBehindQuotes", "\"a\"\"b\"\r\n", {"a", "b"}},
        LineRow{"QuoteInsideAFieldIsPlain", "say \"hi\"\r\n", {"say \"hi\""}},
        LineRow{"EmptyQuotes", "\"\"\r\na\r\n", {"", "a"}},
        LineRow{"QuoteThatNeverCloses", "\"a,b\r\nc", {"a,b\r\nc"}},
        LineRow{"QuotedLastLineWithoutLineEnd", "\"a\"", {"a"}},
        LineRow{"QuotedLastLineWithBlanksBehind", "\"a\"  ", {"a"}}),
    nameOfLine);

}  // namespace
