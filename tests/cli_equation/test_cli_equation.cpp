// quillary-cli equation as a user runs it: the installed modules database, the country of the family
// file, the result with four decimals.
#include "CliRunner.h"
#include "TestEnv.h"
#include "data/Database.h"
#include "data/Schema.h"
#include "frame/SettingGetters.h"
#include <QFile>

using qltest::runCli;

namespace {

class CliEquation : public qltest::DocumentsTest {
protected:
    void SetUp() override { setCountry(64); }
    void setCountry(int country) {
        docs->writeFile(QStringLiteral("Fernhold/Common/Fernhold.ini"),
                        QByteArray("[WINDOWS]\r\nCountry=") + QByteArray::number(country) + "\r\n");
    }
    void installModules() { ql::openOrCreate(ql::DatabaseKind::Modules, ql::ModuleFileName()).close(); }
    void setRow(int process, int country, const QString& equation) {
        ql::Database db;
        db.open(ql::ModuleFileName());
        db.execute(QStringLiteral("DELETE FROM TaxEquations WHERE TaxProcessID = ? AND CountryPhone = ?"),
                   {process, country});
        db.execute(QStringLiteral(
                       "INSERT INTO TaxEquations (TaxProcessID, CountryPhone, Equation) VALUES (?, ?, ?)"),
                   {process, country, equation});
        db.close();
    }
    qltest::CliResult run(const QStringList& args, const QByteArray& locale = "en_NZ.UTF-8") {
        return runCli(QStringList{QStringLiteral("equation")} + args, docs->path(), locale);
    }
};

} // namespace

TEST_F(CliEquation, TemplateRowsOfNewZealand) {
    installModules();
    struct Case {
        QStringList args;
        const char* out;
    } cases[] = {
        {{"1", "1000", "52"}, "52000.0000\n"},  {{"1", "1234.567", "52"}, "64197.0000\n"},
        {{"2", "8918", "52"}, "171.5000\n"},    {{"2", "8917.9998", "52"}, "171.5000\n"},
        {{"2", "2373", "12"}, "197.7300\n"},    {{"3", "16.275", "0"}, "16.2700\n"},
        {{"3", "-16.275", "52"}, "-16.2700\n"}, {{"4", "7295.75", "52", "520"}, "130.3000\n"},
        {{"5", "1911", "26"}, "73.5000\n"},
    };
    for (const Case& c : cases) {
        const auto r = run(c.args);
        EXPECT_EQ(r.exitCode, 0) << c.args.join(u' ').toStdString() << r.err.toStdString();
        EXPECT_EQ(r.out, QString::fromLatin1(c.out)) << c.args.join(u' ').toStdString();
        EXPECT_EQ(r.err, QString()) << c.args.join(u' ').toStdString();
    }
}

TEST_F(CliEquation, TemplateRowsOfTheOtherCountries) {
    installModules();
    for (int country : {61, 55, 598}) {
        setCountry(country);
        EXPECT_EQ(run({"1", "1000", "52"}).out, QStringLiteral("52000.0000\n")) << country;
        EXPECT_EQ(run({"2", "2373", "12"}).out, QStringLiteral("197.7300\n")) << country;
        EXPECT_EQ(run({"3", "-16.275", "0"}).out, QStringLiteral("-16.2700\n")) << country;
    }
}

TEST_F(CliEquation, CommaLocale) {
    installModules();
    const auto r = run({"1", "1000,5", "52"}, "de_DE.UTF-8");
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_EQ(r.out, QStringLiteral("52026.0000\n"));
    EXPECT_EQ(run({"3", "16,275", "0"}, "de_DE.UTF-8").out, QStringLiteral("16.2700\n"));
    setCountry(61);
    EXPECT_EQ(run({"2", "2373", "12"}, "de_DE.UTF-8").out, QStringLiteral("197.7300\n"));
}

TEST_F(CliEquation, EditedRowCountsAtOnce) {
    installModules();
    setRow(1, 64, QStringLiteral("SALARY(x*p*2)"));
    EXPECT_EQ(run({"1", "10", "52"}).out, QStringLiteral("1040.0000\n"));
}

TEST_F(CliEquation, NoRowGivesTheAmountRounded) {
    installModules();
    EXPECT_EQ(run({"9", "12.345", "52"}).out, QStringLiteral("12.3400\n"));
    EXPECT_EQ(run({"9", "12.3451", "52"}).out, QStringLiteral("12.3500\n"));
}

TEST_F(CliEquation, FaultIsReportedAndTheAmountTimesPaysPrinted) {
    installModules();
    setCountry(61);
    setRow(1, 61, QStringLiteral("d p * +"));
    const auto r = run({"1", "10.5", "2"});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QStringLiteral("21.0000\n"));
    EXPECT_EQ(r.err, QStringLiteral("CountrySpecificEquation: Pop method invoked on empty stack\n"));
}

TEST_F(CliEquation, ResultBeyondMoney) {
    installModules();
    setCountry(55);
    setRow(1, 55, QStringLiteral("10 17 ^"));
    const auto r = run({"1", "1", "52"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.out, QString());
    EXPECT_EQ(r.err, QStringLiteral("Overflow\n"));
}

TEST_F(CliEquation, MissingModulesDatabase) {
    const auto r = run({"1", "100.125", "2"});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QStringLiteral("200.2500\n"));
    EXPECT_TRUE(r.err.startsWith(QStringLiteral("CountrySpecificEquation: "))) << r.err.toStdString();
}

TEST_F(CliEquation, WrongUsage) {
    for (const QStringList& args :
         {QStringList{}, QStringList{"1", "2"}, QStringList{"1", "2", "3", "4", "5"}}) {
        const auto r = run(args);
        EXPECT_EQ(r.exitCode, 2);
        EXPECT_EQ(r.out, QString());
        EXPECT_TRUE(r.err.contains(QStringLiteral("equation PROCESS AMOUNT PAYSPERYEAR [X]")))
            << r.err.toStdString();
    }
}

TEST_F(CliEquation, NumbersAreRequired) {
    installModules();
    auto r = run({"one", "2", "3"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, QStringLiteral("PROCESS must be a number: \"one\"\n"));
    r = run({"1", "12..5", "52"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, QStringLiteral("AMOUNT must be a number: \"12..5\"\n"));
    r = run({"1", "2", "weekly"});
    EXPECT_EQ(r.err, QStringLiteral("PAYSPERYEAR must be a number: \"weekly\"\n"));
    r = run({"4", "2", "52", "x"});
    EXPECT_EQ(r.err, QStringLiteral("X must be a number: \"x\"\n"));
    EXPECT_EQ(r.out, QString());
}
