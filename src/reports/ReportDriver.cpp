#include "ReportDriver.h"
#include "ReportControl.h"
#include "data/FarmDetails.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "runtime/Trap.h"

namespace ql {

void ClearReportControl(ReportControl& report) {
    for (int i = 0; !report.Formulas(i).isEmpty(); ++i)
        report.setFormulas(i, QString());
    report.SelectionFormula.clear();
    for (int i = 0; !report.SortFields(i).isEmpty(); ++i)
        report.setSortFields(i, QString());
}

void SetReportFile(const QString& name, ReportControl& report) {
    QString folder = ReportDirectory();
    if (!folder.endsWith(u'/')) folder += u'/';
    report.ReportFileName = folder + name;
}

qint32 NextFormula(ReportControl& report) {
    qint32 index = 0;
    trap(QStringLiteral("NextFormula"), [&] {
        while (!report.Formulas(index).isEmpty())
            ++index;
    });
    return index;
}

void UseCustomizedHeadings(ReportControl& report) {
    trap(QStringLiteral("UseCustomizedHeadings"), [&] {
        qint32 index = NextFormula(report);
        for (const CustomizedHeading& h : ReadCustomizedHeadings(App().CurrentReportID))
            report.setFormulas(index++, h.formula());
    });
}

void SetPageFormulas(ReportControl& report, qint32& index) {
    report.setFormulas(index, QStringLiteral("page = 'Page '"));
    report.setFormulas(index + 1, QStringLiteral("of = ' of '"));
    index += 2;
}

QString UserLabel() {
    const QString user = qEnvironmentVariable("USER");
    return user.isEmpty() ? Firm() : user;
}

} // namespace ql
