#include "StaffLookups.h"
#include "data/Recordset.h"
#include "frame/Settings.h"
#include "runtime/Convert.h"
#include <QRegularExpression>

namespace ql {

namespace {

// The codes that may carry a student loan.
bool takesStudentLoan(const QString& base) {
    static const QStringList codes{QStringLiteral("M"),  QStringLiteral("ME"), QStringLiteral("SB"),
                                   QStringLiteral("S"),  QStringLiteral("SH"), QStringLiteral("ST"),
                                   QStringLiteral("SA"), QStringLiteral("STC")};
    return codes.contains(base);
}

QString baseOf(const QString& normal) {
    return normal.endsWith(QStringLiteral(" SL")) ? normal.left(normal.size() - 3) : normal;
}

QString optionOf(const QString& intervalName) {
    return intervalName.trimmed().toLower().replace(u' ', u'-');
}

} // namespace

QString NormalTaxCode(const QString& code) {
    QString c = code.trimmed().toUpper();
    c.replace(QRegularExpression(QStringLiteral("\\s+")), QString());
    if (c.size() > 2 && c.endsWith(QStringLiteral("SL"))) c = c.left(c.size() - 2) + QStringLiteral(" SL");
    return c;
}

QStringList KnownTaxCodes(Database& wage) {
    QStringList bases;
    auto rs = wage.openRecordset(QStringLiteral("SELECT Taxname FROM TaxTypes ORDER BY [Order], TaxTypeID"),
                                 RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) {
        const QVariant v = rs->value(0);
        if (IsNull(v)) continue;
        const QString name = CStr(v).trimmed().toUpper();
        if (name.isEmpty() || name.contains(u' ') || bases.contains(name)) continue;
        bases << name;
        if (name == QLatin1String("M")) bases << QStringLiteral("ME");
    }
    rs->Close();
    QStringList codes;
    for (const QString& b : bases) {
        codes << b;
        if (takesStudentLoan(b)) codes << b + QStringLiteral(" SL");
    }
    // The special tax code's type is made when an employee first has it (EnsureSpecialTaxType).
    if (CountryPhone() == 64 && !codes.contains(QStringLiteral("STC")))
        codes << QStringLiteral("STC") << QStringLiteral("STC SL");
    return codes;
}

qint32 TaxTypeOfCode(Database& wage, const QString& code) {
    const QString normal = NormalTaxCode(code);
    if (!KnownTaxCodes(wage).contains(normal)) return 0;
    QString base = baseOf(normal);
    if (base == QLatin1String("ME")) base = QStringLiteral("M");
    const QVariant id = wage.scalar(
        QStringLiteral("SELECT TaxTypeID FROM TaxTypes WHERE upper(trim(Taxname)) = '%1' ORDER BY TaxTypeID LIMIT 1")
            .arg(base));
    return IsNull(id) ? 0 : CLng(id);
}

QList<PayIntervalChoice> PayIntervalChoices(Database& wage) {
    QList<PayIntervalChoice> list;
    auto rs = wage.openRecordset(QStringLiteral("SELECT PayIntervalID, IntervalName, PaysPerYear FROM PayInterval "
                                                "WHERE PaysPerYear > 0 ORDER BY PayIntervalID"),
                                 RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) {
        PayIntervalChoice c;
        c.id = CLng(rs->value(0));
        c.name = IsNull(rs->value(1)) ? QString() : CStr(rs->value(1)).trimmed();
        c.option = optionOf(c.name);
        c.paysPerYear = CSng(rs->value(2));
        list << c;
    }
    rs->Close();
    return list;
}

PayIntervalChoice FindPayInterval(Database& wage, const QString& text) {
    const QString wanted = optionOf(text);
    for (const PayIntervalChoice& c : PayIntervalChoices(wage))
        if (c.option == wanted) return c;
    return {};
}

QString PayIntervalOption(Database& wage, qint32 payIntervalID) {
    for (const PayIntervalChoice& c : PayIntervalChoices(wage))
        if (c.id == payIntervalID) return c.option;
    return QString();
}

QList<OccupationChoice> OccupationChoices(Database& wage) {
    QList<OccupationChoice> list;
    auto rs = wage.openRecordset(
        QStringLiteral("SELECT EmployeeTypeID, EmployeeType, "
                       "(SELECT count(*) FROM PaymentTypes INNER JOIN PaymentNames ON PaymentTypes.PaymentNameID = "
                       "PaymentNames.PaymentNameID WHERE PaymentTypes.EmployeeTypeID = EmployeeAwardType.EmployeeTypeID "
                       "AND PaymentNames.Salary = 1) AS Salaried, "
                       "(SELECT count(*) FROM PaymentTypes INNER JOIN PaymentNames ON PaymentTypes.PaymentNameID = "
                       "PaymentNames.PaymentNameID WHERE PaymentTypes.EmployeeTypeID = EmployeeAwardType.EmployeeTypeID "
                       "AND PaymentNames.Salary = 0) AS Hourly "
                       "FROM EmployeeAwardType ORDER BY EmployeeTypeID"),
        RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) {
        OccupationChoice c;
        c.id = CLng(rs->value(0));
        c.name = IsNull(rs->value(1)) ? QString() : CStr(rs->value(1)).trimmed();
        c.salaried = CLng(rs->value(2)) > 0;
        c.hourly = CLng(rs->value(3)) > 0;
        list << c;
    }
    rs->Close();
    return list;
}

OccupationChoice FindOccupation(Database& wage, const QString& name) {
    for (const OccupationChoice& c : OccupationChoices(wage))
        if (c.name.compare(name.trimmed(), Qt::CaseInsensitive) == 0) return c;
    return {};
}

QStringList StandingDeductionNames(Database& wage) {
    QStringList names;
    auto rs = wage.openRecordset(
        QStringLiteral("SELECT DeductionName, TaxName FROM DeductNames WHERE CountryPhone IN (0, 64) "
                       "ORDER BY DeductNameID"),
        RecordsetType::Snapshot);
    for (; !rs->EOF_(); rs->MoveNext()) {
        const QString tax = IsNull(rs->value(1)) ? QString() : CStr(rs->value(1)).toLower();
        if (tax == QLatin1String("kiwisaver") || tax == QLatin1String("studentloan")) continue;
        if (!IsNull(rs->value(0))) names << CStr(rs->value(0)).trimmed();
    }
    rs->Close();
    return names;
}

qint32 DeductionIdByName(Database& wage, const QString& name) {
    const QVariant v = wage.scalar(QStringLiteral("SELECT DeductNameID FROM DeductNames WHERE lower(trim(DeductionName)) "
                                                  "= lower('%1') ORDER BY DeductNameID LIMIT 1")
                                       .arg(QString(name.trimmed()).replace(u'\'', QStringLiteral("''"))));
    return IsNull(v) ? 0 : CLng(v);
}

qint32 DeductionIdByTaxName(Database& wage, const QString& taxName) {
    const QVariant v = wage.scalar(
        QStringLiteral("SELECT DeductNameID FROM DeductNames WHERE lower(TaxName) = '%1' ORDER BY DeductNameID LIMIT 1")
            .arg(taxName.toLower()));
    return IsNull(v) ? 0 : CLng(v);
}

QStringList StandingContributionNames(Database& wage) {
    QStringList names;
    const QVariantList rows = wage.firstColumn(
        QStringLiteral("SELECT ContributionName FROM ContributionNames WHERE CountryPhone IN (0, 64) AND "
                       "lower(coalesce(TaxName, '')) <> 'kiwisaver' AND ContributionName IS NOT NULL "
                       "ORDER BY ContributionNameID"));
    for (const QVariant& v : rows) names << CStr(v).trimmed();
    return names;
}

qint32 ContributionIdByName(Database& wage, const QString& name) {
    const QVariant v = wage.scalar(QStringLiteral("SELECT ContributionNameID FROM ContributionNames WHERE "
                                                  "lower(trim(ContributionName)) = lower('%1') ORDER BY "
                                                  "ContributionNameID LIMIT 1")
                                       .arg(QString(name.trimmed()).replace(u'\'', QStringLiteral("''"))));
    return !v.isValid() || IsNull(v) ? 0 : CLng(v);
}

qint32 ContributionIdByTaxName(Database& wage, const QString& taxName) {
    const QVariant v = wage.scalar(QStringLiteral("SELECT ContributionNameID FROM ContributionNames WHERE "
                                                  "lower(TaxName) = '%1' ORDER BY ContributionNameID LIMIT 1")
                                       .arg(taxName.toLower()));
    return IsNull(v) ? 0 : CLng(v);
}

} // namespace ql
