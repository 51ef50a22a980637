// The three databases: creation from nothing, every table and column, cascades, foreign and damaged
// files, and the template rows with the year's tax figures.
#include "TestEnv.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "data/Schema.h"
#include "runtime/Currency.h"
#include "runtime/VbError.h"
#include <QCryptographicHash>
#include <QFile>
#include <QSet>
#include <cmath>

using namespace ql;

namespace {

QStringList columnsOf(Database& db, const QString& table) {
    QStringList cols;
    auto rs = db.openRecordset(QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(table),
                               RecordsetType::Snapshot);
    while (!rs->EOF_()) {
        cols << rs->value(0).toString();
        rs->MoveNext();
    }
    return cols;
}

QByteArray fileHash(const QString& path) {
    QFile f(path);
    f.open(QIODevice::ReadOnly);
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

long errorOf(const std::function<void()>& f, QString* description = nullptr) {
    try {
        f();
    } catch (const VbError& e) {
        if (description) *description = e.description();
        return e.number();
    }
    return 0;
}

class SchemaTest : public qltest::DocumentsTest {
protected:
    QString path(const QString& name) const { return docs->path() + "/" + name; }
};

} // namespace

TEST_F(SchemaTest, PayrollDatabaseHasEveryTableAndColumnInItsOneSpelling) {
    bool created = false;
    Database db = openOrCreate(DatabaseKind::Wage, path("sub/Wage32.db"), &created);
    EXPECT_TRUE(created);
    const QMap<QString, QStringList> expected{
        {"Wages", {"WageID",         "EmployeeID",         "Date",         "Rate",
                   "TaxCode",        "PayInterval",        "OneOff",       "Hours",
                   "Gross",          "TaxAllow",           "TotalTaxable", "PAYE",
                   "NonTaxAllow",    "Deductions",         "TakeHome",     "KiwiSaverContribution",
                   "ESCTDeductions", "TaxCreditKiwiSaver", "Details",      "Reference",
                   "PaymentDate"}},
        {"PaymentDetails", {"WageID", "PaymentNameID", "DetailHours", "EquivPayRate", "Payment"}},
        {"TaxAllowDetails", {"WageID", "TaxNameID", "Amountcalcon", "taxallowrate", "TaxableAllow"}},
        {"NonTaxAllowDetails", {"WageID", "NonTaxNameID", "Amountcalcon", "NonTaxRate", "NonTaxAllow"}},
        {"DeductionDetails", {"WageID", "DeductNameID", "AmountCalcon", "Percentage", "Deductions"}},
        {"ContributionDetails",
         {"WageID", "ContributionNameID", "AmountCalcon", "Percentage", "ESCT", "Contributions"}},
        {"TaxDetails", {"WageID", "PayIntervalID", "TaxableAmount", "TaxTypeID", "PAYE"}},
        {"PaySlip", {"Description", "Number", "Rate", "Amount", "Total"}},
        {"Employees",
         {"EmployeeID", "AddressID", "Birthdate", "EmployeeTypeID", "DateHired", "DateFinished", "PayRate",
          "YearlyTotal", "PayIntervalID", "TaxTypeID", "IRDNumber", "TaxCode", "KiwiSaverEnrolled",
          "KiwiSaverEnrolID", "KiwiSaverStartDate", "KiwiSaverEmployerRateID", "ExcludeIR348", "BankID",
          "EnterpriseID"}},
        {"EmployeeAwardType", {"EmployeeTypeID", "EmployeeType", "UnitOfPay"}},
        {"EmployeeDeductions", {"EmployeeID", "DeductID", "FixedAmount", "SpecialRate", "TaxName"}},
        {"EmployerContributions", {"EmployeeID", "ContributionID", "FixedAmount", "SpecialRate"}},
        {"PayInterval", {"PayIntervalID", "IntervalName", "PaysPerYear", "NumberOfDays", "KiwiSaverCredit"}},
        {"TaxTypes", {"TaxTypeID", "Taxname", "Order"}},
        {"TaxSteps", {"TaxStepsID", "taxtypeID", "upperlimit", "taxrate"}},
        {"PaymentNames", {"PaymentNameID", "PayUnitname", "Calculation", "Salary"}},
        {"PaymentTypes", {"EmployeeTypeID", "PaymentNameID", "Standardhours", "Order"}},
        {"TaxAllowName", {"TaxNameID", "taxAllowancename", "taxallowrate", "ExcludeKiwiSaver"}},
        {"TaxAllowTypes", {"TaxNameID", "EmployeetypeID", "Orderinlist"}},
        {"NonTaxAllowName", {"NonTaxNameID", "NonTaxallowname", "NonTaxRate"}},
        {"NonTaxAllowTypes", {"NonTaxNameID", "EmployeeTypeID", "Order"}},
        {"DeductNames",
         {"DeductNameID", "DeductionName", "CountryPhone", "TaxName", "Percentage", "LowerThreshold",
          "UpperThreshold", "MaxPercent"}},
        {"ContributionNames",
         {"ContributionNameID", "ContributionName", "CountryPhone", "TaxName", "Percentage", "LowerThreshold",
          "UpperThreshold", "MaxPercent"}},
        {"ESCT", {"Salary", "Rate"}},
        {"LeaveDetails",
         {"LeaveID", "EmployeeID", "LeaveTypeID", "TransTypeID", "NumberofDays", "DateFrom", "DateTo",
          "Comments"}},
        {"TransType", {"TransTypeID", "TransType", "Added"}},
        {"WageInfo", {"Cashbook"}},
    };
    for (auto it = expected.begin(); it != expected.end(); ++it)
        EXPECT_EQ(columnsOf(db, it.key()), it.value()) << it.key().toStdString();
    EXPECT_FALSE(db.hasTable("Reference")) << "created on the first commit";
    EXPECT_EQ(db.userVersion(), schemaVersion(DatabaseKind::Wage));
    // Names match without regard to case, as the system spells several columns more than one way.
    auto rs = db.openRecordset(
        "SELECT Paysperyear, Numberofdays, intervalname FROM PayInterval WHERE PayIntervalID = 1",
        RecordsetType::Snapshot);
    EXPECT_FLOAT_EQ(rs->value("PaysPerYear").toFloat(), 52.0f);
    EXPECT_FLOAT_EQ(rs->value("NumberOFDays").toFloat(), 7.0f);
}

TEST_F(SchemaTest, FarmAndModulesDatabasesHaveTheirTables) {
    Database farm = openOrCreate(DatabaseKind::Farm, path("Farm32.db"));
    EXPECT_EQ(columnsOf(farm, "Addresses"),
              QStringList({"AddressID", "WageFlag", "BusinessFlag", "BusName", "BusAddress1", "BusCity",
                           "ContactLastName", "ContactFirstName"}));
    const QStringList details = columnsOf(farm, "Farm Details");
    for (const char* c : {"Farm Name", "Financial Year", "Address1", "Address2", "Address3", "GST Reg Number",
                          "GST Start Date", "GST Rate", "GST Period", "Effective Area", "Budget GST",
                          "BGT GST Account", "OD Interest Rate", "Budget Year", "Current Season"})
        EXPECT_TRUE(details.contains(c)) << c;
    EXPECT_EQ(columnsOf(farm, "Partners"),
              QStringList({"PartnerID", "PartnerName", "PartnerGSTNum", "PartnerDefault", "PartnerTaxRate"}));
    EXPECT_EQ(columnsOf(farm, "Secondary Codes"), QStringList({"Secondary Codes ID", "Cached Name"}));
    EXPECT_EQ(columnsOf(farm, "Tax Periods"), QStringList({"Months", "Prompt"}));
    EXPECT_EQ(columnsOf(farm, "PayeInfo"),
              QStringList({"PAYEAccount", "WageAccount", "PaymentAccount", "AdjustAccount", "PAYEFreq",
                           "TaxFreq", "PAYEStart", "ITaxStart", "PAYENonCash", "PAYEAddressID"}));
    EXPECT_EQ(columnsOf(farm, "Transactions"),
              QStringList({"TransactionsID", "Date", "AddressID", "Reference", "Amount", "BanksID",
                           "Other Party", "PayDate", "FrequencyID", "Balance", "Count"}));
    EXPECT_EQ(columnsOf(farm, "TransactionDetails"),
              QStringList({"TransactionsID", "Account Code", "Net Amount", "Gross Amount", "GST Amount",
                           "Enterprise Code", "Quantity", "Particulars", "Transaction Memo", "TaxReturnID",
                           "TaxNumber", "PAYERtnID"}));
    const QStringList banks = columnsOf(farm, "Banks");
    EXPECT_TRUE(banks.contains("BanksID") && banks.contains("PartnerID") && banks.contains("AccountType"));

    Database modules = openOrCreate(DatabaseKind::Modules, path("Modules.db"));
    EXPECT_EQ(columnsOf(modules, "TaxEquations"), QStringList({"TaxProcessID", "CountryPhone", "Equation"}));
    EXPECT_FALSE(modules.hasTable("ReportHeadings")) << "optional, not in the template";
    EXPECT_TRUE(modules.hasTable("MenuOptions"));
    EXPECT_TRUE(modules.hasTable("ScreenHelp"));
}

TEST_F(SchemaTest, AnExistingDatabaseIsOpenedNotRecreated) {
    {
        Database db = openOrCreate(DatabaseKind::Wage, path("Wage32.db"));
        db.execute("INSERT INTO Employees (EmployeeID, TaxCode) VALUES (5, 'M')");
    }
    bool created = true;
    Database again = openOrCreate(DatabaseKind::Wage, path("Wage32.db"), &created);
    EXPECT_FALSE(created);
    EXPECT_EQ(again.scalar("SELECT TaxCode FROM Employees WHERE EmployeeID = 5").toString(), "M");
    EXPECT_EQ(again.scalar("SELECT count(*) FROM PayInterval").toInt(), 5)
        << "no second copy of the template";
}

TEST_F(SchemaTest, DeletingAnEmployeeCascadesToPaysAndTheirLines) {
    Database db = openOrCreate(DatabaseKind::Wage, path("Wage32.db"));
    db.executeScript(R"(
        INSERT INTO Employees (EmployeeID) VALUES (1);
        INSERT INTO Employees (EmployeeID) VALUES (2);
        INSERT INTO Wages (WageID, EmployeeID) VALUES (10, 1);
        INSERT INTO Wages (WageID, EmployeeID) VALUES (11, 1);
        INSERT INTO Wages (WageID, EmployeeID) VALUES (20, 2);
    )");
    for (int wage : {10, 11, 20}) {
        db.execute("INSERT INTO PaymentDetails (WageID, PaymentNameID, Payment) VALUES (?, 1, 100)", {wage});
        db.execute("INSERT INTO TaxAllowDetails (WageID, TaxNameID) VALUES (?, 1)", {wage});
        db.execute("INSERT INTO NonTaxAllowDetails (WageID, NonTaxNameID) VALUES (?, 1)", {wage});
        db.execute("INSERT INTO DeductionDetails (WageID, DeductNameID) VALUES (?, 1)", {wage});
        db.execute("INSERT INTO ContributionDetails (WageID, ContributionNameID) VALUES (?, 1)", {wage});
        db.execute("INSERT INTO TaxDetails (WageID, PAYE) VALUES (?, 12.5)", {wage});
    }
    for (int e : {1, 2}) {
        db.execute("INSERT INTO EmployeeDeductions (EmployeeID, DeductID) VALUES (?, 1)", {e});
        db.execute("INSERT INTO EmployerContributions (EmployeeID, ContributionID) VALUES (?, 1)", {e});
        db.execute("INSERT INTO LeaveDetails (EmployeeID, TransTypeID) VALUES (?, 4)", {e});
    }
    EXPECT_EQ(db.execute("Delete From Employees WHERE EmployeeID = 1"), 1);
    EXPECT_EQ(db.scalar("SELECT count(*) FROM Wages").toInt(), 1);
    for (const char* t : {"PaymentDetails", "TaxAllowDetails", "NonTaxAllowDetails", "DeductionDetails",
                          "ContributionDetails", "TaxDetails"}) {
        EXPECT_EQ(db.scalar(QStringLiteral("SELECT count(*) FROM %1").arg(t)).toInt(), 1) << t;
        EXPECT_EQ(
            db.scalar(QStringLiteral("SELECT count(*) FROM %1 WHERE WageID IN (10, 11)").arg(t)).toInt(), 0)
            << t;
    }
    for (const char* t : {"EmployeeDeductions", "EmployerContributions", "LeaveDetails"})
        EXPECT_EQ(db.scalar(QStringLiteral("SELECT count(*) FROM %1 WHERE EmployeeID = 1").arg(t)).toInt(), 0)
            << t;
}

TEST_F(SchemaTest, DeletingTheLastPayLeavesNoDetailRows) {
    Database db = openOrCreate(DatabaseKind::Wage, path("Wage32.db"));
    db.execute("INSERT INTO Employees (EmployeeID) VALUES (1)");
    db.execute("INSERT INTO Wages (WageID, EmployeeID) VALUES (7, 1)");
    db.execute("INSERT INTO PaymentDetails (WageID, PaymentNameID) VALUES (7, 1)");
    db.execute("INSERT INTO PaymentDetails (WageID, PaymentNameID) VALUES (7, 2)");
    db.execute("INSERT INTO TaxDetails (WageID) VALUES (7)");
    db.execute("INSERT INTO ContributionDetails (WageID, ContributionNameID) VALUES (7, 1)");
    // Deleted through a recordset, as the pay list does.
    auto rs = db.openRecordset("SELECT * FROM Wages WHERE EmployeeID = 1");
    rs->Delete();
    for (const char* t : {"Wages", "PaymentDetails", "TaxAllowDetails", "NonTaxAllowDetails",
                          "DeductionDetails", "ContributionDetails", "TaxDetails"})
        EXPECT_EQ(db.scalar(QStringLiteral("SELECT count(*) FROM %1").arg(t)).toInt(), 0) << t;
    EXPECT_EQ(db.scalar("SELECT count(*) FROM Employees").toInt(), 1);
}

TEST_F(SchemaTest, ALineIsUniqueByPayAndName) {
    Database db = openOrCreate(DatabaseKind::Wage, path("Wage32.db"));
    db.execute("INSERT INTO Employees (EmployeeID) VALUES (1)");
    db.execute("INSERT INTO Wages (WageID, EmployeeID) VALUES (7, 1)");
    db.execute("INSERT INTO PaymentDetails (WageID, PaymentNameID) VALUES (7, 1)");
    EXPECT_EQ(
        errorOf([&] { db.execute("INSERT INTO PaymentDetails (WageID, PaymentNameID) VALUES (7, 1)"); }),
        err::DuplicateKey);
}

TEST_F(SchemaTest, ReferenceIsCreatedWithItsOneColumnAndAnExistingTableIsKept) {
    Database db = openOrCreate(DatabaseKind::Wage, path("Wage32.db"));
    ASSERT_FALSE(db.hasTable("Reference"));
    db.createTextTable("Reference", "LastReference", 20);
    EXPECT_EQ(columnsOf(db, "Reference"), QStringList({"LastReference"}));
    EXPECT_EQ(db.scalar("SELECT type FROM pragma_table_info('Reference')").toString(), "TEXT(20)");
    db.execute("INSERT INTO Reference (LastReference) VALUES ('41')");
    EXPECT_EQ(errorOf([&] { db.createTextTable("Reference", "LastReference", 20); }), 3010);
    EXPECT_EQ(db.scalar("SELECT LastReference FROM Reference").toString(), "41");
}

TEST_F(SchemaTest, AFileThatIsNoDatabaseIsLeftUntouched) {
    const QString file = docs->writeFile("Wage32.db", "This is a letter to the bank, not a database.\n");
    const QByteArray before = fileHash(file);
    QString description;
    EXPECT_EQ(errorOf([&] { openOrCreate(DatabaseKind::Wage, file); }, &description), err::NotADatabase);
    EXPECT_TRUE(description.contains(file)) << description.toStdString();
    EXPECT_TRUE(description.contains("payroll")) << description.toStdString();
    EXPECT_EQ(fileHash(file), before);
    EXPECT_FALSE(QFile::exists(file + "-wal"));
    EXPECT_FALSE(QFile::exists(file + "-journal"));
}

TEST_F(SchemaTest, ADamagedDatabaseIsLeftUntouched) {
    QByteArray bytes("SQLite format 3");
    bytes.append('\0');
    bytes.append(QByteArray(4080, '\x5a'));
    const QString file = docs->writeFile("Farm32.db", bytes);
    const QByteArray before = fileHash(file);
    QString description;
    EXPECT_EQ(errorOf([&] { openOrCreate(DatabaseKind::Farm, file); }, &description), err::NotADatabase);
    EXPECT_TRUE(description.contains(file));
    EXPECT_EQ(fileHash(file), before);
}

TEST_F(SchemaTest, ADatabaseOfAnotherProgramIsLeftUntouched) {
    const QString file = path("Modules.db");
    {
        Database other;
        openOrCreate(DatabaseKind::Wage, path("seed.db")).close();
        QFile::copy(path("seed.db"), file); // a database, but of the payroll kind
    }
    const QByteArray before = fileHash(file);
    QString description;
    EXPECT_EQ(errorOf([&] { openOrCreate(DatabaseKind::Modules, file); }, &description), err::NotADatabase);
    EXPECT_TRUE(description.contains("TaxEquations")) << description.toStdString();
    EXPECT_EQ(fileHash(file), before);
}

TEST_F(SchemaTest, OpeningAMissingFileWithoutCreationFails) {
    Database db;
    QString description;
    EXPECT_EQ(errorOf([&] { db.open(path("nothing.db")); }, &description), 3024);
    EXPECT_TRUE(description.contains("nothing.db"));
    EXPECT_FALSE(QFile::exists(path("nothing.db")));
    EXPECT_FALSE(db.isOpen());
}

// ---- template rows ----

namespace {

// Yearly tax on an annual figure by the steps of a tax type, as the PAYE steps work: Single rates,
// Currency bands.
Currency annualTax(Database& db, int taxType, Currency annual) {
    auto rs = db.openRecordset(
        QStringLiteral("SELECT upperlimit, taxrate FROM TaxSteps WHERE taxtypeID = %1 ORDER BY upperlimit")
            .arg(taxType),
        RecordsetType::Snapshot);
    Currency total, lower, remaining = annual;
    while (!rs->EOF_() && remaining > Currency()) {
        const Currency upper = rs->value("upperlimit").value<Currency>();
        const float rate = rs->value("taxrate").toFloat() / 100.0f;
        const Currency band = upper - lower;
        const Currency amount = upper < annual ? band : remaining;
        total += Currency::fromDouble(amount.toDouble() * rate);
        remaining -= amount;
        lower = upper;
        rs->MoveNext();
    }
    return total;
}

// Weekly figure cut to cents, then per pay cut to cents. A band's Single rate can leave the yearly tax a
// ten-thousandth short, which the closing equations absorb; here the yearly tax is taken to the cent.
double payeOf(Database& db, double earnings, int paysPerYear) {
    const Currency annual = Currency::fromDouble(std::floor(earnings * paysPerYear));
    const double yearly = std::round(annualTax(db, 1, annual).toDouble() * 100) / 100;
    const double weekly = std::floor(yearly / 52 * 100 + 1e-6) / 100;
    return std::floor(weekly * 52 / paysPerYear * 100 + 1e-6) / 100;
}

} // namespace

TEST_F(SchemaTest, TemplateTaxStepsGiveThePublishedPaye) {
    Database db = openOrCreate(DatabaseKind::Wage, path("Wage32.db"));
    EXPECT_NEAR(annualTax(db, 1, Currency::fromLong(52000)).toDouble(), 8918.0,
                0.0005); // a ten-thousandth per band at most
    EXPECT_NEAR(annualTax(db, 1, Currency::fromLong(18000)).toDouble(), 2373.0, 0.0005);
    EXPECT_DOUBLE_EQ(payeOf(db, 1000.00, 52), 171.50);
    EXPECT_DOUBLE_EQ(payeOf(db, 300.00, 52), 36.75);
    EXPECT_DOUBLE_EQ(payeOf(db, 1500.00, 12), 197.73);
    // The levy stops at its maximum: above it the 33% band runs without it.
    const Currency at = annualTax(db, 1, Currency::fromLong(156641));
    const Currency above = annualTax(db, 1, Currency::fromLong(156642));
    EXPECT_NEAR((above - at).toDouble(), 0.33, 0.0001);
}

TEST_F(SchemaTest, TemplateFlatTypesHaveOneStepWithTheLevy) {
    Database db = openOrCreate(DatabaseKind::Wage, path("Wage32.db"));
    const QMap<QString, float> flat{{"SB", 12.25f}, {"S", 19.25f},  {"SH", 31.75f},
                                    {"ST", 34.75f}, {"SA", 40.75f}, {"ND", 46.75f}};
    for (auto it = flat.begin(); it != flat.end(); ++it) {
        auto rs =
            db.openRecordset(QStringLiteral("SELECT taxrate FROM TaxSteps INNER JOIN TaxTypes ON "
                                            "TaxTypes.TaxTypeID = TaxSteps.taxtypeID WHERE Taxname = '%1'")
                                 .arg(it.key()),
                             RecordsetType::Snapshot);
        rs->MoveLast();
        EXPECT_EQ(rs->RecordCount(), 1) << it.key().toStdString();
        EXPECT_FLOAT_EQ(rs->value(0).toFloat(), it.value()) << it.key().toStdString();
    }
    auto main =
        db.openRecordset("SELECT upperlimit FROM TaxSteps WHERE taxtypeID = 1", RecordsetType::Snapshot);
    main->MoveLast();
    EXPECT_EQ(main->RecordCount(), 6);
}

TEST_F(SchemaTest, TemplateRateAndNameRows) {
    Database db = openOrCreate(DatabaseKind::Wage, path("Wage32.db"));
    EXPECT_EQ(
        db.scalar("SELECT IntervalName FROM PayInterval WHERE Numberofdays=0 AND Paysperyear=0").toString(),
        "One-off");
    EXPECT_EQ(db.scalar("SELECT PaysPerYear FROM PayInterval WHERE IntervalName = 'Fortnightly'").toInt(),
              26);
    // ESCT: a yearly figure of 0 finds the first band; the bands start at their lower edges.
    EXPECT_DOUBLE_EQ(db.scalar("SELECT Max(Rate) AS RatePercent FROM ESCT WHERE Salary < 0").toDouble(),
                     0.105);
    EXPECT_DOUBLE_EQ(db.scalar("SELECT Max(Rate) FROM ESCT WHERE Salary < 18720").toDouble(), 0.105);
    EXPECT_DOUBLE_EQ(db.scalar("SELECT Max(Rate) FROM ESCT WHERE Salary < 18721").toDouble(), 0.175);
    EXPECT_DOUBLE_EQ(db.scalar("SELECT Max(Rate) FROM ESCT WHERE Salary < 300000").toDouble(), 0.39);
    EXPECT_EQ(db.scalar("SELECT Salary FROM ESCT ORDER BY Salary LIMIT 1").toInt(), -1);
    EXPECT_EQ(
        db.scalar("SELECT DeductionName FROM DeductNames WHERE lower(TaxName) = 'kiwisaver'").toString(),
        "KiwiSaver");
    EXPECT_FLOAT_EQ(db.scalar("SELECT Percentage FROM DeductNames WHERE DeductNameID = 1").toFloat(), 3.5f);
    // a few cents below the published 24,128, so that each per-pay threshold comes out right
    EXPECT_EQ(
        db.scalar("SELECT LowerThreshold FROM DeductNames WHERE DeductionName = 'Student Loan'").toDouble(),
        24127.90);
    EXPECT_EQ(
        db.scalar("SELECT count(*) FROM ContributionNames WHERE TaxName = 'kiwisaver' AND CountryPhone = 64")
            .toInt(),
        1);
    EXPECT_EQ(db.scalar("SELECT Cashbook FROM WageInfo").toInt(), 0);
    EXPECT_EQ(db.scalar("SELECT count(*) FROM WageInfo").toInt(), 1);
    EXPECT_EQ(db.scalar("SELECT Added FROM TransType WHERE TransTypeID = 4").toInt(), 1);
    EXPECT_EQ(db.scalar("SELECT Added FROM TransType WHERE TransTypeID = 2").toInt(), 0);
    EXPECT_EQ(db.scalar("SELECT Added FROM TransType WHERE TransTypeID = 3").toInt(), 0);
    EXPECT_EQ(db.scalar("SELECT count(*) FROM TransType").toInt(), 5);
    EXPECT_EQ(db.scalar("SELECT ExcludeKiwiSaver FROM TaxAllowName WHERE taxAllowancename = 'Accommodation'")
                  .toInt(),
              1);
    EXPECT_EQ(db.scalar("SELECT count(*) FROM PaymentNames WHERE Salary = True").toInt(), 1);
    // The payment list's name text: "Overtime (x1.5)".
    EXPECT_EQ(
        db.scalar("SELECT iif(Calculation>0, PayUnitname || ' (x' || vbstr(Calculation) || ')', PayUnitname) "
                  "FROM PaymentNames WHERE PaymentNameID = 2")
            .toString(),
        "Overtime (x1.5)");
}

TEST_F(SchemaTest, TemplateFarmRows) {
    Database farm = openOrCreate(DatabaseKind::Farm, path("Farm32.db"));
    EXPECT_EQ(farm.scalar("SELECT count(*) FROM [Farm Details]").toInt(), 1);
    EXPECT_EQ(farm.scalar("SELECT [Farm Name] FROM [Farm Details]").toString(), "");
    EXPECT_EQ(farm.scalar("SELECT count(*) FROM Partners WHERE PartnerDefault = True").toInt(), 1);
    EXPECT_EQ(farm.scalar("SELECT count(*) FROM Banks WHERE AccountType = 1").toInt(), 1);
    EXPECT_GE(farm.scalar("SELECT count(*) FROM Banks").toInt(), 2);
    for (int code : {401001, 401002, 401005, 401008})
        EXPECT_EQ(farm.scalar(QStringLiteral(
                                  "SELECT count(*) FROM [Secondary Codes] WHERE [Secondary Codes ID] = %1")
                                  .arg(code))
                      .toInt(),
                  1)
            << code;
    EXPECT_TRUE(farm.scalar("SELECT [Cached Name] FROM [Secondary Codes] WHERE [Secondary Codes ID] = 401001")
                    .toString()
                    .contains(":X"));
    auto periods = farm.openRecordset(
        "SELECT Months, Prompt From [Tax Periods] ORDER BY [Tax Periods].Months;", RecordsetType::Snapshot);
    QList<int> months;
    while (!periods->EOF_()) {
        months << periods->value("Months").toInt();
        periods->MoveNext();
    }
    EXPECT_EQ(months, QList<int>({1, 2, 6}));
    for (const char* t : {"Transactions", "TransactionDetails", "Addresses"})
        EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM %1").arg(t)).toInt(), 0) << t;
    // PayeInfo: one row, no account chosen yet.
    EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM PayeInfo")).toInt(), 1);
    EXPECT_EQ(farm.scalar(QStringLiteral("SELECT count(*) FROM PayeInfo WHERE WageAccount IS NULL AND PAYEAccount "
                                         "IS NULL AND PaymentAccount IS NULL AND AdjustAccount IS NULL"))
                  .toInt(),
              1);
}

TEST_F(SchemaTest, TemplateModulesRows) {
    Database modules = openOrCreate(DatabaseKind::Modules, path("Modules.db"));
    for (const char* group : {"Modules", "Tools", "Reports", "Help"})
        EXPECT_GT(
            modules
                .scalar(QStringLiteral("SELECT count(*) FROM MenuOptions WHERE MenuGroup = '%1'").arg(group))
                .toInt(),
            0)
            << group;
    EXPECT_EQ(modules.scalar("SELECT count(*) FROM ScreenHelp WHERE ScreenNumber = 7").toInt(), 1);
}

// A payroll file of the first version gets the indexes of the wage history when it is opened, once,
// and keeps its rows; the history's queries then read the index alone.
TEST_F(SchemaTest, AFileOfTheFirstVersionGetsTheHistoryIndexes) {
    {
        Database db = openOrCreate(DatabaseKind::Wage, path("Wage32.db"));
        db.executeScript("DROP INDEX WagesEmployeeHistory; DROP INDEX WagesEmployeeEntry;"
                         "CREATE INDEX WagesEmployeeDate ON Wages(EmployeeID, [Date]);");
        db.execute("INSERT INTO Employees (EmployeeID, TaxCode) VALUES (5, 'M')");
        db.execute("INSERT INTO Wages (EmployeeID, [Date], Gross) VALUES (5, '2026-04-07', 1000)");
        db.setUserVersion(1);
    }
    Database db = openOrCreate(DatabaseKind::Wage, path("Wage32.db"));
    EXPECT_EQ(db.userVersion(), 2);
    const QVariantList indexes =
        db.firstColumn("SELECT name FROM sqlite_master WHERE type = 'index' AND tbl_name = 'Wages' "
                       "AND name NOT LIKE 'sqlite_%' ORDER BY name");
    EXPECT_EQ(indexes, (QVariantList{"WagesEmployeeEntry", "WagesEmployeeHistory"}));
    EXPECT_EQ(db.scalar("SELECT Gross FROM Wages WHERE EmployeeID = 5").toDouble(), 1000.0);
    const QString plan =
        db.firstColumn("EXPLAIN QUERY PLAN SELECT WageID, Hours, Gross, TaxAllow, PAYE, TotalTaxable, "
                       "NonTaxAllow, Deductions, TakeHome, KiwiSaverContribution FROM Wages WHERE "
                       "EmployeeID = 5 ORDER BY Wages.Date")
            .value(0)
            .toString();
    EXPECT_TRUE(db.firstRow("EXPLAIN QUERY PLAN SELECT WageID, Hours, Gross, TaxAllow, PAYE, TotalTaxable, "
                            "NonTaxAllow, Deductions, TakeHome, KiwiSaverContribution FROM Wages WHERE "
                            "EmployeeID = 5 ORDER BY Wages.Date")
                    .value(3)
                    .toString()
                    .contains("COVERING INDEX WagesEmployeeHistory"))
        << plan.toStdString();
    db.close();
    // A second open changes nothing more.
    Database again = openOrCreate(DatabaseKind::Wage, path("Wage32.db"));
    EXPECT_EQ(again.userVersion(), 2);
}
