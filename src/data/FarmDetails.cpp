#include "FarmDetails.h"
#include "Database.h"
#include "Recordset.h"
#include "frame/SettingGetters.h"
#include "frame/Texts.h"
#include "runtime/Convert.h"
#include "runtime/Trap.h"
#include <QDate>

namespace ql {

namespace {

const QString kFarmDetails = QStringLiteral("Farm Details");

// The named column of the first row of Farm Details; Null without a row.
QVariant farmDetail(const QString& column, bool raiseWithoutRow) {
    Database farm;
    farm.open(DataFileName());
    auto rs = farm.openRecordset(kFarmDetails, RecordsetType::Snapshot);
    QVariant value;
    if (!rs->EOF_() || raiseWithoutRow) value = rs->value(column);
    rs->Close();
    farm.close();
    return value;
}

QString text(const QVariant& v) {
    return IsNull(v) ? QString() : CStr(v);
}

// The frame's settings read the start of the financial year through this.
const bool installed = [] {
    setFinancialYearSource([] { return GetFinancialYear(); });
    return true;
}();

} // namespace

QString GetFarmName() {
    const QString name = text(farmDetail(QStringLiteral("Farm Name"), true));
    return name.isEmpty() ? QStringLiteral("Your Farm Name") : name;
}

QString GetFinancialYear() {
    const QString year = text(farmDetail(QStringLiteral("Financial Year"), true));
    return year.isEmpty() ? CStr(QVariant(QDate(1995, 7, 1))) : year;
}

void GetEmployerAddress(QString& address1, QString& address2, QString& address3) {
    trap(QStringLiteral("GetEmployerAddress"), [&] {
        Database farm;
        farm.open(DataFileName());
        auto rs = farm.openRecordset(kFarmDetails, RecordsetType::Snapshot);
        if (!rs->EOF_()) {
            QString* outs[] = {&address1, &address2, &address3};
            const char* columns[] = {"Address1", "Address2", "Address3"};
            for (int i = 0; i < 3; ++i) {
                const QVariant v = rs->value(QLatin1String(columns[i]));
                if (!IsNull(v)) *outs[i] = CStr(v);
            }
        }
        rs->Close();
    });
}

QString GetIRDNumber() {
    QString result = QStringLiteral("Unknown");
    trap(QStringLiteral("GetIRDNumber"), [&] {
        const QVariant v = farmDetail(QStringLiteral("GST Reg Number"), false);
        if (!IsNull(v)) result = CStr(v);
    });
    return result;
}

QList<CustomizedHeading> ReadCustomizedHeadings(qint32 reportID) {
    QList<CustomizedHeading> headings;
    Database modules;
    modules.open(ModuleFileName());
    bool present = false;
    for (const QString& name : modules.tableNames())
        present = present || name == QLatin1String("ReportHeadings");
    if (present) {
        auto rs = modules.openRecordset(
            QStringLiteral(
                "SELECT ReportHeadings.HeadingName, ReportHeadings.Heading From ReportHeadings WHERE "
                "(((ReportHeadings.ReportID)=%1));")
                .arg(reportID),
            RecordsetType::Snapshot);
        while (!rs->EOF_()) {
            const QVariant heading = rs->value(QStringLiteral("Heading"));
            if (!IsNull(heading)) {
                QString h = CStr(heading);
                if (h.contains(u'|')) h = TranslateText(h, QStringList());
                headings.append(CustomizedHeading{text(rs->value(QStringLiteral("HeadingName"))), h});
            }
            rs->MoveNext();
        }
        rs->Close();
    }
    modules.close();
    return headings;
}

} // namespace ql
