#include "EquationTest.h"
#include "data/Schema.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "runtime/Trap.h"
#include <QFile>

namespace eqtest {

void EquationTest::SetUp() {
    docs->writeFile(QStringLiteral("Fernhold/Common/Fernhold.ini"), "[WINDOWS]\r\nCountry=64\r\n");
    ql::setErrorReporter([this](const ql::VbError& e, const QString& location) {
        reported.push_back({e.description(), location});
    });
}

void EquationTest::TearDown() {
    ql::setErrorReporter(nullptr);
}

void EquationTest::setCountry(int country) {
    ql::WriteSetting(QStringLiteral("WINDOWS"), QStringLiteral("Country"), QString::number(country));
    ASSERT_EQ(ql::CountryPhone(), country);
}

void EquationTest::createTemplateModules() {
    ql::openOrCreate(ql::DatabaseKind::Modules, ql::ModuleFileName()).close();
}

void EquationTest::createEmptyModules() {
    ql::Database db = ql::openOrCreate(ql::DatabaseKind::Modules, ql::ModuleFileName());
    db.execute(QStringLiteral("DELETE FROM TaxEquations"));
    db.close();
}

void EquationTest::setEquation(int process, int country, const QVariant& equation) {
    removeEquation(process, country);
    ql::Database db;
    db.open(ql::ModuleFileName());
    db.execute(
        QStringLiteral("INSERT INTO TaxEquations (TaxProcessID, CountryPhone, Equation) VALUES (?, ?, ?)"),
        {process, country, equation});
    db.close();
}

void EquationTest::removeEquation(int process, int country) {
    ql::Database db;
    db.open(ql::ModuleFileName());
    db.execute(QStringLiteral("DELETE FROM TaxEquations WHERE TaxProcessID = ? AND CountryPhone = ?"),
               {process, country});
    db.close();
}

QVariant EquationTest::storedEquation(int process, int country) {
    ql::Database db;
    db.open(ql::ModuleFileName());
    const QVariant v = db.scalar(QStringLiteral("SELECT Equation FROM TaxEquations WHERE TaxProcessID = %1 "
                                                "AND CountryPhone = %2")
                                     .arg(process)
                                     .arg(country));
    db.close();
    return v;
}

} // namespace eqtest
