#include "EarningKinds.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"
#include <array>

namespace ql::holidays {

namespace {

struct KindInfo {
    EarningKind kind;
    const char* code;
    bool gross;
    bool owp;
    bool minimumWage;
};

// Gross earnings leave out what the employer is not bound to pay, reimbursements, the employer's
// superannuation, cashed-up holidays and the 8% paid as you go (which is worked out on them).
constexpr std::array<KindInfo, 20> kKinds{{
    {EarningKind::OrdinaryTime, "ordinary-time", true, true, true},
    {EarningKind::RegularOvertime, "overtime-regular", true, true, true},
    {EarningKind::IrregularOvertime, "overtime-irregular", true, false, true},
    {EarningKind::PublicHolidayWorked, "public-holiday-worked", true, false, true},
    {EarningKind::Productivity, "productivity", true, true, true},
    {EarningKind::DiscretionaryBonus, "discretionary-bonus", false, false, false},
    {EarningKind::TaxableAllowance, "taxable-allowance", true, true, false},
    {EarningKind::BoardLodging, "board-lodging", true, true, false},
    {EarningKind::AnnualLeavePay, "annual-leave", true, false, false},
    {EarningKind::PublicHolidayPay, "public-holiday", true, false, false},
    {EarningKind::AlternativeHolidayPay, "alternative-holiday", true, false, false},
    {EarningKind::SickLeavePay, "sick-leave", true, false, false},
    {EarningKind::BereavementLeavePay, "bereavement-leave", true, false, false},
    {EarningKind::FamilyViolenceLeavePay, "family-violence-leave", true, false, false},
    {EarningKind::FirstWeekAcc, "first-week-acc", true, false, false},
    {EarningKind::Reimbursement, "reimbursement", false, false, false},
    {EarningKind::EmployerSuperannuation, "employer-superannuation", false, false, false},
    {EarningKind::CashUp, "cash-up", false, false, false},
    {EarningKind::PayAsYouGo, "pay-as-you-go", false, false, false},
    {EarningKind::MinimumWageTopUp, "minimum-wage-top-up", true, false, true},
}};

const KindInfo& info(EarningKind kind) {
    for (const KindInfo& k : kKinds)
        if (k.kind == kind) return k;
    return kKinds.front();
}

struct NameTable {
    const char* alias;
    const char* table;
    const char* key;
    const char* name;
    EarningKind fallback;
};

constexpr std::array<NameTable, 3> kTables{{
    {"payment", "PaymentNames", "PaymentNameID", "PayUnitname", EarningKind::OrdinaryTime},
    {"taxable", "TaxAllowName", "TaxNameID", "taxAllowancename", EarningKind::TaxableAllowance},
    {"nontaxable", "NonTaxAllowName", "NonTaxNameID", "NonTaxallowname", EarningKind::Reimbursement},
}};

const NameTable& nameTable(const QString& alias) {
    for (const NameTable& t : kTables)
        if (alias == QLatin1String(t.alias)) return t;
    throw VbError(5, QStringLiteral("EarningKinds"),
                  QStringLiteral("\"%1\" is not a name table: payment, taxable or nontaxable.").arg(alias));
}

// The kind a name suggests; the user corrects what this gets wrong.
EarningKind guess(const QString& name, EarningKind fallback) {
    const QString n = name.toLower();
    auto has = [&n](const char* word) { return n.contains(QLatin1String(word)); };
    if (has("top-up") || has("top up")) return EarningKind::MinimumWageTopUp;
    if (has("public holiday worked")) return EarningKind::PublicHolidayWorked;
    if (has("8%") || has("pay as you go")) return EarningKind::PayAsYouGo;
    if (has("cash-up") || has("cash up")) return EarningKind::CashUp;
    if (has("alternative") || has("in lieu")) return EarningKind::AlternativeHolidayPay;
    if (has("public holiday")) return EarningKind::PublicHolidayPay;
    if (has("holiday") || has("annual leave")) return EarningKind::AnnualLeavePay;
    if (has("sick")) return EarningKind::SickLeavePay;
    if (has("accommodation") || has("board") || has("lodging")) return EarningKind::BoardLodging;
    if (n == QLatin1String("acc") || has("first week")) return EarningKind::FirstWeekAcc;
    if (has("bereavement")) return EarningKind::BereavementLeavePay;
    if (has("family violence")) return EarningKind::FamilyViolenceLeavePay;
    if (has("overtime") || has("double time")) return EarningKind::IrregularOvertime;
    if (has("bonus")) return EarningKind::DiscretionaryBonus;
    if (has("commission") || has("piece") || has("incentive")) return EarningKind::Productivity;
    if (has("reimburse") || has("meal") || has("clothing") || has("mileage")) return EarningKind::Reimbursement;
    if (has("superannuation")) return EarningKind::EmployerSuperannuation;
    return fallback;
}

bool hasColumn(Database& wage, const QString& table, const QString& column) {
    for (const QVariant& v : wage.firstColumn(QStringLiteral("SELECT name FROM pragma_table_info('%1')").arg(table)))
        if (v.toString().compare(column, Qt::CaseInsensitive) == 0) return true;
    return false;
}

} // namespace

QString KindCode(EarningKind kind) { return QString::fromLatin1(info(kind).code); }

EarningKind KindFromCode(const QString& code, bool* ok) {
    for (const KindInfo& k : kKinds)
        if (code.trimmed().compare(QLatin1String(k.code), Qt::CaseInsensitive) == 0) {
            if (ok) *ok = true;
            return k.kind;
        }
    if (ok) *ok = false;
    return EarningKind::OrdinaryTime;
}

QStringList KindCodes() {
    QStringList out;
    for (const KindInfo& k : kKinds)
        out << QString::fromLatin1(k.code);
    return out;
}

bool InGrossEarnings(EarningKind kind) { return info(kind).gross; }
bool InOrdinaryWeeklyPay(EarningKind kind) { return info(kind).owp; }
bool CountsForMinimumWage(EarningKind kind) { return info(kind).minimumWage; }

QStringList NameTables() { return {QStringLiteral("payment"), QStringLiteral("taxable"), QStringLiteral("nontaxable")}; }

void EnsureHolidayTables(Database& wage) {
    for (const NameTable& t : kTables) {
        const QString table = QString::fromLatin1(t.table);
        if (!hasColumn(wage, table, QStringLiteral("EarningKind")))
            wage.execute(QStringLiteral("ALTER TABLE %1 ADD COLUMN EarningKind TEXT(40)").arg(table));
        auto rs = wage.openRecordset(QStringLiteral("SELECT %1, %2 FROM %3 WHERE EarningKind IS NULL OR EarningKind = ''")
                                         .arg(QLatin1String(t.key), QLatin1String(t.name), table),
                                     RecordsetType::Snapshot);
        QList<QPair<qint32, QString>> missing;
        while (!rs->EOF_()) {
            const QVariant name = rs->value(1);
            missing.append({CLng(rs->value(0)), IsNull(name) ? QString() : CStr(name)});
            rs->MoveNext();
        }
        rs->Close();
        for (const auto& [id, name] : missing)
            wage.execute(QStringLiteral("UPDATE %1 SET EarningKind = ? WHERE %2 = ?").arg(table, QLatin1String(t.key)),
                         {KindCode(guess(name, t.fallback)), id});
    }
    wage.executeScript(QStringLiteral(
        "CREATE TABLE IF NOT EXISTS HolidayWorkPattern ("
        " EmployeeID LONG REFERENCES Employees(EmployeeID) ON DELETE CASCADE, FromDate DATETIME,"
        " Mon SINGLE, Tue SINGLE, Wed SINGLE, Thu SINGLE, Fri SINGLE, Sat SINGLE, Sun SINGLE,"
        " PRIMARY KEY (EmployeeID, FromDate));"
        "CREATE TABLE IF NOT EXISTS HolidayPayDays ("
        " WageID LONG PRIMARY KEY REFERENCES Wages(WageID) ON DELETE CASCADE,"
        " DaysWorked SINGLE, HoursWorked SINGLE);"
        "CREATE TABLE IF NOT EXISTS HolidayPayDayHours ("
        " WageID LONG REFERENCES Wages(WageID) ON DELETE CASCADE, WorkDate DATETIME, Hours SINGLE,"
        " PRIMARY KEY (WageID, WorkDate));"
        "CREATE TABLE IF NOT EXISTS HolidayTerms ("
        " EmployeeID LONG PRIMARY KEY REFERENCES Employees(EmployeeID) ON DELETE CASCADE,"
        " PayAsYouGo YESNO, MinimumWageRate TEXT(20), DailyPay TEXT(20), Region TEXT(40));"
        "CREATE TABLE IF NOT EXISTS HolidayAlternative ("
        " AlternativeID INTEGER PRIMARY KEY AUTOINCREMENT,"
        " EmployeeID LONG REFERENCES Employees(EmployeeID) ON DELETE CASCADE,"
        " EarnedOn DATETIME, TakenOn DATETIME, PaidOut DATETIME, Comments TEXT(255));"));
    // Terms added since: whether the employment is continuous, and a penal rate for public holidays worked.
    if (!hasColumn(wage, QStringLiteral("HolidayTerms"), QStringLiteral("Continuous")))
        wage.execute(QStringLiteral("ALTER TABLE HolidayTerms ADD COLUMN Continuous YESNO"));
    if (!hasColumn(wage, QStringLiteral("HolidayTerms"), QStringLiteral("PenalRate")))
        wage.execute(QStringLiteral("ALTER TABLE HolidayTerms ADD COLUMN PenalRate SINGLE"));
}

EarningKind NameKind(Database& wage, const QString& table, qint32 id) {
    const NameTable& t = nameTable(table);
    const QVariant v = wage.scalar(QStringLiteral("SELECT EarningKind FROM %1 WHERE %2 = %3")
                                       .arg(QLatin1String(t.table), QLatin1String(t.key))
                                       .arg(id));
    bool ok = false;
    const EarningKind k = KindFromCode(IsNull(v) ? QString() : v.toString(), &ok);
    return ok ? k : t.fallback;
}

void SetNameKind(Database& wage, const QString& table, qint32 id, const QString& code) {
    const NameTable& t = nameTable(table);
    bool ok = false;
    const EarningKind kind = KindFromCode(code, &ok);
    if (!ok)
        throw VbError(5, QStringLiteral("EarningKinds"),
                      QStringLiteral("\"%1\" is not a kind of earnings. The kinds are: %2.")
                          .arg(code, KindCodes().join(QStringLiteral(", "))));
    EnsureHolidayTables(wage);
    const int changed = wage.execute(
        QStringLiteral("UPDATE %1 SET EarningKind = ? WHERE %2 = ?").arg(QLatin1String(t.table), QLatin1String(t.key)),
        {KindCode(kind), id});
    if (changed == 0)
        throw VbError(5, QStringLiteral("EarningKinds"),
                      QStringLiteral("There is no %1 name %2.").arg(table).arg(id));
}

qint32 PaymentNameForKind(Database& wage, EarningKind kind, const QString& caption) {
    EnsureHolidayTables(wage);
    const QVariant found = wage.scalar(
        QStringLiteral("SELECT PaymentNameID FROM PaymentNames WHERE EarningKind = '%1' ORDER BY PaymentNameID LIMIT 1")
            .arg(KindCode(kind)));
    if (!IsNull(found)) return CLng(found);
    const qint32 id = CLng(wage.scalar(QStringLiteral("SELECT coalesce(max(PaymentNameID), 0) + 1 FROM PaymentNames")));
    wage.execute(QStringLiteral("INSERT INTO PaymentNames (PaymentNameID, PayUnitname, Calculation, Salary, EarningKind) "
                                "VALUES (?, ?, 0, 0, ?)"),
                 {id, caption, KindCode(kind)});
    return id;
}

} // namespace ql::holidays
