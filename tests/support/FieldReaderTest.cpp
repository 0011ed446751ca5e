#include "support/FieldReader.h"

#include <gtest/gtest.h>

namespace {

struct Row
{
    const char* name;
    const char* text;
    QStringList fields;
};

std::string rowName(const ::testing::TestParamInfo<Row>& info)
{
    return info.param.name;
}

class Fields : public ::testing::TestWithParam<Row>
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
        Row{"NothingHasNoField", "", {}}, Row{"OneLine", "a song\r\n", {"a song"}},
        Row{"TwoLines", "a\r\nb\r\n", {"a", "b"}}, Row{"LastLineWithoutLineEnd", "a\r\nb", {"a", "b"}},
        Row{"LineFeedsAlone", "a\nb\n", {"a", "b"}}, Row{"CarriageReturnsAlone", "a\rb\r", {"a", "b"}},
        Row{"EmptyLineIsAnEmptyField", "a\r\n\r\nb\r\n", {"a", "", "b"}},
        Row{"OnlyEmptyLines", "\r\n\r\n", {"", ""}}, Row{"LineOfBlanksIsAnEmptyField", "  \t\r\na\r\n", {"", "a"}},
        Row{"LastLineOfBlanks", "a\r\n  ", {"a", ""}}, Row{"CommaEndsAField", "Blue, Bossa\r\n", {"Blue", "Bossa"}},
        Row{"TwoCommas", "a,,b\r\n", {"a", "", "b"}}, Row{"CommaAtTheLineEnd", "a,\r\nb\r\n", {"a", "", "b"}},
        Row{"CommaAtTheTextEnd", "a,", {"a"}}, Row{"CommaAlone", ",\r\n", {"", ""}},
        Row{"BlanksAtBothEndsGo", "  a song \t\r\n", {"a song"}}, Row{"BlanksInsideStay", "a  b\r\n", {"a  b"}},
        Row{"BlanksRoundACommaGo", "a , b\r\n", {"a", "b"}},
        Row{"QuotesHoldACommaIn", "\"a,b\"\r\nc\r\n", {"a,b", "c"}},
        Row{"QuotesHoldBlanksIn", "\" a \"\r\n", {" a "}},
        Row{"QuotesHoldALineEndIn", "\"a\r\nb\"\r\nc\r\n", {"a\r\nb", "c"}},
        Row{"BlanksBeforeQuotesGo", "  \"a,b\"  ,c\r\n", {"a,b", "c"}},
        Row{"TextBehindQuotesIsTheNextField", "\"a\"b,c\r\n", {"a", "b", "c"}},
        Row{"QuotesBehindQuotes", "\"a\"\"b\"\r\n", {"a", "b"}},
        Row{"QuoteInsideAFieldIsPlain", "say \"hi\"\r\n", {"say \"hi\""}},
        Row{"EmptyQuotes", "\"\"\r\na\r\n", {"", "a"}}, Row{"QuoteThatNeverCloses", "\"a,b\r\nc", {"a,b\r\nc"}},
        Row{"QuotedLastLineWithoutLineEnd", "\"a\"", {"a"}},
        Row{"QuotedLastLineWithBlanksBehind", "\"a\"  ", {"a"}}),
    rowName);

}  // namespace
