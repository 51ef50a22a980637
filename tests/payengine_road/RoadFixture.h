#pragma once
// The demo farm in a fresh folder, opened as the program opens it, with the wage screen standing on
// no employee yet. A test picks an employee (answering the first-pay prompt with a date), adds pays
// with the add pay button and edits lines as a user does.
#include "TestEnv.h"
#include "data/Database.h"
#include "data/DemoFarm.h"
#include "data/Recordset.h"
#include "data/Schema.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "ledger/Roster.h"
#include "startup/Startup.h"
#include "ledger/WageScreen.h"
#include "payengine/AppContext.h"
#include "runtime/Convert.h"
#include "runtime/Currency.h"
#include "runtime/Format.h"
#include <QDate>
#include <QDir>
#include <QFileInfo>
#include <memory>
#include <ostream>

namespace ql {
inline void PrintTo(const Currency& c, std::ostream* os) { *os << c.toFixed4().toStdString(); }
} // namespace ql

namespace qltest {

// Demo employees by EmployeeID.
enum DemoEmployee { FarmHand = 1, Manager = 2, ReliefMilker = 3, TractorDriver = 4, PartTimer = 5 };


class RoadTest : public DocumentsTest {
protected:
    void SetUp() override {
        docs->writeFile(QStringLiteral("Fernhold/Common/Fernhold.ini"), "[WINDOWS]\r\nCountry=64\r\n");
        ql::setApp(&app);
        ql::setDialogs(&dialogs);
        ql::installErrorReporter();
        QDir().mkpath(QFileInfo(ql::WageFileName()).absolutePath());
        QDir().mkpath(QFileInfo(ql::DataFileName()).absolutePath());
        QDir().mkpath(QFileInfo(ql::ModuleFileName()).absolutePath());
        {
            ql::Database wage = ql::openOrCreate(ql::DatabaseKind::Wage, ql::WageFileName());
            ql::Database farm = ql::openOrCreate(ql::DatabaseKind::Farm, ql::DataFileName());
            ql::Database modules = ql::openOrCreate(ql::DatabaseKind::Modules, ql::ModuleFileName());
            ql::addDemoFarm(wage, farm);
            modules.close();
            farm.close();
            wage.close();
        }
        ql::OpenWageDatabase();
        openScreen();
    }
    void TearDown() override {
        closeScreen();
        ql::CloseWageDatabase();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }

    // The wage screen over the roster as it stands, no employee picked.
    void openScreen() {
        ql::FillEmployeeArray();
        screen = std::make_unique<ql::WageScreen>();
        app.WageForm = screen.get();
        ql::InitData(*screen);
        for (int i = 1; i < app.EmployeeArray.size(); ++i)
            screen->cboEmployeeItems.append({app.EmployeeArray.at(i).NameLastFirst, app.EmployeeArray.at(i).EmployeeID});
    }
    void closeScreen() {
        app.WageForm = nullptr;
        screen.reset();
    }

    // Picks the employee; one without pays is asked for the first pay's date, answered with firstPay.
    void pick(qint32 employeeID, const QDate& firstPay) {
        dialogs.queueInput(ql::Format(QVariant(firstPay), QStringLiteral("Short date")));
        for (int i = 0; i < screen->cboEmployeeItems.size(); ++i)
            if (screen->cboEmployeeItems.at(i).itemData == employeeID)
                screen->selectEmployeeItem(i);
        ASSERT_EQ(app.CurrentEmployeeID, employeeID);
    }
    qint32 addPay() {
        screen->cmdAddPay_Click();
        return app.CurrentWageID;
    }
    // Leaving the view saves the grid; the list then stores the labels in the pay's row.
    void leaveView() {
        screen->tgrdwages_LostFocus();
        screen->datPays.UpdateRecord();
    }

    QString label(const QString& name) const { return screen->caption(name); }
    ql::Currency money(const QString& sql) { return ql::CCur(db().scalar(sql)); }
    ql::Currency wageColumn(qint32 wageID, const QString& column) {
        return money(QStringLiteral("SELECT [%1] FROM Wages WHERE WageID = %2").arg(column).arg(wageID));
    }
    // The amounts of one detail table for a pay, in the table's order.
    QList<ql::Currency> amounts(const QString& table, const QString& column, qint32 wageID) {
        QList<ql::Currency> out;
        auto rs = db().openRecordset(QStringLiteral("SELECT [%1] FROM %2 WHERE WageID = %3 ORDER BY rowid")
                                         .arg(column, table)
                                         .arg(wageID),
                                     ql::RecordsetType::Snapshot);
        for (; !rs->EOF_(); rs->MoveNext())
            out << ql::CCur(rs->value(0));
        return out;
    }
    // The PaySlip rows in their order, one "Description|Number|Rate|Amount|Total" a line.
    std::string paySlip() {
        QStringList out;
        auto rs = db().openRecordset(QStringLiteral("SELECT Description, Number, Rate, Amount, Total FROM PaySlip"),
                                     ql::RecordsetType::Snapshot);
        for (; !rs->EOF_(); rs->MoveNext()) {
            QStringList cells;
            for (int i = 0; i < 5; ++i)
                cells << rs->value(i).toString();
            out << cells.join(QLatin1Char('|'));
        }
        return out.join(QLatin1Char('\n')).toStdString();
    }
    QStringList errorsReported() const {
        QStringList out;
        for (const auto& c : dialogs.calls)
            if (c.kind == ql::DialogCall::Error)
                out << c.heading + QStringLiteral(": ") + c.message;
        return out;
    }

    static ql::Currency cur(const char* text) { return ql::CCur(QVariant(QString::fromLatin1(text))); }

    ql::Database& db() { return app.WageDatabase; }

    ql::AppContext app;
    ql::ScriptedDialogs dialogs;
    std::unique_ptr<ql::WageScreen> screen;
};

// Rows of the slip as paySlip() gives them: a heading (with the amount of an empty section), a line
// indented by four blanks, a row with only its total, and a blank row.
inline QString heading(const char* text, const char* amount = "") {
    return QStringLiteral("%1|||%2|").arg(QLatin1String(text), QLatin1String(amount));
}
inline QString line(const char* name, const char* number, const char* rate, const char* amount) {
    return QStringLiteral("    %1|%2|%3|%4|")
        .arg(QLatin1String(name), QLatin1String(number), QLatin1String(rate), QLatin1String(amount));
}
inline QString total(const char* text, const char* value) {
    return QStringLiteral("%1||||%2").arg(QLatin1String(text), QLatin1String(value));
}
inline QString blank() { return QStringLiteral("||||"); }
inline std::string slip(const QStringList& rows) { return rows.join(QLatin1Char('\n')).toStdString(); }

} // namespace qltest
