#include "EmployerDetails.h"
#include "data/PayeInfo.h"
#include "data/Recordset.h"
#include "payday/IrdNumber.h"
#include "payday/PaydayTables.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"

namespace ql {

namespace {

QString text(const QVariant& v) {
    return IsNull(v) ? QString() : CStr(v).trimmed();
}

PaydaySettings paydayPart(Database& wage, const EmployerDetails& d) {
    PaydaySettings s = LoadPaydaySettings(wage);
    s.contactName = d.contactName.trimmed();
    s.contactPhone = d.contactPhone.trimmed();
    s.contactEmail = d.contactEmail.trimmed();
    s.employerIrd = d.ird.trimmed();
    s.payingAccount = d.account.trimmed();
    return s;
}

} // namespace

EmployerDetails LoadEmployerDetails(Database& wage, Database& farm) {
    EmployerDetails d;
    auto rs = farm.openRecordset(QStringLiteral("SELECT * FROM [Farm Details]"), RecordsetType::Snapshot);
    if (!rs->EOF_()) {
        d.name = text(rs->value(QStringLiteral("Farm Name")));
        d.address = text(rs->value(QStringLiteral("Address1")));
        d.city = text(rs->value(QStringLiteral("Address2")));
        d.postcode = text(rs->value(QStringLiteral("Address3")));
        d.gst = text(rs->value(QStringLiteral("GST Reg Number")));
    }
    rs->Close();
    const PaydaySettings s = LoadPaydaySettings(wage);
    d.contactName = s.contactName;
    d.contactPhone = s.contactPhone;
    d.contactEmail = s.contactEmail;
    d.ird = s.employerIrd;
    d.account = s.payingAccount;
    // A farm whose one number serves both: it stands as the IRD number, the GST number left empty.
    if (d.ird.isEmpty()) d.ird = d.gst;
    if (IrdDigits(d.gst) == IrdDigits(d.ird)) d.gst.clear();
    const QVariant months = farm.scalar(QStringLiteral("SELECT PAYEFreq FROM PayeInfo LIMIT 1"));
    if (!IsNull(months) && CLng(months) > 0) d.payeMonths = CLng(months);
    return d;
}

QString EmployerDetailsProblem(const EmployerDetails& d) {
    QStringList problems;
    if (d.name.trimmed().isEmpty()) problems << QStringLiteral("Farm or business name: required.");
    if (d.name.trimmed().size() > 100) problems << QStringLiteral("Farm or business name: at most 100 characters.");
    for (const QString* part : {&d.address, &d.city, &d.postcode})
        if (part->trimmed().size() > 100) problems << QStringLiteral("Address: at most 100 characters a line.");
    if (d.ird.trimmed().isEmpty())
        problems << QStringLiteral("IRD number: required.");
    if (!d.gst.trimmed().isEmpty() && !IsValidIrdNumber(d.gst))
        problems << QStringLiteral("GST number: %1 fails Inland Revenue's check. Please check it.").arg(d.gst.trimmed());
    if (d.payeMonths != 1 && d.payeMonths != 2 && d.payeMonths != 6)
        problems << QStringLiteral("PAYE filing: every 1, 2 or 6 months.");
    PaydaySettings s;
    s.contactName = d.contactName.trimmed();
    s.contactPhone = d.contactPhone.trimmed();
    s.contactEmail = d.contactEmail.trimmed();
    s.employerIrd = d.ird.trimmed();
    s.payingAccount = d.account.trimmed();
    const QString payday = PaydaySettingsProblem(s);
    if (!payday.isEmpty()) problems << payday;
    return problems.join(u'\n');
}

void SaveEmployerDetails(Database& wage, Database& farm, const EmployerDetails& d) {
    const QString problem = EmployerDetailsProblem(d);
    if (!problem.isEmpty()) throw VbError(5, QStringLiteral("Employer"), problem);
    const PaydaySettings settings = paydayPart(wage, d);
    farm.beginTrans();
    wage.beginTrans();
    try {
        if (farm.scalar(QStringLiteral("SELECT count(*) FROM [Farm Details]")).toInt() == 0)
            farm.execute(QStringLiteral("INSERT INTO [Farm Details] ([Farm Name]) VALUES ('')"));
        // The payslip prints the GST Reg Number as the employer's number: the IRD number when no GST
        // number is given.
        farm.execute(QStringLiteral("UPDATE [Farm Details] SET [Farm Name] = ?, Address1 = ?, Address2 = ?, "
                                    "Address3 = ?, [GST Reg Number] = ?"),
                     {d.name.trimmed(), d.address.trimmed(), d.city.trimmed(), d.postcode.trimmed(),
                      d.gst.trimmed().isEmpty() ? d.ird.trimmed() : d.gst.trimmed()});
        farm.execute(QStringLiteral("UPDATE Partners SET PartnerName = ? WHERE PartnerDefault = 1"), {d.name.trimmed()});
        if (farm.scalar(QStringLiteral("SELECT count(*) FROM PayeInfo")).toInt() == 0)
            farm.execute(QStringLiteral("INSERT INTO PayeInfo (PAYEFreq) VALUES (NULL)"));
        farm.execute(QStringLiteral("UPDATE PayeInfo SET PAYEFreq = ?"), {d.payeMonths});
        SavePaydaySettings(wage, settings);
        wage.commitTrans();
        farm.commitTrans();
    } catch (...) {
        if (wage.inTransaction()) wage.rollback();
        if (farm.inTransaction()) farm.rollback();
        throw;
    }
}

bool EmployerIsSetUp(Database& wage, Database& farm) {
    const EmployerDetails d = LoadEmployerDetails(wage, farm);
    return !d.name.isEmpty() && !d.ird.isEmpty();
}

} // namespace ql
