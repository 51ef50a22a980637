#pragma once
// A fresh documents folder with the family file naming the country, a modules database at the path
// of the setting, and the errors that traps report collected.
#include "TestEnv.h"
#include "data/Database.h"
#include "runtime/Currency.h"
#include <QVariant>
#include <ostream>
#include <vector>

namespace ql {
inline void PrintTo(const Currency& c, std::ostream* os) {
    *os << c.toFixed4().toStdString();
}
} // namespace ql

namespace eqtest {

struct Reported {
    QString description;
    QString location;
};

class EquationTest : public qltest::DocumentsTest {
protected:
    void SetUp() override;
    void TearDown() override;

    void setCountry(int country);
    // A modules database with the template rows.
    void createTemplateModules();
    // A modules database with an empty TaxEquations table.
    void createEmptyModules();
    // Replaces the row of process and country (Null stores a null Equation).
    void setEquation(int process, int country, const QVariant& equation);
    void removeEquation(int process, int country);
    QVariant storedEquation(int process, int country);

    std::vector<Reported> reported;
};

inline ql::Currency cur(const char* text) {
    const QString t = QString::fromLatin1(text);
    const bool negative = t.startsWith(u'-');
    const QString body = negative ? t.mid(1) : t;
    const QStringList parts = body.split(u'.');
    qint64 raw = parts[0].toLongLong() * 10000;
    if (parts.size() > 1) raw += parts[1].leftJustified(4, u'0').left(4).toLongLong();
    return ql::Currency::fromRaw(negative ? -raw : raw);
}

} // namespace eqtest
