#include "HolidaySession.h"
#include "PayScreen.h"
#include "frame/Messages.h"
#include "ledger/Roster.h"
#include "startup/Startup.h"
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace cli {

HolidaySession::HolidaySession() {
    ql::setApp(&context);
    dialogs.setEcho([](const QString& line) { err() << line << "\n"; });
    ql::setDialogs(&dialogs);
    ql::installErrorReporter();
    ql::OpenWageDatabase();
}

HolidaySession::~HolidaySession() {
    ql::CloseWageDatabase();
    ql::setDialogs(nullptr);
    ql::setApp(nullptr);
}

QString HolidaySession::employeeName(qint32 employeeID) {
    if (!m_rosterFilled) {
        ql::FillEmployeeArray();
        m_rosterFilled = true;
    }
    for (int i = 1; i < context.EmployeeArray.size(); ++i)
        if (context.EmployeeArray.at(i).EmployeeID == employeeID) return context.EmployeeArray.at(i).NameLastFirst;
    return QString();
}

void RecalculatePay(qint32 wageID) {
    PayScreen open(wageID);
    open.screen.cmdSelect_Click(1);
    open.screen.tgrdwages_LostFocus();
    open.screen.datPays.UpdateRecord();
}

QDate isoDateArgument(const QString& text) {
    const QDate d = QDate::fromString(text, Qt::ISODate);
    if (!d.isValid() || text.size() != 10) throw CliUsageError();
    return d;
}

int wholeArgument(const QString& text) {
    bool ok = false;
    const int v = text.toInt(&ok);
    if (!ok) throw CliUsageError();
    return v;
}

QHash<QString, QString> holidayOptions(const QStringList& args, int from, const QStringList& allowed) {
    QHash<QString, QString> o;
    for (int i = from; i < args.size(); i += 2) {
        const QString key = args.at(i);
        if (!key.startsWith(QStringLiteral("--")) || !allowed.contains(key.mid(2)) || i + 1 >= args.size() ||
            o.contains(key.mid(2)))
            throw CliUsageError();
        o.insert(key.mid(2), args.at(i + 1));
    }
    return o;
}

QJsonValue money(ql::Currency c) { return QJsonValue(c.toString().toDouble()); }

QString isoDate(const QDate& d) { return d.isValid() ? d.toString(Qt::ISODate) : QString(); }

QJsonObject finalPayJson(const ql::holidays::FinalPayResult& r) {
    QJsonObject j;
    j.insert(QStringLiteral("LastDay"), isoDate(r.lastDay));
    j.insert(QStringLiteral("OWP"), money(r.owp.amount));
    j.insert(QStringLiteral("AWE"), money(r.awe.amount));
    j.insert(QStringLiteral("AnnualWeeksUntaken"), r.entitledWeeksUntaken);
    j.insert(QStringLiteral("SinceAnniversary"), isoDate(r.lastAnniversary));
    j.insert(QStringLiteral("GrossSinceAnniversary"), money(r.grossSinceAnniversary));
    j.insert(QStringLiteral("PaidAsYouGo"), money(r.paidAsYouGo));
    j.insert(QStringLiteral("DailyRate"), money(r.dailyRate));
    j.insert(QStringLiteral("DailyRateUsed"), r.dailyRateUsed);
    j.insert(QStringLiteral("AlternativeHolidays"), r.alternativeHolidays);
    QJsonArray holidays;
    for (const QDate& d : r.publicHolidays)
        holidays << isoDate(d);
    j.insert(QStringLiteral("PublicHolidays"), holidays);
    QJsonArray lines;
    for (const ql::holidays::FinalPayLine& l : r.lines) {
        QJsonObject lj;
        lj.insert(QStringLiteral("component"), l.component);
        lj.insert(QStringLiteral("caption"), l.caption);
        lj.insert(QStringLiteral("units"), l.units);
        lj.insert(QStringLiteral("rate"), money(l.rate));
        lj.insert(QStringLiteral("amount"), money(l.amount));
        lj.insert(QStringLiteral("working"), l.working);
        lines << lj;
    }
    j.insert(QStringLiteral("Lines"), lines);
    j.insert(QStringLiteral("Total"), money(r.total));
    j.insert(QStringLiteral("Notes"), QJsonArray::fromStringList(r.notes));
    return j;
}

QJsonObject finalPayTaxJson(const ql::FinalPayTax& t) {
    QJsonObject j;
    j.insert(QStringLiteral("Taxable"), money(t.taxable));
    j.insert(QStringLiteral("Ordinary"), money(t.ordinary));
    j.insert(QStringLiteral("OrdinaryPAYE"), money(t.ordinaryPaye));
    j.insert(QStringLiteral("HolidayPay"), money(t.holiday));
    j.insert(QStringLiteral("FourWeeks"), money(t.fourWeeks));
    j.insert(QStringLiteral("FourWeeksPays"), t.fourWeeksPays);
    j.insert(QStringLiteral("Multiplier"), t.multiplier);
    j.insert(QStringLiteral("Annualised"), money(t.annualised));
    j.insert(QStringLiteral("LowThreshold"), t.lowThreshold >= 0 ? QJsonValue(double(t.lowThreshold)) : QJsonValue());
    j.insert(QStringLiteral("GrossedUp"), t.grossedUp >= 0 ? QJsonValue(double(t.grossedUp)) : QJsonValue());
    j.insert(QStringLiteral("ExtraPayRate"), t.rate / 1000.0);
    j.insert(QStringLiteral("HolidayPAYE"), money(t.holidayPaye));
    j.insert(QStringLiteral("LumpSumIndicator"), t.lowestRate ? 1 : 0);
    j.insert(QStringLiteral("PAYE"), money(t.paye()));
    j.insert(QStringLiteral("Working"), t.working());
    return j;
}

void printJson(QTextStream& out, const QJsonObject& o) {
    out << QString::fromUtf8(QJsonDocument(o).toJson(QJsonDocument::Indented));
}

} // namespace cli
