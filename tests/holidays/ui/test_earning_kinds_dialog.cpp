// The kinds of earnings on the screen: a kind chosen with the keyboard and saved reads back through the
// engine and through quillary-cli; Cancel writes nothing; every control is named and has its key.
#include "DemoScreenFixture.h"
#include "ScreenChecks.h"
#include "holidays/EarningKindsDialog.h"
#include <QApplication>
#include <QComboBox>
#include <QJsonArray>
#include <QJsonObject>
#include <QTableWidget>
#include <QTest>
#include <gtest/gtest.h>

namespace qltest {
namespace {

using ql::holidays::EarningKind;

class EarningKindsDialogTest : public DemoScreenTest {
protected:
    // The kind quillary-cli gives a name.
    QString cliKind(const QString& table, int id) {
        const CliResult r = runCli({"earning-kinds"}, docs->path());
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        for (const QJsonValue& v : QJsonDocument::fromJson(r.out.toUtf8()).object().value("names").toArray()) {
            const QJsonObject o = v.toObject();
            if (o.value("table").toString() == table && o.value("id").toInt() == id) return o.value("kind").toString();
        }
        return QString();
    }
};

TEST_F(EarningKindsDialogTest, AKindChosenWithTheKeyboardIsSavedAsTheCommandLineSavesIt) {
    const QList<ql::holidays::NamedKind> names = ql::holidays::NamedKinds(context.WageDatabase);
    ASSERT_GE(names.size(), 3);
    // Every name of the three tables is listed, with its kind and what it counts in.
    ql::EarningKindsDialog d(context.WageDatabase);
    ASSERT_EQ(d.table()->rowCount(), names.size());
    int taxableRow = -1;
    for (int r = 0; r < names.size(); ++r)
        if (names.at(r).table == QLatin1String("taxable") && taxableRow < 0) taxableRow = r;
    ASSERT_GE(taxableRow, 0);
    const ql::holidays::NamedKind& target = names.at(taxableRow);
    EXPECT_EQ(d.table()->item(taxableRow, 0)->text(), target.name);
    EXPECT_EQ(d.table()->item(taxableRow, 1)->text(), QStringLiteral("Taxable allowance"));
    EXPECT_EQ(d.table()->item(taxableRow, 2)->text(), ql::holidays::KindCaption(target.kind));

    showActive(&d);
    // The list has the focus on its first row: to the row with the arrow keys, to the kind box with its
    // key, the kind one down, and Save with its key.
    ASSERT_EQ(QApplication::focusWidget(), d.table());
    ASSERT_EQ(d.table()->currentRow(), 0);
    for (int r = 0; r < taxableRow; ++r)
        key(Qt::Key_Down);
    ASSERT_EQ(d.table()->currentRow(), taxableRow);
    key(Qt::Key_K, Qt::AltModifier);
    ASSERT_EQ(QApplication::focusWidget(), d.kindBox());
    const int before = d.kindBox()->currentIndex();
    key(before + 1 < d.kindBox()->count() ? Qt::Key_Down : Qt::Key_Up);
    const QString chosen = d.kindBox()->currentData().toString();
    ASSERT_NE(chosen, ql::holidays::KindCode(target.kind));
    EXPECT_EQ(d.changedCount(), 1);
    EXPECT_TRUE(d.table()->item(taxableRow, 2)->text().endsWith(QStringLiteral("(changed)")));
    const QString dir = qEnvironmentVariable("HOLIDAY_SNAPSHOTS");
    if (!dir.isEmpty()) d.grab().save(dir + QStringLiteral("/earning_kinds.png"));
    key(Qt::Key_S, Qt::AltModifier);
    EXPECT_EQ(d.result(), int(QDialog::Accepted));
    EXPECT_EQ(ql::holidays::KindCode(ql::holidays::NameKind(context.WageDatabase, QStringLiteral("taxable"), target.id)),
              chosen);
    EXPECT_EQ(cliKind(QStringLiteral("taxable"), target.id), chosen);
    // The others are as they were.
    for (const ql::holidays::NamedKind& n : names)
        if (n.table != target.table || n.id != target.id)
            EXPECT_EQ(ql::holidays::NameKind(context.WageDatabase, n.table, n.id), n.kind) << n.name.toStdString();
}

TEST_F(EarningKindsDialogTest, CancelWritesNothing) {
    ql::EarningKindsDialog d(context.WageDatabase);
    d.table()->setCurrentCell(0, 0);
    const auto first = ql::holidays::NamedKinds(context.WageDatabase).first();
    const int other = d.kindBox()->findData(ql::holidays::KindCode(EarningKind::Reimbursement)) ==
                              d.kindBox()->currentIndex()
                          ? d.kindBox()->findData(ql::holidays::KindCode(EarningKind::Productivity))
                          : d.kindBox()->findData(ql::holidays::KindCode(EarningKind::Reimbursement));
    d.kindBox()->setCurrentIndex(other);
    EXPECT_EQ(d.changedCount(), 1);
    d.reject();
    EXPECT_EQ(ql::holidays::NameKind(context.WageDatabase, first.table, first.id), first.kind);
    EXPECT_EQ(cliKind(first.table, first.id), ql::holidays::KindCode(first.kind));
}

TEST_F(EarningKindsDialogTest, EveryControlIsNamedAndHasItsOwnKey) {
    ql::EarningKindsDialog d(context.WageDatabase);
    ExpectNamedAndKeyed(&d);
    ExpectFitsSmallScreen(&d);
}

} // namespace
} // namespace qltest
