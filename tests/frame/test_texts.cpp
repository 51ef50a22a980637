// Numbered marks and the escapes for labels and report formulas.
#include "frame/Texts.h"
#include "runtime/Currency.h"
#include <gtest/gtest.h>

using namespace ql;

TEST(TranslateText, MarksTakeTheirValues) {
    EXPECT_EQ(TranslateText("|0| of |1|", QStringList{"3", "12"}), QString("3 of 12"));
    EXPECT_EQ(TranslateText("Delete |0|?", QStringList{"Pay 4"}), QString("Delete Pay 4?"));
    EXPECT_EQ(TranslateText("|1| then |0| then |1|", QStringList{"a", "b"}), QString("b then a then b"));
}

TEST(TranslateText, EmptyTextYieldsEmpty) {
    EXPECT_EQ(TranslateText(QString(), QStringList{"x"}), QString());
    EXPECT_EQ(TranslateText("", QStringList{}), QString());
}

TEST(TranslateText, TextWithoutMarksIsUnchanged) {
    EXPECT_EQ(TranslateText("No marks here", QStringList{}), QString("No marks here"));
}

TEST(TranslateText, MarkOutsideTheArrayLeavesATrail) {
    EXPECT_EQ(TranslateText("Total |0|", QStringList{}), QString("Total ?"));
    EXPECT_EQ(TranslateText("Delete |0|", QStringList{}), QString("Delete ?"));
    EXPECT_EQ(TranslateText("|0| and |1|", QStringList{"one"}), QString("|one| and ?"));
}

TEST(TranslateText, BadMarkAtTheStartYieldsEmpty) {
    EXPECT_EQ(TranslateText("|3| left", QStringList{"a"}), QString());
}

TEST(TranslateText, SingleBarWithoutClosingBar) {
    EXPECT_EQ(TranslateText("Value |0 end", QStringList{"X"}), QString("Value X|0 end"));
    EXPECT_EQ(
        TranslateText("a|12", QStringList{"p", "q", "r", "s", "t", "u", "v", "w", "x", "y", "z", "L", "M"}),
        QString("aM|12"));
}

TEST(TranslateText, MultiDigitIndex) {
    QStringList values;
    for (int i = 0; i < 12; ++i)
        values << QString("v%1").arg(i);
    EXPECT_EQ(TranslateText("[|11|]", values), QString("[v11]"));
}

TEST(TranslateText, BarWithoutDigitsTakesValueZero) {
    EXPECT_EQ(TranslateText("a||b", QStringList{"X"}), QString("aXb"));
}

TEST(TranslateText, NullValueShowsAsDots) {
    EXPECT_EQ(TranslateText("Name: |0|.", QVariantList{QVariant()}), QString("Name: ...."));
}

TEST(TranslateText, NonTextValuesAreConverted) {
    EXPECT_EQ(TranslateText("|0| pays", QVariantList{QVariant(qint32(4))}), QString("4 pays"));
}

TEST(TranslateText, HugeIndexIsAnErrorNotACrash) {
    EXPECT_EQ(TranslateText("x |99999999999999999999|", QStringList{"a"}), QString("x ?"));
}

TEST(EscapeAccessKeys, DoublesAmpersands) {
    EXPECT_EQ(EscapeAccessKeys(QString("R&D && more")), QString("R&&D &&&& more"));
    EXPECT_EQ(EscapeAccessKeys(QVariant()), QString());
    EXPECT_EQ(EscapeAccessKeys(QString()), QString());
}

TEST(EscapeReportText, QuotesAmpersandsAndLineBreaks) {
    EXPECT_EQ(EscapeReportText(QString("Tom's & Co\r\nLtd")),
              QString("Tom''s  Co' + chr(13) + chr(10) + 'Ltd"));
}

TEST(EscapeReportText, NullIsEmpty) {
    EXPECT_EQ(EscapeReportText(QVariant()), QString());
}

TEST(EscapeReportText, BareLineFeedsAndReturnsBreakToo) {
    EXPECT_EQ(EscapeReportText(QString("a\nb\rc")),
              QString("a' + chr(13) + chr(10) + 'b' + chr(13) + chr(10) + 'c"));
    EXPECT_EQ(EscapeReportText(QString("x\r\n\r\ny")),
              QString("x' + chr(13) + chr(10) + '' + chr(13) + chr(10) + 'y"));
}

TEST(EscapeReportText, PlainTextIsUnchanged) {
    EXPECT_EQ(EscapeReportText(QString("12 Main Road")), QString("12 Main Road"));
}
