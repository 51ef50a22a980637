// The employee editor's tax items, worked by keys alone: each box reached by its access key, a wrong
// one refused with its message and nothing written, the right ones saved as the command line saves
// them, with the standing deduction lines they stand for kept when the deduction list is replaced.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "payengine/EmployeeTaxItems.h"
#include "staff/frmEmployee.h"
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

namespace qltest {
namespace {

class TaxItemsEditor : public DocumentsTest {
protected:
    void SetUp() override {
        ql::setApp(&context);
        ql::setDialogs(&dialogs);
        ASSERT_EQ(runCli({QStringLiteral("init")}, docs->path()).exitCode, 0);
        const CliResult r = runCli({QStringLiteral("employee"), QStringLiteral("add"), QStringLiteral("--first"),
                                    QStringLiteral("Mere"), QStringLiteral("--last"), QStringLiteral("Tane"),
                                    QStringLiteral("--start"), QStringLiteral("2026-04-01"), QStringLiteral("--tax-code"),
                                    QStringLiteral("M SL"), QStringLiteral("--interval"), QStringLiteral("weekly"),
                                    QStringLiteral("--rate"), QStringLiteral("28"), QStringLiteral("--deduction"),
                                    QStringLiteral("Board=120"), QStringLiteral("--ird"), QStringLiteral("048130046"),
                                    QStringLiteral("--address"), QStringLiteral("3 Farm Lane"), QStringLiteral("--city"),
                                    QStringLiteral("Te Awamutu"), QStringLiteral("--birth"), QStringLiteral("1990-02-03")},
                                   docs->path());
        ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
        context.WageDatabase.open(ql::WageFileName());
    }
    void TearDown() override {
        context.WageDatabase.close();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    qint64 cents(const QString& sql) { return std::llround(context.WageDatabase.scalar(sql).toDouble() * 100.0); }
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
};

QWidget* focus() {
    return QApplication::focusWidget();
}

QChar mnemonic(const QString& caption) {
    const qsizetype amp = caption.indexOf(u'&');
    return amp >= 0 && amp + 1 < caption.size() ? caption.at(amp + 1).toUpper() : QChar();
}

// The access key of the box's caption, pressed with Alt as a user does (first the access key of the
// page it is on, when that page is not showing); the box then has the focus.
void reach(QWidget& editor, const char* objectName) {
    QLineEdit* box = editor.findChild<QLineEdit*>(QString::fromLatin1(objectName));
    ASSERT_NE(box, nullptr) << objectName;
    if (!box->isVisible()) {
        auto* pages = editor.findChild<QTabWidget*>(QStringLiteral("tabEmployee"));
        ASSERT_NE(pages, nullptr);
        for (int i = 0; i < pages->count(); ++i)
            if (pages->widget(i)->isAncestorOf(box)) {
                const QChar key = mnemonic(pages->tabText(i));
                ASSERT_FALSE(key.isNull()) << pages->tabText(i).toStdString() << " has no access key";
                QTest::keyClick(focus(), Qt::Key(key.unicode()), Qt::AltModifier);
            }
        ASSERT_TRUE(box->isVisible()) << objectName;
    }
    QChar accessKey;
    for (QLabel* l : editor.findChildren<QLabel*>())
        if (l->buddy() == box) {
            const qsizetype amp = l->text().indexOf(u'&');
            if (amp >= 0) accessKey = l->text().at(amp + 1).toUpper();
        }
    ASSERT_FALSE(accessKey.isNull()) << objectName << " has no access key";
    QTest::keyClick(focus(), Qt::Key(accessKey.unicode()), Qt::AltModifier);
    ASSERT_EQ(focus(), box) << objectName << " not reached by Alt+" << QString(accessKey).toStdString();
}

void retype(const QString& text) {
    QTest::keyClick(focus(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(focus(), text);
}

TEST_F(TaxItemsEditor, TypedByKeysCheckedAndSavedWithTheirLines) {
    ql::Database& wage = context.WageDatabase;
    auto standingLines = [&] {
        return wage.scalar(QStringLiteral("SELECT count(*) FROM EmployeeDeductions WHERE EmployeeID = 1")).toInt();
    };
    const int before = standingLines(); // the board and the student loan of M SL
    {
        ql::frmEmployee e(wage, 1);
        e.show();
        e.activateWindow();
        QApplication::setActiveWindow(&e);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&e));
        // Every box has an accessible name and a caption with an access key of its own.
        QStringList keys;
        for (const char* name : {"txt_esctrate", "txt_childsupport", "txt_payrollgiving", "txt_slspecialrate",
                                 "txt_slcommissionerrate", "txt_slextra"}) {
            QLineEdit* box = e.findChild<QLineEdit*>(QString::fromLatin1(name));
            ASSERT_NE(box, nullptr) << name;
            EXPECT_FALSE(box->accessibleName().isEmpty()) << name;
        }
        // Keys are unique among what shows at once: each page's captions with the page titles.
        auto* pages = e.findChild<QTabWidget*>(QStringLiteral("tabEmployee"));
        ASSERT_NE(pages, nullptr);
        for (int page = 0; page < pages->count(); ++page) {
            keys.clear();
            for (int i = 0; i < pages->count(); ++i) keys << QString(mnemonic(pages->tabText(i)));
            for (QLabel* l : pages->widget(page)->findChildren<QLabel*>())
                if (!mnemonic(l->text()).isNull()) keys << QString(mnemonic(l->text()));
            EXPECT_FALSE(keys.contains(QString()));
            EXPECT_EQ(keys.size(), QSet<QString>(keys.begin(), keys.end()).size()) << keys.join(u',').toStdString();
        }

        reach(e, "txt_esctrate");
        retype(QStringLiteral("30"));
        reach(e, "txt_childsupport");
        retype(QStringLiteral("twenty")); // not an amount
        reach(e, "txt_payrollgiving");
        retype(QStringLiteral("15"));
        reach(e, "txt_slspecialrate");
        retype(QStringLiteral("120")); // no rate above 100%
        QTest::keyClick(focus(), Qt::Key_S, Qt::AltModifier);
        QTest::qWait(250);
        ASSERT_TRUE(e.isVisible());
        const QString problems = e.findChild<QLabel*>(QStringLiteral("lblProblems"))->text();
        EXPECT_EQ(problems, QStringLiteral("Child support: \"twenty\" is not an amount.")) << problems.toStdString();
        EXPECT_EQ(focus()->objectName(), QStringLiteral("txt_childsupport"));
        EXPECT_EQ(standingLines(), before);
        EXPECT_EQ(ql::LoadEmployeeTaxItems(wage, 1).payrollGiving, ql::Currency());

        retype(QStringLiteral("20.99"));
        QTest::keyClick(focus(), Qt::Key_S, Qt::AltModifier);
        QTest::qWait(250);
        ASSERT_TRUE(e.isVisible());
        EXPECT_TRUE(e.findChild<QLabel*>(QStringLiteral("lblProblems"))
                        ->text()
                        .startsWith(QStringLiteral("Student loan special rate: \"120\" is not a rate")));
        EXPECT_EQ(focus()->objectName(), QStringLiteral("txt_slspecialrate"));
        retype(QStringLiteral("15"));
        reach(e, "txt_slcommissionerrate");
        retype(QStringLiteral("5"));
        reach(e, "txt_slextra");
        retype(QStringLiteral("80"));
        e.grab().save(QStringLiteral(QUILLARY_BINARY_DIR "/tests/staff_ui/editor-tax-items.png"));
        QTest::keyClick(focus(), Qt::Key_S, Qt::AltModifier);
        QTest::qWait(250);
        EXPECT_FALSE(e.isVisible()) << e.findChild<QLabel*>(QStringLiteral("lblProblems"))->text().toStdString();
    }
    const ql::EmployeeTaxItems items = ql::LoadEmployeeTaxItems(wage, 1);
    EXPECT_EQ(items.esctRate, 30000);
    EXPECT_FALSE(items.esctRateYear.isEmpty());
    EXPECT_EQ(items.childSupport, ql::Currency::fromDouble(20.99));
    EXPECT_EQ(items.payrollGiving, ql::Currency::fromLong(15));
    EXPECT_EQ(items.slSpecialRate, 15000);
    EXPECT_EQ(items.slCommissionerRate, 5000);
    EXPECT_EQ(items.slExtra, ql::Currency::fromLong(80));
    // A line more for each of child support, payroll giving, SLCIR and SLBOR.
    EXPECT_EQ(standingLines(), before + 4);

    // The same figures as the command line shows them.
    const CliResult shown = runCli({QStringLiteral("employee"), QStringLiteral("show"), QStringLiteral("1")}, docs->path());
    EXPECT_TRUE(shown.out.contains(QStringLiteral("\"ESCTRate\": 30"))) << shown.out.toStdString();

    // The deduction list replaced by the board alone: the items' lines stay; child support cleared
    // takes its line away; the ESCT rate left as shown stays the employer's.
    {
        ql::frmEmployee e(wage, 1);
        e.show();
        e.activateWindow();
        QApplication::setActiveWindow(&e);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&e));
        EXPECT_EQ(e.findChild<QLineEdit*>(QStringLiteral("txt_childsupport"))->text(), QStringLiteral("20.99"));
        EXPECT_EQ(e.findChild<QLineEdit*>(QStringLiteral("txt_esctrate"))->text(), QStringLiteral("30"));
        reach(e, "txt_deduction");
        retype(QStringLiteral("Board=130"));
        reach(e, "txt_childsupport");
        QTest::keyClick(focus(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(focus(), Qt::Key_Delete);
        QTest::keyClick(focus(), Qt::Key_S, Qt::AltModifier);
        QTest::qWait(250);
        EXPECT_FALSE(e.isVisible()) << e.findChild<QLabel*>(QStringLiteral("lblProblems"))->text().toStdString();
    }
    const ql::EmployeeTaxItems after = ql::LoadEmployeeTaxItems(wage, 1);
    EXPECT_EQ(after.childSupport, ql::Currency());
    EXPECT_EQ(after.esctRate, 30000);
    EXPECT_EQ(after.payrollGiving, ql::Currency::fromLong(15));
    EXPECT_EQ(standingLines(), before + 3);
    EXPECT_EQ(cents(QStringLiteral("SELECT FixedAmount FROM EmployeeDeductions e JOIN DeductNames n ON "
                                   "n.DeductNameID = e.DeductID WHERE e.EmployeeID = 1 AND n.DeductionName = 'Board'")),
              13000);
}

} // namespace
} // namespace qltest
