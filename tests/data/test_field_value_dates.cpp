// A date column read back: the stored "yyyy-mm-dd" text, the ISO reading of it and anything else
// kept as text, at random over four centuries and on texts that only look like dates.
#include "data/FieldValue.h"
#include "data/Recordset.h"
#include <QDate>
#include <QRandomGenerator>
#include <gtest/gtest.h>
#include <iostream>

namespace {

QVariant expected(const QString& text) {
    const QDate d = QDate::fromString(text.trimmed().left(10), Qt::ISODate);
    if (d.isValid() && text.trimmed().size() <= 10) return d;
    return text;
}

TEST(FieldValueDates, StoredTextsReadAsTheIsoReadingAtRandom) {
    const quint32 seed = QRandomGenerator::global()->generate();
    std::cout << "seed " << seed << std::endl;
    QRandomGenerator random(seed);
    for (int i = 0; i < 50000; ++i) {
        const QString text = QStringLiteral("%1-%2-%3")
                                 .arg(random.bounded(1700, 2101), 4, 10, QChar(u'0'))
                                 .arg(random.bounded(0, 14), 2, 10, QChar(u'0'))
                                 .arg(random.bounded(0, 33), 2, 10, QChar(u'0'));
        const QVariant v = ql::typedValue(ql::FieldType::Date, text);
        ASSERT_EQ(v, expected(text)) << text.toStdString() << " seed " << seed;
    }
}

TEST(FieldValueDates, TextsThatOnlyLookLikeDates) {
    for (const char* t : {"2026-02-29", "2028-02-29", "0000-01-01", "2026-1-05", "2026/01/05", "2026-01-0x",
                          " 2026-01-05", "2026-01-05 ", "1899-12-30", "9999-12-31", "2026-00-10", "abcd-ef-gh"}) {
        const QString text = QString::fromLatin1(t);
        EXPECT_EQ(ql::typedValue(ql::FieldType::Date, text), expected(text)) << t;
    }
}

} // namespace
