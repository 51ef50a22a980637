#include "CountryEquations.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "data/RoundCurrency.h"
#include "formula/TaxEvaluator.h"
#include "formula/fhCEval.h"
#include "frame/FileStamp.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "runtime/Convert.h"
#include "runtime/Trap.h"
#include <QHash>
#include <QMutex>
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

namespace {

// A row of TaxEquations as read: none, Null, or its text.
struct EquationRow {
    bool found = false;
    bool isNull = false;
    QString text;
};

// The rows read from one modules database, remembered while the file and its write-ahead log keep
// their stamps: an edit by any program changes the stamp, and the next call reads the table again.
struct ModulesMemo {
    QString path;
    FileStamp file, wal;
    QHash<qint64, EquationRow> rows; // process << 32 | country
};

QMutex& modulesMemoLock() {
    static QMutex m;
    return m;
}
ModulesMemo& modulesMemo() {
    static ModulesMemo m;
    return m;
}

qint64 rowKey(qint32 process, qint32 country) {
    return (qint64(process) << 32) | quint32(country);
}

EquationRow readEquationRow(const QString& path, qint32 taxProcessID, qint32 country) {
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

    modules.open(path);
    rs = modules.openRecordset(sql, RecordsetType::Snapshot);
    EquationRow row;
    if (rs->EOF_()) return row;
    row.found = true;
    const QVariant equation = rs->value(QStringLiteral("Equation"));
    row.isNull = IsNull(equation);
    if (!row.isNull) row.text = equation.toString();
    return row;
}

// The row of a process and country, from memory while the file is unchanged; a failure to read
// raises as the read does.
EquationRow equationRow(const QString& path, qint32 taxProcessID, qint32 country) {
    const FileStamp file = FileStamp::of(path);
    const FileStamp wal = FileStamp::of(path + QStringLiteral("-wal"));
    const qint64 key = rowKey(taxProcessID, country);
    {
        QMutexLocker lock(&modulesMemoLock());
        ModulesMemo& memo = modulesMemo();
        if (memo.path != path || !memo.file.sameAs(file) || !memo.wal.sameAs(wal)) {
            memo.rows.clear();
            memo.path = path;
            memo.file = file;
            memo.wal = wal;
        } else if (auto it = memo.rows.constFind(key); it != memo.rows.constEnd()) {
            return *it;
        }
    }
    const EquationRow row = readEquationRow(path, taxProcessID, country);
    if (file.exists) {
        QMutexLocker lock(&modulesMemoLock());
        ModulesMemo& memo = modulesMemo();
        if (memo.path == path && memo.file.sameAs(file) && memo.wal.sameAs(wal)) memo.rows.insert(key, row);
    }
    return row;
}

} // namespace

Currency CountrySpecificEquation(Currency amount, float paysPerYear, qint32 taxProcessID, Currency x) {
    float p = paysPerYear;
    if (p == 0.0f) p = 1.0f;
    double value = amount.toDouble() * static_cast<double>(p);

    trap(QStringLiteral("CountrySpecificEquation"), [&] {
        const qint32 country = CountryPhone();
        const EquationRow row = equationRow(ModuleFileName(), taxProcessID, country);
        if (!row.found) {
            value = value / static_cast<double>(p);
            return;
        }
        if (row.isNull) return;

        const QString expression = CountryEquationExpression(row.text, country, amount, p, x);
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
