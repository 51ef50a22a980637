// A special tax code with the employee's own rate, and the employer's standing contributions other than
// KiwiSaver: set up from the command line, refused where wrong with nothing written, carried through the
// CSV files, and paid: the PAYE of the certificate's rate on whole dollars, the contribution lines with
// ESCT on a superannuation scheme's contribution. And the employee's email in the employee details file.
#include "StaffFixture.h"
#include "payday/PaydayFileCheck.h"
#include "staff/EmployeeFields.h"
#include "payengine/IrdMethod.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace qltest {
namespace {

class SpecialCodeTest : public StaffTest {
protected:
    void SetUp() override {
        StaffTest::SetUp();
        ASSERT_EQ(cli(employerArgs()).exitCode, 0);
    }
    QJsonObject object(const CliResult& r) {
        EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
        return QJsonDocument::fromJson(r.out.toUtf8()).object();
    }
    // A weekly hand paid 40 hours at the rate, on the code given, with extra options.
    QStringList weekly(const QString& rate, const QString& code, const QStringList& more = {}) const {
        return QStringList{QStringLiteral("employee"), QStringLiteral("add"), QStringLiteral("--first"),
                           QStringLiteral("Wiremu"), QStringLiteral("--last"), QStringLiteral("Hohaia"),
                           QStringLiteral("--start"), QStringLiteral("2026-04-01"), QStringLiteral("--tax-code"), code,
                           QStringLiteral("--interval"), QStringLiteral("weekly"), QStringLiteral("--rate"), rate,
                           QStringLiteral("--hours"), QStringLiteral("40"), QStringLiteral("--ird"), irdNumber(4)} +
               more;
    }
    // The one pay of the employee after the run of the date (not committed).
    QJsonObject payOf(qint32 employeeID, const QString& date) {
        const CliResult run = cli({QStringLiteral("pay-run"), date});
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        const CliResult pays = cli({QStringLiteral("pays"), QString::number(employeeID)});
        EXPECT_EQ(pays.exitCode, 0) << pays.err.toStdString();
        const QJsonArray list = QJsonDocument::fromJson(pays.out.toUtf8()).array();
        EXPECT_EQ(list.size(), 1) << pays.out.toStdString();
        return list.isEmpty() ? QJsonObject() : list.first().toObject();
    }
    void expectRefusal(const QStringList& args, const QString& message) {
        const QString before = snapshot();
        const CliResult r = cli(args);
        EXPECT_EQ(r.exitCode, 1) << args.join(u' ').toStdString() << "\n" << r.out.toStdString();
        EXPECT_TRUE(r.err.contains(message)) << "missing: " << message.toStdString() << "\nin: " << r.err.toStdString();
        EXPECT_EQ(snapshot().toStdString(), before.toStdString()) << args.join(u' ').toStdString();
    }
};

TEST(SpecialTaxCode, CertificateRateOnWholeDollarsCutToCents) {
    ql::TaxYearFigures f;
    f.accLevyRate = 1750; // the levy is inside the certificate's rate
    const ql::ird::TaxCode stc = ql::ird::ParseTaxCode(QStringLiteral("STC"));
    ASSERT_EQ(stc.kind, ql::ird::CodeKind::Tailored);
    // $1,014.80 is $1,014 at 24.567%: 249.10938, cut to 249.10.
    EXPECT_EQ(ql::ird::PayeCents(f, stc, 101480, 52, 24567), 24910);
    // Without the levy: 1,014 at 22.817% is 231.36438, cut to 231.36.
    EXPECT_EQ(ql::ird::TaxElementCents(f, stc, 101480, 52, 24567), 23136);
    // A bonus takes the certificate's rate; a payment not liable for the levy the rate less the levy.
    EXPECT_EQ(ql::ird::ExtraPayPayeCents(f, stc, 0, 50000, 50000, 24567), 12283);
    EXPECT_EQ(ql::ird::ExtraPayPayeCents(f, stc, 0, 50000, 0, 24567), 11408);
    // The interval doesn't matter to a flat rate.
    EXPECT_EQ(ql::ird::PayeCents(f, stc, 101480, 12, 24567), 24910);
}

TEST_F(SpecialCodeTest, TheEmployeesOwnRateIsShownAndPaid) {
    const QJsonObject shown = object(cli(weekly(QStringLiteral("25.37"), QStringLiteral("STC"),
                                                {QStringLiteral("--stc-rate"), QStringLiteral("24.567")})));
    EXPECT_EQ(shown.value(QStringLiteral("TaxCode")).toString(), QStringLiteral("STC"));
    EXPECT_DOUBLE_EQ(shown.value(QStringLiteral("STCRate")).toDouble(), 24.567);
    const qint32 id = shown.value(QStringLiteral("EmployeeID")).toInt();
    EXPECT_EQ(cli({QStringLiteral("roster")}).out.count(QStringLiteral("\"TaxCode\": \"STC\"")), 1);

    // 40 hours at $25.37: $1,014.80; $1,014 at 24.567% is 249.10938.
    const QJsonObject pay = payOf(id, QStringLiteral("2026-04-07"));
    EXPECT_DOUBLE_EQ(pay.value(QStringLiteral("Gross")).toDouble(), 1014.80);
    EXPECT_DOUBLE_EQ(pay.value(QStringLiteral("PAYE")).toDouble(), 249.10);

    // Another code leaves the rate behind.
    const QJsonObject main = object(cli({QStringLiteral("employee"), QStringLiteral("edit"), QString::number(id),
                                         QStringLiteral("--tax-code"), QStringLiteral("M")}));
    EXPECT_TRUE(main.value(QStringLiteral("STCRate")).isNull());
    const QJsonObject again = object(cli({QStringLiteral("employee"), QStringLiteral("edit"), QString::number(id),
                                          QStringLiteral("--tax-code"), QStringLiteral("STC SL"),
                                          QStringLiteral("--stc-rate"), QStringLiteral("30%")}));
    EXPECT_EQ(again.value(QStringLiteral("TaxCode")).toString(), QStringLiteral("STC SL"));
    EXPECT_DOUBLE_EQ(again.value(QStringLiteral("STCRate")).toDouble(), 30.0);
}

TEST_F(SpecialCodeTest, ARateOnlyWithTheCodeAndTheCodeOnlyWithARate) {
    ASSERT_EQ(cli(handArgs()).exitCode, 0);
    expectRefusal(weekly(QStringLiteral("25"), QStringLiteral("STC")),
                  QStringLiteral("Special tax code rate: required with tax code STC"));
    expectRefusal(weekly(QStringLiteral("25"), QStringLiteral("M"), {QStringLiteral("--stc-rate"), QStringLiteral("20")}),
                  QStringLiteral("Special tax code rate: only with tax code STC (the tax code is M)."));
    for (const QString& bad : {QStringLiteral("abc"), QStringLiteral("0"), QStringLiteral("100.5"),
                               QStringLiteral("12.3456")})
        expectRefusal(weekly(QStringLiteral("25"), QStringLiteral("STC"), {QStringLiteral("--stc-rate"), bad}),
                      QStringLiteral("Special tax code rate: \"%1\" is not a per cent above 0").arg(bad));
    expectRefusal({QStringLiteral("employee"), QStringLiteral("edit"), QStringLiteral("1"), QStringLiteral("--tax-code"),
                   QStringLiteral("STC")},
                  QStringLiteral("Special tax code rate: required with tax code STC"));
}

TEST_F(SpecialCodeTest, ContributionsAreShownAndPaidWithEsctOnTheScheme) {
    QStringList args = handArgs();
    args << QStringLiteral("--contribution") << QStringLiteral("Employer Superannuation=2%")
         << QStringLiteral("--contribution") << QStringLiteral("Medical Insurance=12.50");
    const QJsonObject shown = object(cli(args));
    const QJsonArray lines = shown.value(QStringLiteral("Contributions")).toArray();
    ASSERT_EQ(lines.size(), 2) << QJsonDocument(shown).toJson().toStdString();
    EXPECT_EQ(lines.at(0).toObject().value(QStringLiteral("Name")).toString(), QStringLiteral("Employer Superannuation"));
    EXPECT_DOUBLE_EQ(lines.at(0).toObject().value(QStringLiteral("Rate")).toDouble(), 2.0);
    EXPECT_EQ(lines.at(1).toObject().value(QStringLiteral("Name")).toString(), QStringLiteral("Medical Insurance"));
    EXPECT_DOUBLE_EQ(lines.at(1).toObject().value(QStringLiteral("Amount")).toDouble(), 12.5);
    const qint32 id = shown.value(QStringLiteral("EmployeeID")).toInt();

    // 40 hours at $26.50: $1,060. Employer KiwiSaver 3.5% is 37.10, the scheme's 2% 21.20, the medical
    // cover 12.50. $1,060 a week is $55,120 a year: ESCT at 17.5% on each scheme's whole dollars, $37
    // giving 6.47 and $21 3.67, 10.14 in all, though the medical cover comes last; it bears none.
    const QJsonObject pay = payOf(id, QStringLiteral("2026-04-07"));
    EXPECT_DOUBLE_EQ(pay.value(QStringLiteral("Gross")).toDouble(), 1060.0);
    EXPECT_DOUBLE_EQ(pay.value(QStringLiteral("ESCTDeductions")).toDouble(), 10.14);
    const QJsonObject detail = object(cli({QStringLiteral("pay"), QString::number(pay.value(QStringLiteral("WageID")).toInt())}));
    QMap<QString, QPair<double, double>> byName; // amount, ESCT
    for (const QJsonValue& v : detail.value(QStringLiteral("ContributionDetails")).toArray()) {
        const QJsonObject o = v.toObject();
        byName.insert(o.value(QStringLiteral("ContributionName")).toString(),
                      {o.value(QStringLiteral("Contributions")).toDouble(), o.value(QStringLiteral("ESCT")).toDouble()});
    }
    ASSERT_EQ(byName.size(), 3) << QJsonDocument(detail).toJson().toStdString();
    EXPECT_DOUBLE_EQ(byName.value(QStringLiteral("Employer KiwiSaver")).first, 37.10);
    EXPECT_DOUBLE_EQ(byName.value(QStringLiteral("Employer KiwiSaver")).second, 6.47);
    EXPECT_DOUBLE_EQ(byName.value(QStringLiteral("Employer Superannuation")).first, 21.20);
    EXPECT_DOUBLE_EQ(byName.value(QStringLiteral("Employer Superannuation")).second, 3.67); // $21 at 17.5%
    EXPECT_DOUBLE_EQ(byName.value(QStringLiteral("Medical Insurance")).first, 12.50);
    EXPECT_DOUBLE_EQ(byName.value(QStringLiteral("Medical Insurance")).second, 0.0);

    // An edit without the option keeps them; an empty one takes them away.
    object(cli({QStringLiteral("employee"), QStringLiteral("edit"), QString::number(id), QStringLiteral("--hours"),
                QStringLiteral("38")}));
    const QJsonObject kept = object(cli({QStringLiteral("employee"), QStringLiteral("show"), QString::number(id)}));
    EXPECT_EQ(kept.value(QStringLiteral("Contributions")).toArray().size(), 2);
    const QJsonObject none = object(cli({QStringLiteral("employee"), QStringLiteral("edit"), QString::number(id),
                                         QStringLiteral("--contribution"), QString()}));
    EXPECT_TRUE(none.value(QStringLiteral("Contributions")).toArray().isEmpty());
    EXPECT_DOUBLE_EQ(none.value(QStringLiteral("KiwiSaverRate")).toDouble(), 3.5);
}

TEST_F(SpecialCodeTest, WrongContributionsAreRefused) {
    ASSERT_EQ(cli(handArgs()).exitCode, 0);
    auto withLines = [this](const QStringList& base, const QStringList& lines) {
        QStringList args = base;
        for (const QString& l : lines) args << QStringLiteral("--contribution") << l;
        return args;
    };
    expectRefusal(withLines(milkerArgs(), {QStringLiteral("Employer Superannuation=3%")}),
                  QStringLiteral("Employer contribution: the pays carry the employer's contributions only for an "
                                 "employee enrolled in KiwiSaver."));
    expectRefusal(withLines(managerArgs(), {QStringLiteral("Employer KiwiSaver=3%")}),
                  QStringLiteral("Employer contribution: Employer KiwiSaver follows from the KiwiSaver choice"));
    expectRefusal(withLines(managerArgs(), {QStringLiteral("Medical=12"), QStringLiteral("medical=4%")}),
                  QStringLiteral("Employer contribution: medical is given twice."));
    expectRefusal(withLines(managerArgs(), {QStringLiteral("Medical")}),
                  QStringLiteral("Employer contribution: \"Medical\" is not NAME=AMOUNT or NAME=RATE%."));
    expectRefusal(withLines(managerArgs(), {QStringLiteral("Medical=120%")}),
                  QStringLiteral("Employer contribution: Medical takes at most 100%."));
}

TEST_F(SpecialCodeTest, TheCsvFilesCarryTheRateAndTheContributions) {
    QStringList hand = handArgs();
    hand << QStringLiteral("--contribution") << QStringLiteral("Employer Superannuation=2%")
         << QStringLiteral("--contribution") << QStringLiteral("Medical Insurance=12.5");
    ASSERT_EQ(cli(hand).exitCode, 0);
    ASSERT_EQ(cli(weekly(QStringLiteral("25"), QStringLiteral("STC"), {QStringLiteral("--stc-rate"), QStringLiteral("21")}))
                  .exitCode,
              0);
    const QString exported = docs->path() + QStringLiteral("/out.csv");
    ASSERT_EQ(cli({QStringLiteral("employee"), QStringLiteral("export"), exported}).exitCode, 0);
    const QString first = fileText(exported);
    EXPECT_TRUE(first.section(u'\n', 0, 0).contains(QStringLiteral("stcrate"))) << first.toStdString();
    EXPECT_TRUE(first.contains(QStringLiteral("Employer Superannuation=2%; Medical Insurance=12.5"))) << first.toStdString();

    TempDocuments other;
    ASSERT_EQ(runCli({QStringLiteral("init")}, other.path()).exitCode, 0);
    CliResult r = runCli({QStringLiteral("employee"), QStringLiteral("import"), exported}, other.path());
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QString again = other.path() + QStringLiteral("/again.csv");
    ASSERT_EQ(runCli({QStringLiteral("employee"), QStringLiteral("export"), again}, other.path()).exitCode, 0);
    EXPECT_EQ(fileText(again), first);
    // The export goes by last name: Hohaia first.
    r = runCli({QStringLiteral("employee"), QStringLiteral("show"), QStringLiteral("1")}, other.path());
    EXPECT_TRUE(r.out.contains(QStringLiteral("\"STCRate\": 21"))) << r.out.toStdString();
}

TEST_F(SpecialCodeTest, ATailoredCodeIsFiledAsStc) {
    QStringList args = weekly(QStringLiteral("25"), QStringLiteral("STC SL"),
                              {QStringLiteral("--stc-rate"), QStringLiteral("20"), QStringLiteral("--account"),
                               bankAccount(6), QStringLiteral("--city"), QStringLiteral("Hamilton")});
    const qint32 id = object(cli(args)).value(QStringLiteral("EmployeeID")).toInt();
    CliResult r = cli({QStringLiteral("pay-run"), QStringLiteral("2026-04-07"), QStringLiteral("--commit")});
    ASSERT_EQ(r.exitCode, 0) << r.out.toStdString() << r.err.toStdString();
    // 40 hours at $25: $1,000 at 20% is 200.00.
    const QJsonArray pays = QJsonDocument::fromJson(cli({QStringLiteral("pays"), QString::number(id)}).out.toUtf8()).array();
    ASSERT_EQ(pays.size(), 1);
    EXPECT_DOUBLE_EQ(pays.first().toObject().value(QStringLiteral("PAYE")).toDouble(), 200.0);
    const QString ei = docs->path() + QStringLiteral("/ei.csv");
    r = cli({QStringLiteral("payday-file"), QStringLiteral("2026-04-07"), QStringLiteral("--out"), ei});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QString eiText = fileText(ei);
    EXPECT_TRUE(ql::CheckEmploymentInformationFile(eiText).isEmpty())
        << ql::CheckEmploymentInformationFile(eiText).join(u'\n').toStdString();
    EXPECT_TRUE(eiText.contains(QStringLiteral(",STC,"))) << eiText.toStdString();
    const QString ed = docs->path() + QStringLiteral("/ed.csv");
    r = cli({QStringLiteral("employee-details-file"), QStringLiteral("--since"), QStringLiteral("2026-04-01"),
             QStringLiteral("--out"), ed});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(fileText(ed).contains(QStringLiteral("\nTED,STC"))) << fileText(ed).toStdString();
}

TEST_F(SpecialCodeTest, TheEmployeeDetailsFileCarriesTheEmail) {
    QStringList hand = handArgs();
    hand << QStringLiteral("--email") << QStringLiteral("mere.tane@kowhai.example.nz");
    ASSERT_EQ(cli(hand).exitCode, 0);
    // An address with a character Inland Revenue doesn't take is kept, and left out of the file.
    QStringList milker = milkerArgs();
    milker << QStringLiteral("--email") << QStringLiteral("ana+milking@kowhai.example.nz");
    ASSERT_EQ(cli(milker).exitCode, 0);
    const QString out = docs->path() + QStringLiteral("/ed.csv");
    const CliResult r = cli({QStringLiteral("employee-details-file"), QStringLiteral("--since"),
                             QStringLiteral("2026-04-01"), QStringLiteral("--out"), out});
    ASSERT_EQ(r.exitCode, 0) << r.err.toStdString();
    const QString text = fileText(out);
    EXPECT_TRUE(ql::CheckEmployeeDetailsFile(text).isEmpty()) << ql::CheckEmployeeDetailsFile(text).join(u'\n').toStdString();
    QMap<QString, QString> emailOf; // by first name: the 14th field of the DED line
    for (const QString& line : text.split(u'\n'))
        if (line.startsWith(QStringLiteral("DED,"))) emailOf.insert(line.section(u',', 4, 4), line.section(u',', 13, 13));
    EXPECT_EQ(emailOf.value(QStringLiteral("Mere")), QStringLiteral("mere.tane@kowhai.example.nz")) << text.toStdString();
    ASSERT_TRUE(emailOf.contains(QStringLiteral("Ana"))) << text.toStdString();
    EXPECT_EQ(emailOf.value(QStringLiteral("Ana")), QString());
}

} // namespace
// The editor's KiwiSaver box shows the rate as one of its choices: a rate kept as a Single is written
// with a Single's digits, so 3.5 reads "3.5", not 3.49999976158 (which the box would show as "no").
TEST(EmployeeFieldsKiwiSaver, ARateKeptAsASingleIsWrittenAsTyped) {
    const ql::EmployeeField* field = ql::FindEmployeeField(QStringLiteral("kiwisaver"));
    ASSERT_NE(field, nullptr);
    for (const float rate : ql::KiwiSaverEmployeeRates()) {
        ql::EmployeeDetails d;
        d.KiwiSaver = ql::KiwiSaverStatus::Enrolled;
        d.KiwiSaverRate = rate;
        const QString written = field->write(d);
        ql::EmployeeDetails back;
        EXPECT_EQ(field->read(back, written), QString()) << written.toStdString();
        EXPECT_EQ(back.KiwiSaverRate, rate) << written.toStdString();
    }
    ql::EmployeeDetails d;
    d.KiwiSaver = ql::KiwiSaverStatus::Enrolled;
    d.KiwiSaverRate = 3.5f;
    EXPECT_EQ(field->write(d), QStringLiteral("3.5"));
}

} // namespace qltest
