#include "EmployeeFields.h"
#include "StaffLookups.h"
#include "payengine/EmployeeTaxItems.h"
#include "payengine/TaxYear.h"
#include <QRegularExpression>
#include <cmath>

namespace ql {

namespace {

QString isoDate(const QDate& d) {
    return d.isValid() ? d.toString(Qt::ISODate) : QString();
}

// A number written as the shortest text that reads back the same: 25.5, 3.5, 120.
QString number(double v) {
    return QString::number(v, 'g', 12);
}

QString money(Currency c) {
    return c == Currency() ? QString() : number(c.toDouble());
}

QString notDate(const QString& label, const QString& text) {
    return QStringLiteral("%1: \"%2\" is not a date (write it as 2026-04-01 or 1/04/2026).").arg(label, text);
}

QString notNumber(const QString& label, const QString& text) {
    return QStringLiteral("%1: \"%2\" is not a number.").arg(label, text);
}

using Read = std::function<QString(EmployeeDetails&, const QString&)>;
using Write = std::function<QString(const EmployeeDetails&)>;

EmployeeField text(const char* option, const char* label, QString EmployeeDetails::*member) {
    return {QString::fromLatin1(option), QString::fromLatin1(label), false,
            [member](EmployeeDetails& d, const QString& t) {
                d.*member = t.trimmed();
                return QString();
            },
            [member](const EmployeeDetails& d) { return d.*member; }};
}

EmployeeField date(const char* option, const char* label, QDate EmployeeDetails::*member) {
    const QString name = QString::fromLatin1(label);
    return {QString::fromLatin1(option), name, false,
            [member, name](EmployeeDetails& d, const QString& t) {
                if (t.trimmed().isEmpty()) {
                    d.*member = QDate();
                    return QString();
                }
                const QDate v = ParseTypedDate(t);
                if (!v.isValid()) return notDate(name, t.trimmed());
                d.*member = v;
                return QString();
            },
            [member](const EmployeeDetails& d) { return isoDate(d.*member); }};
}

EmployeeField days(const char* option, const char* label, float EmployeeDetails::*member) {
    const QString name = QString::fromLatin1(label);
    return {QString::fromLatin1(option), name, false,
            [member, name](EmployeeDetails& d, const QString& t) {
                double v = 0;
                if (t.trimmed().isEmpty()) {
                    d.*member = 0;
                    return QString();
                }
                if (!ParseTypedNumber(t, v)) return notNumber(name, t.trimmed());
                d.*member = static_cast<float>(v);
                return QString();
            },
            [member](const EmployeeDetails& d) { return number(static_cast<double>(d.*member)); }};
}

EmployeeField amount(const char* option, const char* label, Currency EmployeeDetails::*member,
                     Currency EmployeeDetails::*other) {
    const QString name = QString::fromLatin1(label);
    return {QString::fromLatin1(option), name, false,
            [member, other, name](EmployeeDetails& d, const QString& t) {
                double v = 0;
                if (t.trimmed().isEmpty()) {
                    d.*member = Currency();
                    return QString();
                }
                if (!ParseTypedNumber(t, v)) return notNumber(name, t.trimmed());
                if (v < 0 || v > 10000000.0) return QStringLiteral("%1: %2 is out of range.").arg(name, t.trimmed());
                d.*member = Currency::fromDouble(v);
                d.*other = Currency();
                return QString();
            },
            [member](const EmployeeDetails& d) { return money(d.*member); }};
}

QString readKiwiSaver(EmployeeDetails& d, const QString& t) {
    const QString v = t.trimmed().toLower();
    if (v.isEmpty() || v == QLatin1String("no")) {
        d.KiwiSaver = KiwiSaverStatus::NotEnrolled;
        d.KiwiSaverRate = 0;
        return QString();
    }
    if (v == QLatin1String("opted-out") || v == QLatin1String("opted out")) {
        d.KiwiSaver = KiwiSaverStatus::OptedOut;
        d.KiwiSaverRate = 0;
        return QString();
    }
    double rate = 0;
    QString digits = v;
    digits.remove(u'%');
    if (ParseTypedNumber(digits, rate))
        for (const float allowed : KiwiSaverEmployeeRates())
            if (std::abs(static_cast<double>(allowed) - rate) < 1e-6) {
                d.KiwiSaver = KiwiSaverStatus::Enrolled;
                d.KiwiSaverRate = allowed;
                return QString();
            }
    return QStringLiteral("KiwiSaver: \"%1\" is not a choice: no, opted-out, or the employee's rate 3, 3.5, 4, 6, "
                          "8 or 10.")
        .arg(t.trimmed());
}

QString writeKiwiSaver(const EmployeeDetails& d) {
    switch (d.KiwiSaver) {
    case KiwiSaverStatus::Enrolled:
        // A Single's own digits: 3.5 as kept is 3.4999998 as a double, which is no choice of the box.
        return QString::number(static_cast<double>(d.KiwiSaverRate), 'g', 7);
    case KiwiSaverStatus::OptedOut:
        return QStringLiteral("opted-out");
    default:
        return QStringLiteral("no");
    }
}

// NAME=AMOUNT or NAME=RATE% into a list of standing lines; an empty text clears the list.
QString readStandingLine(QList<StandingDeduction>& lines, const QString& label, const QString& t) {
    const QString v = t.trimmed();
    if (v.isEmpty()) {
        lines.clear();
        return QString();
    }
    const int eq = v.lastIndexOf(u'=');
    if (eq <= 0) return QStringLiteral("%1: \"%2\" is not NAME=AMOUNT or NAME=RATE%.").arg(label, v);
    StandingDeduction s;
    s.name = v.left(eq).trimmed();
    QString value = v.mid(eq + 1).trimmed();
    s.percent = value.endsWith(u'%');
    if (s.percent) value.chop(1);
    double n = 0;
    if (!ParseTypedNumber(value, n) || n < 0)
        return QStringLiteral("%1: \"%2\" is not NAME=AMOUNT or NAME=RATE%.").arg(label, v);
    if (s.percent) {
        if (n > 100) return QStringLiteral("%1: %2 takes at most 100%.").arg(label, s.name);
        s.rate = static_cast<float>(n);
    } else {
        s.amount = Currency::fromDouble(n);
    }
    lines << s;
    return QString();
}

QString writeStandingLines(const QList<StandingDeduction>& lines) {
    QStringList parts;
    for (const StandingDeduction& s : lines) parts << s.text();
    return parts.join(QStringLiteral("; "));
}

QString readDeduction(EmployeeDetails& d, const QString& t) {
    return readStandingLine(d.Deductions, QStringLiteral("Deduction"), t);
}

QString writeDeductions(const EmployeeDetails& d) {
    return writeStandingLines(d.Deductions);
}

QString readContribution(EmployeeDetails& d, const QString& t) {
    return readStandingLine(d.Contributions, QStringLiteral("Employer contribution"), t);
}

QString writeContributions(const EmployeeDetails& d) {
    return writeStandingLines(d.Contributions);
}

QString readStcRate(EmployeeDetails& d, const QString& t) {
    QString v = t.trimmed();
    if (v.endsWith(u'%')) v.chop(1);
    if (v.isEmpty()) {
        d.STCRate = 0;
        return QString();
    }
    qint32 rate = 0;
    if (!ParseRatePercent(v, rate) || rate == 0)
        return QStringLiteral("Special tax code rate: \"%1\" is not a per cent above 0 and at most 100, with at most "
                              "three decimals.")
            .arg(t.trimmed());
    d.STCRate = rate;
    return QString();
}

QString writeStcRate(const EmployeeDetails& d) {
    return d.STCRate > 0 ? RateText(d.STCRate) : QString();
}

QList<EmployeeField> makeFields() {
    using D = EmployeeDetails;
    QList<EmployeeField> f;
    f << text("first", "First name", &D::FirstName) << text("last", "Last name", &D::LastName)
      << date("start", "Start date", &D::DateHired);
    f << EmployeeField{QStringLiteral("tax-code"), QStringLiteral("Tax code"), false,
                       [](D& d, const QString& t) {
                           d.TaxCode = NormalTaxCode(t);
                           return QString();
                       },
                       [](const D& d) { return d.TaxCode; }};
    f << EmployeeField{QStringLiteral("stc-rate"), QStringLiteral("Special tax code rate"), false, readStcRate,
                       writeStcRate};
    f << EmployeeField{QStringLiteral("interval"), QStringLiteral("Pay interval"), false,
                       [](D& d, const QString& t) {
                           d.Interval = t.trimmed().toLower();
                           return QString();
                       },
                       [](const D& d) { return d.Interval; }};
    f << amount("rate", "Hourly rate", &D::PayRate, &D::YearlyTotal)
      << amount("salary", "Yearly salary", &D::YearlyTotal, &D::PayRate);
    f << text("ird", "IRD number", &D::IRDNumber) << date("birth", "Date of birth", &D::Birthdate)
      << text("address", "Address", &D::Address) << text("city", "City", &D::City)
      << text("email", "Email", &D::Email) << text("occupation", "Occupation", &D::Occupation)
      << days("hours", "Usual hours a pay", &D::UsualHours);
    f << EmployeeField{QStringLiteral("kiwisaver"), QStringLiteral("KiwiSaver"), false, readKiwiSaver,
                       writeKiwiSaver};
    f << EmployeeField{QStringLiteral("kiwisaver-status"), QStringLiteral("KiwiSaver status"), false,
                       [](D& d, const QString& t) {
                           d.KiwiSaverStatusCode = t.trimmed().toUpper();
                           return QString();
                       },
                       [](const D& d) { return d.KiwiSaverStatusCode; }};
    f << date("kiwisaver-start", "KiwiSaver start date", &D::KiwiSaverStartDate)
      << days("employer-kiwisaver", "Employer KiwiSaver rate", &D::EmployerKiwiSaverRate)
      << text("account", "Bank account", &D::Account)
      << days("annual-leave", "Annual leave (days a year)", &D::AnnualLeaveDays)
      << days("leave-brought-forward", "Leave brought forward (days)", &D::LeaveBroughtForward);
    f << EmployeeField{QStringLiteral("deduction"), QStringLiteral("Deduction"), true, readDeduction,
                       writeDeductions};
    f << date("finish", "Finish date", &D::DateFinished);
    f << EmployeeField{QStringLiteral("contribution"), QStringLiteral("Employer contribution"), true,
                       readContribution, writeContributions};
    return f;
}

} // namespace

QString StandingDeduction::text() const {
    return name + u'=' + (percent ? number(static_cast<double>(rate)) + u'%' : number(amount.toDouble()));
}

const QList<float>& KiwiSaverEmployeeRates() {
    static const QList<float> rates{3.0f, 3.5f, 4.0f, 6.0f, 8.0f, 10.0f};
    return rates;
}

const QList<EmployeeField>& EmployeeFields() {
    static const QList<EmployeeField> fields = makeFields();
    return fields;
}

const EmployeeField* FindEmployeeField(const QString& option) {
    for (const EmployeeField& f : EmployeeFields())
        if (f.option == option) return &f;
    return nullptr;
}

QString EmployeeColumnName(const QString& option) {
    return QString(option).remove(u'-');
}

const EmployeeField* FindEmployeeColumn(const QString& column) {
    const QString wanted = column.trimmed().toLower();
    for (const EmployeeField& f : EmployeeFields())
        if (EmployeeColumnName(f.option) == wanted) return &f;
    return nullptr;
}

QList<FieldProblem> ApplyEmployeeValues(EmployeeDetails& details, const QList<QPair<QString, QString>>& values) {
    QList<FieldProblem> problems;
    bool rate = false, salary = false;
    QStringList cleared;
    for (const auto& [option, value] : values) {
        if (option == QLatin1String("rate")) rate = true;
        if (option == QLatin1String("salary")) salary = true;
    }
    if (rate && salary)
        problems << FieldProblem{QStringLiteral("salary"),
                                 QStringLiteral("Hourly rate and yearly salary: give one of them, not both.")};
    for (const auto& [option, value] : values) {
        const EmployeeField* f = FindEmployeeField(option);
        if (!f) {
            problems << FieldProblem{option, QStringLiteral("\"%1\" is not a field of an employee.").arg(option)};
            continue;
        }
        if (f->repeatable && !cleared.contains(option)) {
            f->read(details, QString());
            cleared << option;
            if (value.trimmed().isEmpty()) continue;
        }
        const QString problem = f->read(details, value);
        if (!problem.isEmpty()) problems << FieldProblem{option, problem};
    }
    // A special tax code's rate goes with that code: given with another it is refused; a code changed
    // away from STC leaves its rate behind.
    bool stcRateGiven = false;
    for (const auto& [option, value] : values)
        if (option == QLatin1String("stc-rate") && !value.trimmed().isEmpty()) stcRateGiven = true;
    if (!IsSpecialTaxCode(details.TaxCode)) {
        if (stcRateGiven && details.STCRate > 0)
            problems << FieldProblem{QStringLiteral("stc-rate"),
                                     QStringLiteral("Special tax code rate: only with tax code STC (the tax code is "
                                                    "%1).")
                                         .arg(NormalTaxCode(details.TaxCode))};
        details.STCRate = 0;
    }
    return problems;
}

QDate ParseTypedDate(const QString& text) {
    const QString t = text.trimmed();
    static const QRegularExpression iso(QStringLiteral("^(\\d{4})-(\\d{2})-(\\d{2})$"));
    static const QRegularExpression nz(QStringLiteral("^(\\d{1,2})/(\\d{1,2})/(\\d{4})$"));
    if (const auto m = iso.match(t); m.hasMatch())
        return QDate(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    if (const auto m = nz.match(t); m.hasMatch())
        return QDate(m.captured(3).toInt(), m.captured(2).toInt(), m.captured(1).toInt());
    return QDate();
}

bool ParseTypedNumber(const QString& text, double& value) {
    QString t = text.trimmed();
    if (t.startsWith(u'$')) t = t.mid(1);
    static const QRegularExpression shape(QStringLiteral("^(\\d{1,3}(,\\d{3})+|\\d+)(\\.\\d+)?$|^\\.\\d+$"));
    if (!shape.match(t).hasMatch()) return false;
    t.remove(u',');
    bool ok = false;
    value = t.toDouble(&ok);
    return ok && std::isfinite(value);
}

} // namespace ql
