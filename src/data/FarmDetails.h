#pragma once
// The employer's details from the one row of Farm Details, and the customised report headings of the
// modules database. Each call opens its database, reads and closes; nothing is cached.
#include <QList>
#include <QString>

namespace ql {

// "Farm Name"; "Your Farm Name" when empty.
QString GetFarmName();
// "Financial Year" as text; the date 1 July 1995 as text when empty.
QString GetFinancialYear();
// Address1 to Address3 into the out-parameters; a null column (or an empty table) leaves its
// parameter as it was. Errors are reported under "GetEmployerAddress".
void GetEmployerAddress(QString& address1, QString& address2, QString& address3);
// "GST Reg Number", or "Unknown" without a row or with a null column. Errors are reported under
// "GetIRDNumber" and give "Unknown".
QString GetIRDNumber();

// One customised heading of a report: the formula name and its text ("|" marks already replaced).
struct CustomizedHeading {
    QString name;
    QString heading;
    // The formula that carries it: name + "='" + heading + "'". The heading is not escaped.
    QString formula() const { return name + QStringLiteral("='") + heading + u'\''; }
};
// The headings of reportID from ReportHeadings in the modules database, in the table's order; none
// when the table is absent (no error). Rows with a null heading are left out.
QList<CustomizedHeading> ReadCustomizedHeadings(qint32 reportID);

} // namespace ql
