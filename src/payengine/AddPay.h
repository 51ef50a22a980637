#pragma once
// Adding a pay: the pay date, the Wages row, the order in which its lines are made, and the in-memory
// state that names the shown employee and pay.
#include "runtime/Currency.h"
#include <QString>
#include <QVariant>
#include <QVector>

namespace ql {

class PayView;
class PayList;

// The add pay button: a pay after the last one, at the employee's interval.
void AddnextPay(PayView& form);
// payDate is in and out: an empty or invalid date lets the interval decide. Afterwards CurrentWageID
// names the new pay. No trap: a failure travels to the caller with the rows made so far kept.
void AddPayment(qint32 employeeID, QString& payDate, bool firstPay, PayView& form);

void GetPayInterval(qint32 employeeID, float& numberOfDays, float& paysPerYear, float& weeksPerPay);
void GetAddDate(qint32 employeeID, QString& payDate, float paysPerYear, float numberOfDays, PayView& form);
// WageID of the last pay of CurrentEmployeeID that is not one-off, or 0.
qint32 GetLastPayID();
// IntervalName of the current employee's pay interval.
QString GetIntervalName();
void AddBlankWage(qint32 employeeID, const QString& payDate, Currency rate, qint32& wageID,
                  const QString& payInterval, const QString& taxCode, bool oneOff, Currency gross,
                  Currency paye, Currency takeHome);
void DefaultValuesToLastPay(qint32 newWageID, qint32 lastWageID);

// The pay list's reposition event. With ReloadingPays only CurrentWageID follows the list.
void RepositionPay(PayList& recordset, PayView& form, const QString& employeeName);
// Asks for the date of a first pay and adds it; a cancelled or unreadable answer means today.
void FirstPayPrompt(PayView& form, const QString& employeeName);

// kind "employee" or "address".
void SetEmpArray(qint32 value, const QString& kind);
// The combo's item data, walked from 0 to the end; listIndex becomes the last item that holds
// CurrentEmployeeID and stays as it was when none does.
void SelectCurrentEmp(const QVector<qint32>& itemData, int& listIndex);

void FillpayInfoArray(const QString& query, bool withSalary);
float GetPayInfoRate(qint32 id);
// Null when the id is not in the lookup, which counts as false.
QVariant GetPayInfoSalary(qint32 id);

} // namespace ql
