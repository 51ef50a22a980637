#pragma once
// Fresh payroll and farm databases at the paths the settings give, with rows built by the test.
#include "data/Database.h"
#include "data/Schema.h"
#include "frame/SettingGetters.h"
#include "frame/ScriptedDialogs.h"
#include "payengine/AppContext.h"
#include <QDate>
#include <QVariant>

namespace qltest {

struct PayrollRows {
    ql::AppContext context;
    ql::ScriptedDialogs dialogs;
    ql::Database wage;
    ql::Database farm;

    PayrollRows() {
        ql::setApp(&context);
        ql::setDialogs(&dialogs);
        wage = ql::openOrCreate(ql::DatabaseKind::Wage, ql::WageFileName());
        farm = ql::openOrCreate(ql::DatabaseKind::Farm, ql::DataFileName());
    }
    ~PayrollRows() {
        wage.close();
        farm.close();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }

    qint64 address(const QVariant& last, const QVariant& first, bool wageFlag = true,
                   const QVariant& street = QStringLiteral("12 Ridge Road"), const QVariant& city = QStringLiteral("Te Awamutu")) {
        farm.execute(QStringLiteral("INSERT INTO Addresses (WageFlag, ContactLastName, ContactFirstName, BusAddress1, BusCity) "
                                    "VALUES (?, ?, ?, ?, ?)"),
                     {wageFlag ? 1 : 0, last, first, street, city});
        return farm.lastInsertRowId();
    }

    qint64 employee(qint64 addressID, const QVariant& hired = QStringLiteral("2024-04-01"),
                    const QVariant& finished = QStringLiteral("1899-12-30"), const QString& taxCode = QStringLiteral("M")) {
        const QVariant type = wage.scalar(QStringLiteral("SELECT MIN(EmployeeTypeID) FROM EmployeeAwardType"));
        const QVariant tax = wage.scalar(QStringLiteral("SELECT MIN(TaxTypeID) FROM TaxTypes"));
        const QVariant interval = wage.scalar(QStringLiteral("SELECT PayIntervalID FROM PayInterval WHERE PaysPerYear = 52"));
        wage.execute(QStringLiteral("INSERT INTO Employees (AddressID, EmployeeTypeID, TaxTypeID, PayIntervalID, DateHired, "
                                    "DateFinished, PayRate, TaxCode) VALUES (?, ?, ?, ?, ?, ?, 25.5, ?)"),
                     {addressID, type, tax, interval, hired, finished, taxCode});
        return wage.lastInsertRowId();
    }
};

} // namespace qltest
