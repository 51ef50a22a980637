#pragma once
// The global state of the one thread, one object per running program (each test builds its own).
// Members bear the system's names. Screens reach the engine's views through interfaces the engine
// declares (see PayView.h); the context holds pointers to them, never screen classes.
#include "data/Database.h"
#include "runtime/Currency.h"
#include <QDate>
#include <QObject>
#include <QString>
#include <QVector>

namespace ql {

class PayView;

// One record of the roster, fields in the order the roster fills them.
struct EmployeeRecord {
    qint32 EmployeeID = 0;
    qint32 AddressID = 0;
    QDate Birthdate;
    qint32 EmployeeTypeID = 0;
    QDate DateHired;
    QDate DateFinished;
    Currency PayRate;
    Currency YearlyTotal;
    qint32 PayIntervalID = 0;
    qint32 TaxTypeID = 0;
    QString IRDNumber;
    QString EmployeeType;
    QString UnitOfPay;
    QString TaxName;
    QString TaxCode;
    QString Address;
    QString NameLastFirst;
    QString NameFirstLast;
    bool KiwiSaverEnrolled = false;
    qint32 KiwiSaverEnrolID = 0;
    QDate KiwiSaverStartDate;
    qint32 KiwiSaverEmployerRateID = 0;
};

// Lookup of the open grid's name list: id, rate, and whether the line is a salary line.
struct PayInfoRecord {
    qint32 id = 0;
    float rate = 0.0f;
    QVariant salary; // Null when unknown, which counts as false
};

class AppContext {
public:
    Database WageDatabase;
    QVector<EmployeeRecord> EmployeeArray{EmployeeRecord{}}; // element 0 is never used
    qint32 CurrentEmployee = 0;
    qint32 CurrentEmployeeID = 0;
    qint32 CurrentAddressID = 0;
    qint32 CurrentWageID = 0;
    qint16 CurrentTab = 0; // 0 none, 1 payments, 2 taxable, 3 PAYE, 4 non-taxable, 5 deductions, 6 payslip, 7 contributions
    bool ReloadingPays = false;
    bool PayEditable = false;
    qint16 SelectedLabel = 0;
    QString ModuleTitle;
    qint16 ConnectorCount = 0;
    qint64 AddressBookWindow = 0;
    qint64 AddressBookProcess = 0;
    qint32 HelpContextID = 0;
    qint32 HelpAltContextID = 0;
    QString AppHelpFile;
    bool DebugMode = false;
    qint32 CurrentReportID = 0;

    QVector<PayInfoRecord> PayInfo;
    QString WageGridQuery;

    PayView* WageForm = nullptr; // the shown wage screen, through the engine's interface
    QObject* TheWageObject = nullptr; // the one PHWage of the process (startup)
};

// The context of the running program. Each program (and each test) installs its own.
AppContext& App();
void setApp(AppContext* context);

} // namespace ql
