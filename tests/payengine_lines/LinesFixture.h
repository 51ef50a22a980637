#pragma once
// A fresh payroll and modules database per test, with a few rows of our own (ids from 100) beside the
// template rows, a scripted dialog set, a pinned clock and a headless pay view.
#include "TestEnv.h"
#include "data/Database.h"
#include "data/GridArray.h"
#include "data/Recordset.h"
#include "data/Schema.h"
#include "frame/Dialogs.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "payengine/AddPay.h"
#include "payengine/AppContext.h"
#include "payengine/PayView.h"
#include "payengine/TaxYearStore.h"
#include "runtime/Convert.h"
#include "runtime/Currency.h"
#include "runtime/DateFns.h"
#include <QDir>
#include <QFileInfo>

namespace linestest {

inline ql::Currency cur(const char* text) { return ql::CCur(QVariant(QString::fromLatin1(text))); }

class TestView : public ql::PayView {
public:
    void SelectLabel(const QString& label) override { selected.append(label); }
    void openView(int tab) override { opened.append(tab); }
    QStringList selected;
    QList<int> opened;
};

class LinesTest : public qltest::DocumentsTest {
protected:
    ql::AppContext app;
    ql::ScriptedDialogs scripted;
    TestView view;

    void SetUp() override {
        ql::setApp(&app);
        ql::setDialogs(&scripted);
        ql::setClockForTesting([] { return QDateTime(QDate(2026, 11, 20), QTime(9, 0)); });
        QDir().mkpath(QFileInfo(ql::WageFileName()).absolutePath());
        QDir().mkpath(QFileInfo(ql::ModuleFileName()).absolutePath());
        app.WageDatabase = ql::openOrCreate(ql::DatabaseKind::Wage, ql::WageFileName());
        // The lines' own arithmetic (thresholds, caps, the ESCT table): a payroll without tax years, so
        // that no line takes Inland Revenue's method from the year in force.
        ql::EnsureTaxYearTables(app.WageDatabase);
        app.WageDatabase.execute(QStringLiteral("DELETE FROM TaxYearFigures"));
        { ql::Database modules = ql::openOrCreate(ql::DatabaseKind::Modules, ql::ModuleFileName()); }
        exec("INSERT INTO EmployeeAwardType VALUES (100, 'Test hand', 'Hour'), (101, 'Test manager', ''), "
             "(102, 'Nothing set up', 'Hour'), (103, 'Units but none set', 'Hour')");
        exec("INSERT INTO PaymentNames VALUES (100, 'Ordinary', 1, 0), (101, 'Overtime', 1.5, 0), "
             "(102, 'Salary', 0, 1), (103, 'Holiday pay', 1, 0), (104, 'Salary unset', 0, 1)");
        exec("INSERT INTO PaymentTypes VALUES (100, 100, 40, 1), (100, 101, NULL, 2), (101, 102, 40, 1), "
             "(103, 100, NULL, 1)");
        view.datPays.setDatabase(&app.WageDatabase);
        // As the wage screen does: the bound labels show the row, then the engine repositions.
        view.datPays.onReposition = [this] {
            view.showBoundValues();
            ql::RepositionPay(view.datPays, view, QStringLiteral("Jo Test"));
        };
    }
    void TearDown() override {
        ql::setClockForTesting({});
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }

    void exec(const char* sql) { app.WageDatabase.execute(QString::fromLatin1(sql)); }
    void exec(const QString& sql) { app.WageDatabase.execute(sql); }
    QVariant scalar(const QString& sql) { return app.WageDatabase.scalar(sql); }
    ql::Currency money(const QString& sql) { return ql::CCur(scalar(sql)); }

    // A hired employee on the roster, made the shown one. Interval ids of the template: 1 weekly,
    // 2 fortnightly, 3 four-weekly, 4 monthly, 5 one-off.
    qint32 addEmployee(qint32 typeID, qint32 intervalID, const char* payRate, const char* yearly = "0",
                       const QString& taxCode = QStringLiteral("M"), bool kiwiSaver = false) {
        app.WageDatabase.execute(
            QStringLiteral("INSERT INTO Employees (AddressID, EmployeeTypeID, DateHired, PayRate, YearlyTotal, "
                           "PayIntervalID, TaxTypeID, TaxCode, KiwiSaverEnrolled) VALUES (?, ?, '2020-01-01', ?, ?, "
                           "?, 1, ?, ?)"),
            {QVariant(500 + int(app.EmployeeArray.size())), typeID, QString::fromLatin1(payRate),
             QString::fromLatin1(yearly), intervalID, taxCode, kiwiSaver ? 1 : 0});
        ql::EmployeeRecord r;
        r.EmployeeID = qint32(app.WageDatabase.lastInsertRowId());
        r.AddressID = 500 + int(app.EmployeeArray.size());
        r.EmployeeTypeID = typeID;
        r.PayRate = cur(payRate);
        r.YearlyTotal = cur(yearly);
        r.PayIntervalID = intervalID;
        r.TaxCode = taxCode;
        r.KiwiSaverEnrolled = kiwiSaver;
        r.UnitOfPay = ql::CStr(scalar(QStringLiteral("SELECT coalesce(UnitOfPay, '') FROM EmployeeAwardType "
                                                     "WHERE EmployeeTypeID = %1").arg(typeID)));
        app.EmployeeArray.append(r);
        app.CurrentEmployee = qint32(app.EmployeeArray.size() - 1);
        app.CurrentEmployeeID = r.EmployeeID;
        app.CurrentAddressID = r.AddressID;
        view.datPays.setRecordSource(
            QStringLiteral("SELECT Wages.* FROM Wages WHERE Wages.EmployeeID = %1 ORDER BY Wages.Date").arg(r.EmployeeID));
        return r.EmployeeID;
    }

    // A bare pay row of the current employee on a date.
    qint32 blankWage(const QString& date, bool oneOff = false) {
        qint32 id = 0;
        ql::AddBlankWage(app.CurrentEmployeeID, date, app.EmployeeArray[app.CurrentEmployee].PayRate, id,
                         QStringLiteral("Weekly"), QStringLiteral("M"), oneOff, ql::Currency(), ql::Currency(),
                         ql::Currency());
        return id;
    }

    // The rows of a detail table of a pay, in table order, as one text per row.
    QStringList rowsOf(const QString& sql) {
        QStringList out;
        auto rs = app.WageDatabase.openRecordset(sql, ql::RecordsetType::Snapshot);
        for (; !rs->EOF_(); rs->MoveNext()) {
            QStringList cells;
            for (int i = 0; i < rs->fieldCount(); ++i) {
                const QVariant v = rs->value(i);
                if (ql::IsNull(v))
                    cells << QStringLiteral("Null");
                else if (v.canConvert<ql::Currency>() && v.userType() == qMetaTypeId<ql::Currency>())
                    cells << v.value<ql::Currency>().toFixed4();
                else if (v.typeId() == QMetaType::Float)
                    cells << QString::number(double(v.toFloat()), 'g', 17);
                else
                    cells << v.toString();
            }
            out << cells.join(QLatin1Char('|'));
        }
        return out;
    }
};

} // namespace linestest
