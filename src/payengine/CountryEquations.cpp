#include "CountryEquations.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "data/RoundCurrency.h"
#include "formula/TaxEvaluator.h"
#include "formula/fhCEval.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "runtime/Convert.h"
#include "runtime/Trap.h"
#include <memory>

namespace ql {

namespace {

constexpr qint32 InfixCountry = 64;

struct Substitution {
    const char* name;
    // Letters replaced in this order, each by the value of the same position: 'a' the amount, 'x' the
    // credit, 'p' the pays.
    const char* letters;
    const char* values;
};

// Searched in this order; the first name present decides which letters are filled in. The names are
// capitals, so they survive the replacement of the lower-case letters.
const Substitution kSubstitutions[] = {
    {"SALARY", "xp", "ap"},      {"ROUND", "x", "a"},       {"PAYE", "tp", "ap"},
    {"METAXCODE", "txp", "axp"}, {"MLTAXCODE", "tp", "ap"},
};

} // namespace

QString CountryEquationExpression(const QString& equation, qint32 country, Currency amount, float p,
                                  Currency x) {
    const QString amountText = CStr(amount);
    const QString creditText = CStr(x);
    const QString paysText = CStr(p);
    auto valueText = [&](char which) -> const QString& {
        return which == 'a' ? amountText : which == 'x' ? creditText : paysText;
    };

    QString expression;
    if (country == InfixCountry) {
        for (const Substitution& s : kSubstitutions) {
            if (!equation.contains(QLatin1String(s.name), Qt::CaseInsensitive)) continue;
            expression = equation;
            for (int i = 0; s.letters[i]; ++i)
                expression.replace(QChar::fromLatin1(s.letters[i]), valueText(s.values[i]),
                                   Qt::CaseSensitive);
            break;
        }
        return expression;
    }
    expression.reserve(equation.size() * 2);
    for (QChar c : equation) {
        switch (c.unicode()) {
        case 'd':
        case 'D':
        case 't':
        case 'T':
            expression += amountText;
            break;
        case 'p':
        case 'P':
            expression += paysText;
            break;
        default:
            expression += c;
        }
    }
    return expression;
}

Currency CountrySpecificEquation(Currency amount, float paysPerYear, qint32 taxProcessID, Currency x) {
    float p = paysPerYear;
    if (p == 0.0f) p = 1.0f;
    double value = amount.toDouble() * static_cast<double>(p);

    trap(QStringLiteral("CountrySpecificEquation"), [&] {
        const qint32 country = CountryPhone();
        const QString sql = QStringLiteral("Select Equation from TaxEquations where TaxProcessID = ") +
                            QString::number(taxProcessID) + QStringLiteral(" and CountryPhone =") +
                            QString::number(country);
        Database modules;
        std::unique_ptr<Recordset> rs;
        // Whatever way the body ends, the query and the database are closed before we go on.
        struct Closer {
            Database& db;
            std::unique_ptr<Recordset>& rs;
            ~Closer() {
                skipErrors([&] {
                    if (rs) rs->Close();
                });
                skipErrors([&] { db.close(); });
            }
        } closer{modules, rs};

        modules.open(ModuleFileName());
        rs = modules.openRecordset(sql, RecordsetType::Snapshot);
        if (rs->EOF_()) {
            value = value / static_cast<double>(p);
            return;
        }
        const QVariant equation = rs->value(QStringLiteral("Equation"));
        if (IsNull(equation)) return;

        const QString expression = CountryEquationExpression(equation.toString(), country, amount, p, x);
        if (expression.isEmpty()) return;
        if (country == InfixCountry) {
            TaxEvaluator evaluator;
            evaluator.setExpression(expression);
            value = evaluator.Result();
        } else {
            fhCEval evaluator;
            value = evaluator.DoEvaluate(expression + QLatin1Char(' '));
        }
    });

    return RoundCurrency(QVariant(value));
}

Currency CalcPercentOf(Currency amount, float percentage) {
    const double a = CountrySpecificEquation(amount, 0.0f, TaxProcessRound, Currency()).toDouble();
    const Currency b = Currency::fromDouble(a * static_cast<double>(percentage) / 100.0);
    return CountrySpecificEquation(b, 0.0f, TaxProcessRound, Currency());
}

} // namespace ql
