#include "PaySlipEmail.h"
#include "EmployeeEmail.h"
#include "MailSender.h"
#include "data/Schema.h"
#include "frame/SettingGetters.h"
#include <QDate>
#include <QRegularExpression>

namespace ql {

PaySlipMail PaySlipMailOf(Database& wage, qint32 wageID) {
    PaySlipMail m;
    const QVariantList pay = wage.firstRow(
        QStringLiteral("SELECT Wages.EmployeeID, Employees.AddressID, Wages.PaymentDate, Wages.Reference "
                       "FROM Wages JOIN Employees ON Employees.EmployeeID = Wages.EmployeeID WHERE WageID = %1")
            .arg(wageID));
    if (pay.isEmpty()) return m;
    const qint32 employeeID = pay.at(0).toInt();
    const QDate paid = QDate::fromString(pay.at(2).toString().left(10), Qt::ISODate);
    const QString reference = pay.at(3).toString().trimmed();
    Database farm = openOrCreate(DatabaseKind::Farm, DataFileName());
    m.to = EmployeeEmail(wage, farm, employeeID);
    const QVariantList who = farm.firstRow(
        QStringLiteral("SELECT ContactFirstName, ContactLastName, BusName FROM Addresses WHERE AddressID = %1")
            .arg(pay.at(1).toLongLong()));
    if (!who.isEmpty())
        m.employee = (who.at(0).toString().trimmed() + u' ' + who.at(1).toString().trimmed()).trimmed();
    if (m.employee.isEmpty() && !who.isEmpty()) m.employee = who.at(2).toString().trimmed();
    if (m.employee.isEmpty()) m.employee = QStringLiteral("Employee %1").arg(employeeID);
    const QString employer = farm.scalar(QStringLiteral("SELECT [Farm Name] FROM [Farm Details]")).toString().trimmed();
    farm.close();
    const QString date = paid.isValid() ? paid.toString(QStringLiteral("d MMMM yyyy")) : QString();
    m.subject = QStringLiteral("Payslip %1").arg(date).trimmed();
    if (!employer.isEmpty()) m.subject += QStringLiteral(" from ") + employer;
    QString file = QStringLiteral("Payslip %1 %2").arg(m.employee, paid.toString(Qt::ISODate));
    if (!reference.isEmpty()) file += u' ' + reference;
    file.remove(QRegularExpression(QStringLiteral("[/\\\\:*?\"<>|\\x00-\\x1f]")));
    m.attachmentName = file.simplified() + QStringLiteral(".pdf");
    return m;
}

PaySlipSending PreparePaySlipEmail(Database& wage, qint32 wageID, const QByteArray& pdf) {
    PaySlipSending out;
    const PaySlipMail m = PaySlipMailOf(wage, wageID);
    out.who = m.employee.isEmpty() ? QStringLiteral("Pay %1").arg(wageID) : m.employee;
    if (m.employee.isEmpty()) {
        out.problem = QStringLiteral("there is no such pay.");
        return out;
    }
    out.settings = ReadMailSettings();
    out.problem = MailSettingsProblem(out.settings);
    if (!out.problem.isEmpty()) return out;
    if (m.to.isEmpty()) {
        out.problem = QStringLiteral("no email address is kept for this employee.");
        return out;
    }
    out.message.to = m.to;
    out.message.subject = m.subject;
    out.message.body = QStringLiteral("Kia ora %1,\n\nYour payslip is attached as a PDF file.\n").arg(m.employee);
    out.message.attachmentName = m.attachmentName;
    out.message.attachment = pdf;
    out.password = MailPassword(out.settings);
    return out;
}

QString EmailPaySlip(Database& wage, qint32 wageID, const QByteArray& pdf) {
    const PaySlipSending s = PreparePaySlipEmail(wage, wageID, pdf);
    if (!s.problem.isEmpty()) return s.who + QStringLiteral(": ") + s.problem;
    const QString why = SendMail(s.settings, s.password, s.message);
    return why.isEmpty() ? QString() : s.who + QStringLiteral(": ") + why;
}

} // namespace ql
