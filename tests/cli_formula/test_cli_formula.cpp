// The formula commands of quillary-cli, run as a user would.
#include "CliRunner.h"
#include "TestEnv.h"
#include <gtest/gtest.h>

using qltest::runCli;

namespace {

class CliFormula : public qltest::DocumentsTest {
protected:
    qltest::CliResult cli(const QStringList& args, const QByteArray& locale = "en_NZ.UTF-8") {
        return runCli(args, docs->path(), locale);
    }
};

TEST_F(CliFormula, EvalTaxPrintsResultAndError) {
    auto r = cli({QStringLiteral("eval-tax"), QStringLiteral("5-3*2")});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QStringLiteral("-1 0\n"));
    EXPECT_EQ(r.err, QString());

    r = cli({QStringLiteral("eval-tax"), QStringLiteral("5/0")});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QStringLiteral("0 16\n"));

    r = cli({QStringLiteral("eval-tax"), QStringLiteral("2^(0-3)")});
    EXPECT_EQ(r.out, QStringLiteral("0.125 0\n"));

    r = cli({QStringLiteral("eval-tax"), QStringLiteral("1/3")});
    EXPECT_EQ(r.out, QStringLiteral("0.333333333333333 0\n"));

    r = cli({QStringLiteral("eval-tax"), QStringLiteral("ABS(3")});
    EXPECT_EQ(r.out, QStringLiteral("0 4\n"));

    r = cli({QStringLiteral("eval-tax"), QStringLiteral("10^20")});
    EXPECT_EQ(r.out, QStringLiteral("1E+20 0\n"));
}

TEST_F(CliFormula, EvalTaxPrintsAPointUnderAGermanLocale) {
    auto r = cli({QStringLiteral("eval-tax"), QStringLiteral("2,5*1.5")}, "de_DE.UTF-8");
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QStringLiteral("3.75 0\n"));
}

TEST_F(CliFormula, EvalInfix) {
    auto r = cli({QStringLiteral("eval-infix"), QStringLiteral("-2^2")});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QStringLiteral("4\n"));

    r = cli({QStringLiteral("eval-infix"), QStringLiteral("2^3^2")});
    EXPECT_EQ(r.out, QStringLiteral("64\n"));

    r = cli({QStringLiteral("eval-infix"), QStringLiteral("--3")});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.out, QString());
    EXPECT_EQ(r.err, QStringLiteral("error 0x80040001: Operand expected : Column 2\n"));

    r = cli({QStringLiteral("eval-infix"), QStringLiteral("1.5.2")});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err,
              QStringLiteral("error 0x80040001: Operand contains multiple decimal points : Column 4\n"));

    r = cli({QStringLiteral("eval-infix"), QString()});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QStringLiteral("0\n"));
}

TEST_F(CliFormula, EvalPostfix) {
    auto r = cli({QStringLiteral("eval-postfix"), QStringLiteral("-12.5 2 * ")});
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QStringLiteral("-25\n"));

    r = cli({QStringLiteral("eval-postfix"), QStringLiteral("2  3 ")});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, QStringLiteral("error 0x80040002: Bad token in Evaluate: \n"));

    r = cli({QStringLiteral("eval-postfix"), QStringLiteral("+ ")});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, QStringLiteral("error 0x80040001: Pop method invoked on empty stack\n"));

    // The text is taken as given: without the closing blank the last token is not read.
    r = cli({QStringLiteral("eval-postfix"), QStringLiteral("2 3 +")});
    EXPECT_EQ(r.out, QStringLiteral("3\n"));
}

TEST_F(CliFormula, EvalPostfixFollowsTheLocale) {
    auto r = cli({QStringLiteral("eval-postfix"), QStringLiteral("2,5 2 * ")});
    EXPECT_EQ(r.out, QStringLiteral("50\n"));
    r = cli({QStringLiteral("eval-postfix"), QStringLiteral("2,5 2 * ")}, "de_DE.UTF-8");
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.out, QStringLiteral("5\n"));
    r = cli({QStringLiteral("eval-postfix"), QStringLiteral("0,1 ")}, "de_DE.UTF-8");
    EXPECT_EQ(r.out, QStringLiteral("0.1\n"));
}

TEST_F(CliFormula, RuntimeErrorsShowTheirNumber) {
    auto r = cli({QStringLiteral("eval-postfix"), QStringLiteral("1E300 1E300 * ")});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, QStringLiteral("error 0x00000006: Overflow\n"));
}

TEST_F(CliFormula, WrongUsage) {
    for (const char* command : {"eval-tax", "eval-infix", "eval-postfix"}) {
        auto r = cli({QString::fromLatin1(command)});
        EXPECT_EQ(r.exitCode, 2) << command;
        EXPECT_TRUE(r.err.contains(QString::fromLatin1(command) + QStringLiteral(" TEXT"))) << command;
        r = cli({QString::fromLatin1(command), QStringLiteral("1"), QStringLiteral("2")});
        EXPECT_EQ(r.exitCode, 2) << command;
    }
}

} // namespace
