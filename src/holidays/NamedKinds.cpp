#include "NamedKinds.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include <array>

namespace ql::holidays {

namespace {

struct Source {
    const char* alias;
    const char* table;
    const char* key;
    const char* name;
};

constexpr std::array<Source, 3> kSources{{
    {"payment", "PaymentNames", "PaymentNameID", "PayUnitname"},
    {"taxable", "TaxAllowName", "TaxNameID", "taxAllowancename"},
    {"nontaxable", "NonTaxAllowName", "NonTaxNameID", "NonTaxallowname"},
}};

} // namespace

QList<NamedKind> NamedKinds(Database& wage) {
    EnsureHolidayTables(wage);
    QList<NamedKind> out;
    for (const Source& s : kSources) {
        auto rs = wage.openRecordset(QStringLiteral("SELECT %1, %2, EarningKind FROM %3 ORDER BY %1")
                                         .arg(QLatin1String(s.key), QLatin1String(s.name), QLatin1String(s.table)),
                                     RecordsetType::Snapshot);
        for (; !rs->EOF_(); rs->MoveNext()) {
            NamedKind n;
            n.table = QLatin1String(s.alias);
            n.id = CLng(rs->value(0));
            n.name = IsNull(rs->value(1)) ? QString() : CStr(rs->value(1));
            n.code = IsNull(rs->value(2)) ? QString() : CStr(rs->value(2));
            n.kind = NameKind(wage, n.table, n.id);
            out << n;
        }
        rs->Close();
    }
    return out;
}

QString KindCaption(EarningKind kind) {
    switch (kind) {
    case EarningKind::OrdinaryTime: return QStringLiteral("Ordinary time");
    case EarningKind::RegularOvertime: return QStringLiteral("Regular overtime");
    case EarningKind::IrregularOvertime: return QStringLiteral("Irregular overtime");
    case EarningKind::PublicHolidayWorked: return QStringLiteral("Public holiday worked");
    case EarningKind::Productivity: return QStringLiteral("Productivity or incentive payment");
    case EarningKind::DiscretionaryBonus: return QStringLiteral("Discretionary bonus");
    case EarningKind::TaxableAllowance: return QStringLiteral("Taxable allowance");
    case EarningKind::BoardLodging: return QStringLiteral("Board or lodging (cash value)");
    case EarningKind::AnnualLeavePay: return QStringLiteral("Annual holiday pay");
    case EarningKind::PublicHolidayPay: return QStringLiteral("Public holiday pay");
    case EarningKind::AlternativeHolidayPay: return QStringLiteral("Alternative holiday pay");
    case EarningKind::SickLeavePay: return QStringLiteral("Sick leave pay");
    case EarningKind::BereavementLeavePay: return QStringLiteral("Bereavement leave pay");
    case EarningKind::FamilyViolenceLeavePay: return QStringLiteral("Family violence leave pay");
    case EarningKind::FirstWeekAcc: return QStringLiteral("First week of ACC");
    case EarningKind::Reimbursement: return QStringLiteral("Reimbursement");
    case EarningKind::EmployerSuperannuation: return QStringLiteral("Employer superannuation");
    case EarningKind::CashUp: return QStringLiteral("Cashed-up annual holidays");
    case EarningKind::PayAsYouGo: return QStringLiteral("Holiday pay as you go (8%)");
    case EarningKind::MinimumWageTopUp: return QStringLiteral("Minimum wage top-up");
    }
    return QString();
}

QString NameTableCaption(const QString& table) {
    if (table == QLatin1String("taxable")) return QStringLiteral("Taxable allowance");
    if (table == QLatin1String("nontaxable")) return QStringLiteral("Non-taxable allowance");
    return QStringLiteral("Payment");
}

} // namespace ql::holidays
