// The program's own check of the payday and bank files: Inland Revenue's published sample and casebook
// files, the files this program writes, and files broken one rule at a time.
#include "PaydayFixture.h"
#include "payday/BankFile.h"
#include "payday/BankFileCheck.h"
#include "payday/PaydayFileCheck.h"
#include "payday/PaydayFiles.h"
#include "runtime/VbError.h"
#include <QDir>
#include <QRegularExpression>

namespace qltest {
namespace {

QString sample(const QString& name) {
    QFile f(QStringLiteral(QUILLARY_SOURCE_DIR) + QStringLiteral("/tests/payday/irsamples/") + name);
    EXPECT_TRUE(f.open(QIODevice::ReadOnly)) << name.toStdString();
    return QString::fromLatin1(f.readAll());
}

std::string joined(const QStringList& l) {
    return l.join(u'\n').toStdString();
}

// The line numbers the problems name ("Line 4 (...): ...").
QList<int> linesOf(const QStringList& problems) {
    QList<int> lines;
    static const QRegularExpression number(QStringLiteral("^Line (\\d+)"));
    for (const QString& p : problems) {
        const auto m = number.match(p);
        lines << (m.hasMatch() ? m.captured(1).toInt() : 0);
    }
    return lines;
}

// The specification says of its EI sample that the calculated figures may not be accurate: the layout
// passes, and the only problems are the header's totals against the lines.
TEST(IrSamples, EmploymentInformationSampleFailsOnlyOnItsIllustrativeTotals) {
    const QStringList problems = ql::CheckEmploymentInformationFile(sample(QStringLiteral("EI_Test_HEI2_2021_example.csv")));
    ASSERT_FALSE(problems.isEmpty());
    for (const QString& p : problems) {
        EXPECT_TRUE(p.startsWith(QStringLiteral("Line 1 (header): Total"))) << p.toStdString();
        EXPECT_TRUE(p.contains(QStringLiteral("add up to")) || p.contains(QStringLiteral("make")))
            << p.toStdString();
    }
    // Gross: 56875 + 65725 + 45678 + 165879 against the header's 143257.
    EXPECT_TRUE(problems.contains(
        QStringLiteral("Line 1 (header): Total gross earnings is 143257, but the employee lines add up to 334157.")))
        << joined(problems);
}

// Inland Revenue's casebook upload file (a collection of returns): every return passes but two, each on
// a slip in the casebook's own data: an invented IRD number whose check digit should be 5, and a pay
// period typed as starting in 2028.
TEST(IrSamples, CasebookUploadReturnsPassBarTwoSlipsOfItsData) {
    const QString text = sample(QStringLiteral("Casebook Payday Filing Upload July 2024_2025 V1.1.csv"));
    QStringList returns;
    for (const QString& line : text.split(u'\n', Qt::SkipEmptyParts)) {
        if (line.startsWith(QStringLiteral("HEI2"))) returns << QString();
        ASSERT_FALSE(returns.isEmpty());
        returns.last() += line + u'\n';
    }
    ASSERT_EQ(returns.size(), 34);
    QStringList failing;
    for (const QString& r : returns) {
        const QStringList problems = ql::CheckEmploymentInformationFile(r);
        if (!problems.isEmpty()) failing << r.section(u',', 2, 2) + QStringLiteral(": ") + problems.join(QStringLiteral("; "));
    }
    EXPECT_EQ(failing, (QStringList{
                           QStringLiteral("20240920: Line 2 (Stacy Eason): Employee IRD number 048126128 fails Inland "
                                          "Revenue's check."),
                           QStringLiteral("20240904: Line 2 (Curtis Love): the pay period starts after it ends."),
                       }))
        << joined(failing);
}

// The specification's ED sample has fictitious details; its problems are all on employee lines, none on
// the header or the layout of the lines it gets right.
TEST(IrSamples, EmployeeDetailsSampleProblemsAreItsFictitiousDetails) {
    const QStringList problems = ql::CheckEmployeeDetailsFile(sample(QStringLiteral("ED_Test_HED2_2021_example.csv")));
    const QStringList expected{
        QStringLiteral("Line 4 (Hall Brian): KiwiSaver status CT cannot have opted out."),
        QStringLiteral("Line 4 (Hall Brian): opt-out bank account 08-0456-0123456-0025: Branch 0456 does not belong "
                       "to bank 08."),
        QStringLiteral("Line 6 (Donny O'Donald): Other late opt-out reason \"   \" must be empty unless the reason is "
                       "OTHR."),
        QStringLiteral("Line 10 (Three Man): Other late opt-out reason \"  \" must be empty unless the reason is OTHR."),
        QStringLiteral("Line 12 (Marty Fly): Other late opt-out reason \" \" must be empty unless the reason is OTHR."),
        QStringLiteral("Line 12 (Marty Fly): has no TED line with its tax code after it."),
        QStringLiteral("Line 16 (Green Adult): Middle name \" Man\" has blanks at its ends."),
        QStringLiteral("Line 16 (Green Adult): Last name \" Adult\" has blanks at its ends."),
        QStringLiteral("Line 16 (Green Adult): opt-out bank account 09-0111-0111111-000: Branch 0111 does not belong "
                       "to bank 09."),
        QStringLiteral("Line 18 (Paulie Shore): Middle name holds only blanks."),
        QStringLiteral("Line 18 (Paulie Shore): has no TED line with its tax code after it."),
        QStringLiteral("Line 19 (EIGHT EIGHT): Middle name holds only blanks."),
        QStringLiteral("Line 19 (EIGHT EIGHT): Last name \" EIGHT\" has blanks at its ends."),
        QStringLiteral("Line 21 (Seven S): Middle name holds only blanks."),
        QStringLiteral("Line 21 (Seven S): Last name \" Seven\" has blanks at its ends."),
    };
    // None on the header, nor on the lines of Mary Smith, Mini Mouse and Jackknife.
    for (int line : linesOf(problems))
        EXPECT_FALSE(QList<int>({1, 2, 3, 8, 9, 13, 14, 15}).contains(line)) << line;
    EXPECT_EQ(problems, expected) << joined(problems);
}

class WrittenFileTest : public PaydayTest {
protected:
    void SetUp() override {
        PaydayTest::SetUp();
        if (HasFatalFailure()) return;
        giveBankDetails();
    }
    QString ei() {
        const ql::PaydayFile f = ql::EmploymentInformationFile(wage, kPaymentDate);
        EXPECT_TRUE(f.ok()) << f.refusal.toStdString();
        return f.text;
    }
    QString bank(ql::BankFormat format) {
        const ql::BankFile f = ql::MakeBankFile(wage, kPaymentDate, format, kMade);
        EXPECT_TRUE(f.ok()) << f.refusal.toStdString();
        return f.text;
    }
    const QDate kMade = QDate(2026, 11, 30);
};

TEST_F(WrittenFileTest, WhatThisProgramWritesPasses) {
    EXPECT_EQ(ql::CheckEmploymentInformationFile(ei()), QStringList());
    const ql::PaydayFile ed = ql::EmployeeDetailsFile(wage, QDate(2025, 10, 1));
    ASSERT_TRUE(ed.ok()) << ed.refusal.toStdString();
    EXPECT_EQ(ql::CheckEmployeeDetailsFile(ed.text), QStringList()) << ed.text.toStdString();
    for (ql::BankFormat f : ql::BankFormats())
        EXPECT_EQ(ql::CheckBankFile(bank(f), f, kMade), QStringList()) << ql::BankFormatCode(f).toStdString();
}

// Each rule broken once: the problem names the line and whom it concerns.
TEST_F(WrittenFileTest, BrokenEmploymentInformationNamesTheEmployee) {
    const QString good = ei();
    const QStringList lines = good.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
    const int eli = static_cast<int>(std::find_if(lines.begin(), lines.end(), [](const QString& l) {
                                         return l.contains(QStringLiteral(",Eli Madeup,"));
                                     }) - lines.begin());
    ASSERT_LT(eli, lines.size());
    const auto broken = [&](const std::function<void(QStringList&)>& change) {
        QStringList f = lines.at(eli).split(u',');
        change(f);
        QStringList l = lines;
        l[eli] = f.join(u',');
        return ql::CheckEmploymentInformationFile(l.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"));
    };
    const QString who = QStringLiteral("Line %1 (Eli Madeup): ").arg(eli + 1);
    QStringList p = broken([](QStringList& f) { f[8] = QStringLiteral("FW"); });
    EXPECT_EQ(p, QStringList{who + QStringLiteral("Pay cycle \"FW\" is not one of WK, FT, 4W, MT, DA, AH, HM.")});
    p = broken([](QStringList& f) { f[2] = QStringLiteral("Eli\tMadeup"); });
    ASSERT_FALSE(p.isEmpty());
    EXPECT_TRUE(p.first().contains(QStringLiteral("control character"))) << joined(p);
    p = broken([](QStringList& f) { f[10] = QString::number(f[10].toLongLong() + 1); });
    EXPECT_EQ(p.size(), 1) << joined(p);
    EXPECT_TRUE(p.value(0).startsWith(QStringLiteral("Line 1 (header): Total gross earnings"))) << joined(p);
    p = broken([](QStringList& f) { f.removeLast(); });
    EXPECT_TRUE(p.value(0).startsWith(who + QStringLiteral("has 26 fields"))) << joined(p);

    QString header = lines.at(0);
    QStringList h = header.split(u',');
    h[6] = QStringLiteral("Hohepa Tawhiri-Matangi Potae");
    QStringList l = lines;
    l[0] = h.join(u',');
    p = ql::CheckEmploymentInformationFile(l.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"));
    EXPECT_EQ(p, QStringList{QStringLiteral("Line 1 (header): Payroll contact name \"Hohepa Tawhiri-Matangi Potae\" "
                                            "is 28 characters long; the layout takes 20.")});
}

TEST_F(WrittenFileTest, BrokenBankFilesNameThePayee) {
    for (ql::BankFormat f : {ql::BankFormat::Anz, ql::BankFormat::AnzTransactive, ql::BankFormat::Bnz}) {
        QStringList lines = bank(f).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
        QStringList second = lines.at(1).split(u',');
        second[3] = QString::number(second[3].toLongLong() + 100);
        second[4] = QStringLiteral("Wh\u0101t\u0101 Tab\tName");
        lines[1] = second.join(u',');
        const QStringList p = ql::CheckBankFile(lines.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"), f, kMade);
        EXPECT_TRUE(p.value(0).contains(QStringLiteral("not plain ASCII"))) << joined(p);
        EXPECT_TRUE(std::any_of(p.begin(), p.end(), [](const QString& x) {
            return x.contains(QStringLiteral("(control record): Total"));
        })) << joined(p);
    }
    // A due date before the day the file was made.
    const QString anz = bank(ql::BankFormat::Bnz);
    const QStringList p = ql::CheckBankFile(anz, ql::BankFormat::Bnz, QDate(2026, 12, 5));
    EXPECT_TRUE(p.isEmpty()) << joined(p); // the file carries its own creation date (30 Nov)
    QString past = anz;
    past.replace(QStringLiteral(",261201,261130,"), QStringLiteral(",261101,261130,"));
    EXPECT_EQ(ql::CheckBankFile(past, ql::BankFormat::Bnz, kMade),
              QStringList{QStringLiteral("Line 1 (header): the due date 2026-11-01 is before the day the file was "
                                         "made, 2026-11-30.")});
    const QString westpac = bank(ql::BankFormat::Westpac);
    EXPECT_FALSE(ql::CheckBankFile(westpac, ql::BankFormat::Westpac, QDate(2026, 12, 2)).isEmpty());
}

// A file that breaks a rule is not left under its name, nor is anything half written beside it.
TEST_F(WrittenFileTest, AFileThatBreaksARuleIsNotLeft) {
    const QString folder = docs->path() + QStringLiteral("/out");
    ASSERT_TRUE(QDir().mkpath(folder));
    const QString path = folder + QStringLiteral("/ei.csv");
    QString bad = ei();
    bad.replace(QStringLiteral(",4W,"), QStringLiteral(",FW,"));
    try {
        ql::WritePaydayFile(path, bad, QStringLiteral("payday filing file"), ql::CheckEmploymentInformationFile);
        ADD_FAILURE() << "written";
    } catch (const ql::VbError& e) {
        EXPECT_TRUE(e.description().startsWith(QStringLiteral("The payday filing file was not written: it breaks a "
                                                              "rule of its layout:\n")))
            << e.description().toStdString();
        EXPECT_TRUE(e.description().contains(QStringLiteral("(Eli Madeup): Pay cycle \"FW\"")))
            << e.description().toStdString();
    }
    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden), QStringList());
    ql::WritePaydayFile(path, ei(), QStringLiteral("payday filing file"), ql::CheckEmploymentInformationFile);
    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("ei.csv")});
    EXPECT_EQ(readFile(path), ei());
}

} // namespace
} // namespace qltest
