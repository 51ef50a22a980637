#pragma once
// A payroll database and a modules database in a fresh folder, the context of the program, scripted
// dialogs that record every message, and helpers to put tax types and employees in place.
#include "TestEnv.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "data/Schema.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "payengine/PayView.h"
#include "payengine/TaxYearStore.h"
#include <QDir>
#include <QFileInfo>
#include <utility>
#include <vector>

namespace qltest {

// A view of the wage screen without a screen: the engine's labels and grid, no actions of its own.
class BareView : public ql::PayView {
public:
    void SelectLabel(const QString& label) override { selected.append(label); }
    void openView(int tab) override { opened.append(tab); }
    QStringList selected;
    QList<int> opened;
};

class PayeTest : public DocumentsTest {
protected:
    void SetUp() override {
        writeSettings(64, false);
        ql::setApp(&app);
        ql::setDialogs(&dialogs);
        ql::installErrorReporter();
        QDir().mkpath(QFileInfo(ql::WageFileName()).absolutePath());
        QDir().mkpath(QFileInfo(ql::ModuleFileName()).absolutePath());
        app.WageDatabase = ql::openOrCreate(ql::DatabaseKind::Wage, ql::WageFileName());
        // These tests work the tax steps and equations themselves: a payroll without tax years, so that
        // no pay takes Inland Revenue's method from the year in force.
        ql::EnsureTaxYearTables(app.WageDatabase);
        app.WageDatabase.execute(QStringLiteral("DELETE FROM TaxYearFigures"));
        ql::Database modules = ql::openOrCreate(ql::DatabaseKind::Modules, ql::ModuleFileName());
        modules.close();
    }
    void TearDown() override {
        app.WageDatabase.close();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }

    void writeSettings(int country, bool debug) {
        docs->writeFile(QStringLiteral("Fernhold/Common/Fernhold.ini"),
                        QStringLiteral("[WINDOWS]\r\nCountry=%1\r\n[DEBUG]\r\nDebug=%2\r\n")
                            .arg(country)
                            .arg(debug ? QStringLiteral("Y") : QStringLiteral("N"))
                            .toUtf8());
    }

    // Removes every equation, so that each process gives back its amount rounded.
    void withoutEquations() {
        ql::Database modules;
        modules.open(ql::ModuleFileName());
        modules.execute(QStringLiteral("DELETE FROM TaxEquations"));
        modules.close();
    }

    // A tax type with its steps (yearly upper limit, rate in per cent).
    qint32 addTaxType(const QString& name, const std::vector<std::pair<double, float>>& steps) {
        const qint32 id = nextTaxTypeID++;
        db().execute(QStringLiteral("INSERT INTO TaxTypes (TaxTypeID, Taxname) VALUES (?, ?)"), {id, name});
        for (const auto& [limit, rate] : steps) {
            db().execute(QStringLiteral("INSERT INTO TaxSteps (TaxStepsID, taxtypeID, upperlimit, taxrate) "
                                        "VALUES (?, ?, ?, ?)"),
                         {nextStepID++, id, limit, double(rate)});
        }
        return id;
    }

    qint32 intervalWith(float paysPerYear) {
        const QVariant v = db().scalar(
            QStringLiteral("SELECT PayIntervalID FROM PayInterval WHERE PaysPerYear = %1").arg(double(paysPerYear)));
        if (v.isValid())
            return v.toInt();
        const qint32 id = 900 + qint32(paysPerYear);
        db().execute(QStringLiteral("INSERT INTO PayInterval (PayIntervalID, IntervalName, PaysPerYear, NumberOfDays) "
                                    "VALUES (?, ?, ?, 0)"),
                     {id, QStringLiteral("Every %1").arg(double(paysPerYear)), double(paysPerYear)});
        return id;
    }

    // An employee on that tax type and interval, made the current one in the roster.
    qint32 addEmployee(qint32 taxTypeID, qint32 payIntervalID, const QString& taxCode) {
        db().execute(QStringLiteral("INSERT INTO Employees (TaxTypeID, PayIntervalID, TaxCode) VALUES (?, ?, ?)"),
                     {taxTypeID, payIntervalID, taxCode});
        const qint32 id = qint32(db().lastInsertRowId());
        ql::EmployeeRecord r;
        r.EmployeeID = id;
        r.TaxTypeID = taxTypeID;
        r.PayIntervalID = payIntervalID;
        r.TaxCode = taxCode;
        app.EmployeeArray.append(r);
        app.CurrentEmployee = app.EmployeeArray.size() - 1;
        app.CurrentEmployeeID = id;
        return id;
    }

    qint32 addWage(qint32 employeeID) {
        db().execute(QStringLiteral("INSERT INTO Wages (EmployeeID, [Date]) VALUES (?, '2026-04-07')"), {employeeID});
        return qint32(db().lastInsertRowId());
    }

    int taxDetailRows(qint32 wageID) {
        return db().scalar(QStringLiteral("SELECT count(*) FROM TaxDetails WHERE WageID = %1").arg(wageID)).toInt();
    }

    QStringList errorsReported() const {
        QStringList out;
        for (const auto& c : dialogs.calls)
            if (c.kind == ql::DialogCall::Error)
                out << c.heading + QStringLiteral(": ") + c.message;
        return out;
    }

    ql::Database& db() { return app.WageDatabase; }

    ql::AppContext app;
    ql::ScriptedDialogs dialogs;
    qint32 nextTaxTypeID = 500;
    qint32 nextStepID = 5000;
};

} // namespace qltest
