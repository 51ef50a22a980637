#pragma once
// A farm database of the template in a fresh folder with the rebates table, and helpers to read it.
#include "TestEnv.h"
#include "data/Recordset.h"
#include "data/Schema.h"
#include "frame/Messages.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "runtime/Convert.h"
#include "taxsettings/Rebates.h"
#include <QDir>
#include <QFileInfo>

namespace qltest {

class RebatesTest : public DocumentsTest {
protected:
    void SetUp() override {
        docs->writeFile(QStringLiteral("Fernhold/Common/Fernhold.ini"), "[WINDOWS]\r\nCountry=64\r\n");
        ql::setApp(&app);
        ql::setDialogs(&dialogs);
        ql::installErrorReporter();
        QDir().mkpath(QFileInfo(ql::DataFileName()).absolutePath());
        farm = ql::openOrCreate(ql::DatabaseKind::Farm, ql::DataFileName());
        ql::EnsureRebatesTable(farm);
    }
    void TearDown() override {
        farm.close();
        ql::setDialogs(nullptr);
        ql::setApp(nullptr);
    }
    void addRebate(const QString& name, qint32 heading, double rate, bool quantity,
                   const QString& country = QStringLiteral("64")) {
        farm.execute(
            QStringLiteral(
                "INSERT INTO Rebates (Rebate, Heading, Rate, Quantity, Country) VALUES (?, ?, ?, ?, ?)"),
            {name, heading, rate, quantity ? 1 : 0, country});
    }
    void load(ql::RebatesForm& form, const QString& query = QString()) {
        form.Form_Load(query.isEmpty() ? ql::FarmRebatesQuery() : query, ql::DataFileName(),
                       QStringLiteral("RebateID"));
    }
    // The table's rows as "name|heading|rate|quantity|country", by name.
    QStringList table(const QString& where = QString()) {
        QStringList out;
        auto rs = farm.openRecordset(
            QStringLiteral("SELECT Rebate, Heading, Rate, Quantity, Country FROM Rebates ") + where +
                QStringLiteral(" ORDER BY Rebate"),
            ql::RecordsetType::Snapshot);
        for (; !rs->EOF_(); rs->MoveNext())
            out << QStringLiteral("%1|%2|%3|%4|%5")
                       .arg(rs->value(0).toString())
                       .arg(rs->value(1).toInt())
                       .arg(ql::CStr(rs->value(2)))
                       .arg(ql::CBool(rs->value(3)) ? QStringLiteral("yes") : QStringLiteral("no"))
                       .arg(rs->value(4).toString());
        return out;
    }
    QStringList messages() const {
        QStringList out;
        for (const auto& c : dialogs.calls)
            if (c.kind == ql::DialogCall::Message) out << c.heading + QStringLiteral(": ") + c.message;
        return out;
    }
    ql::AppContext app;
    ql::ScriptedDialogs dialogs;
    ql::Database farm;
};

} // namespace qltest
