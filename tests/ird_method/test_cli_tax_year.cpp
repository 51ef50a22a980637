// quillary-cli tax-year import, list and show as a user types them.
#include "CliRunner.h"
#include "TestEnv.h"
#include <QFile>

using qltest::runCli;

namespace {

QStringList args(std::initializer_list<const char*> list) {
    QStringList out;
    for (const char* a : list) out << QString::fromLatin1(a);
    return out;
}

} // namespace

TEST(CliTaxYear, ListShowImport) {
    qltest::TempDocuments docs;
    ASSERT_EQ(runCli(args({"init"}), docs.path()).exitCode, 0);
    const auto list = runCli(args({"tax-year", "list"}), docs.path());
    ASSERT_EQ(list.exitCode, 0) << list.err.toStdString();
    EXPECT_EQ(list.out, QStringLiteral("2024/25\t2024-04-01\t2025-03-31\n2024/25\t2024-07-31\t2025-03-31\n"
                                       "2025/26\t2025-04-01\t2026-03-31\n2026/27\t2026-04-01\t2027-03-31\n"));

    const auto show = runCli(args({"tax-year", "show", "2024-07-30"}), docs.path());
    ASSERT_EQ(show.exitCode, 0) << show.err.toStdString();
    EXPECT_TRUE(show.out.contains(QStringLiteral("Income tax bands: 10.5% to $14,000; 17.5% to $48,000;")));
    EXPECT_TRUE(show.out.contains(QStringLiteral("ACC earners' levy: 1.6% up to $142,283")));
    EXPECT_TRUE(show.out.contains(QStringLiteral("CAE 17.5%, EDW 17.5%, NSW 10.5%")));

    const auto none = runCli(args({"tax-year", "show", "2030-01-01"}), docs.path());
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_TRUE(none.err.contains(QStringLiteral("No tax year in force on 2030-01-01")));

    // Next year's file: the shipped 2026/27 one a year on, with another levy.
    QFile example(QStringLiteral(QUILLARY_SOURCE_DIR "/resources/taxyears/2026-27.json"));
    ASSERT_TRUE(example.open(QIODevice::ReadOnly));
    QByteArray next = example.readAll();
    next.replace("2026/27", "2027/28").replace("2027-03-31", "2028-03-31").replace("2026-04-01", "2027-04-01");
    next.replace("\"rate\": 1.75", "\"rate\": 1.8");
    const QString path = docs.writeFile(QStringLiteral("2027-28.json"), next);
    const auto imported = runCli(QStringList{QStringLiteral("tax-year"), QStringLiteral("import"), path}, docs.path());
    ASSERT_EQ(imported.exitCode, 0) << imported.err.toStdString();
    EXPECT_EQ(imported.out, QStringLiteral("Imported tax year 2027/28 (2027-04-01 to 2028-03-31), in force from 2027-04-01.\n"));
    const auto shown = runCli(args({"tax-year", "show", "2027-04-01"}), docs.path());
    EXPECT_TRUE(shown.out.contains(QStringLiteral("ACC earners' levy: 1.8% up to $156,641"))) << shown.out.toStdString();

    const QString bad = docs.writeFile(QStringLiteral("bad.json"), "{\"taxYear\": \"2028/29\"}");
    const auto refused = runCli(QStringList{QStringLiteral("tax-year"), QStringLiteral("import"), bad}, docs.path());
    EXPECT_EQ(refused.exitCode, 1);
    EXPECT_TRUE(refused.err.contains(QStringLiteral("\"starts\" must be a date"))) << refused.err.toStdString();
    EXPECT_EQ(runCli(args({"tax-year", "list"}), docs.path()).out.count(QLatin1Char('\n')), 5);
    EXPECT_EQ(runCli(args({"tax-year"}), docs.path()).exitCode, 2);
    EXPECT_EQ(runCli(args({"tax-year", "show", "31/12/2026"}), docs.path()).exitCode, 2);
}
