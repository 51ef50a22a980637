#include "ReportsFixture.h"
#include "data/Schema.h"
#include "frame/Messages.h"
#include "ledger/Roster.h"
#include "reports/paint/ReportPdf.h"
#include "runtime/Trap.h"
#include <QProcess>
#include <QRegularExpression>

namespace qltest {

void ReportsTest::SetUp() {
    docs = std::make_unique<TempDocuments>();
    // The report folder without a "/" at its end: the file name still joins with one.
    docs->writeFile(QStringLiteral("Fernhold/Common/Fernhold.ini"),
                    QByteArray("[FERNHOLD]\nReportDirectory=") + QByteArray(QUILLARY_SOURCE_DIR) +
                        "/reports\n");
    rows = std::make_unique<PayrollRows>();
    modules = ql::openOrCreate(ql::DatabaseKind::Modules, ql::ModuleFileName());
    rows->context.WageDatabase.open(ql::WageFileName());
    ql::installErrorReporter();
    ql::installPdfOutput();
    for (int destination : {ql::crpt::ToWindow, ql::crpt::ToPrinter})
        ql::setReportOutput(destination,
                            [this, destination](const ql::PreparedReport& r, const ql::ReportControl&) {
                                printed.append(r);
                                destinations.append(destination);
                            });
    m_previousShow = ql::setReportScreenShow([this](ql::ReportScreen& screen) {
        ShownScreen s;
        s.reportFile = screen.cry_report.ReportFileName;
        for (int i = 0; i < 40; ++i)
            s.formulas << screen.cry_report.Formulas(i);
        while (!s.formulas.isEmpty() && s.formulas.last().isEmpty())
            s.formulas.removeLast();
        s.selection = screen.cry_report.SelectionFormula;
        for (int i = 0; i < 3; ++i)
            s.dataFiles << screen.cry_report.DataFiles(i);
        s.info = screen.lbl_ReportInfo;
        shown.append(s);
        screen.wait = nullptr; // the blocking second is no part of a test
        if (onShow) onShow(screen);
    });
}

void ReportsTest::TearDown() {
    ql::setReportScreenShow(m_previousShow);
    ql::setReportOutput(ql::crpt::ToWindow, nullptr);
    ql::setReportOutput(ql::crpt::ToPrinter, nullptr);
    ql::setReportOutput(ql::crpt::ToFile, nullptr);
    ql::setErrorReporter(nullptr);
    rows->context.WageDatabase.close();
    modules.close();
    rows.reset();
    docs.reset();
}

qint64 ReportsTest::employee(const QString& first, const QString& last, const QString& ird) {
    const qint64 id = rows->employee(rows->address(last, first));
    rows->wage.execute(QStringLiteral("UPDATE Employees SET IRDNumber = ? WHERE EmployeeID = ?"),
                       {ird.isEmpty() ? QVariant() : QVariant(ird), id});
    return id;
}

void ReportsTest::selectEmployee(qint64 employeeID) {
    ql::AppContext& app = rows->context;
    ql::FillEmployeeArray();
    for (int i = 1; i < app.EmployeeArray.size(); ++i)
        if (app.EmployeeArray.at(i).EmployeeID == employeeID) app.CurrentEmployee = i;
    app.CurrentEmployeeID = qint32(employeeID);
}

qint64 ReportsTest::pay(qint64 employeeID, const QDate& date, double gross, double paye, double deductions,
                        const QString& reference, const QVariant& memo) {
    rows->wage.execute(
        QStringLiteral(
            "INSERT INTO Wages (EmployeeID, Date, PayInterval, Hours, Gross, TaxAllow, TotalTaxable, PAYE, "
            "NonTaxAllow, Deductions, TakeHome, KiwiSaverContribution, Reference, PaymentDate, Details) "
            "VALUES (?, ?, 'Weekly', 40, ?, 0, ?, ?, 0, ?, ?, ?, ?, ?, ?)"),
        {employeeID, date.toString(Qt::ISODate), gross, gross, paye, deductions, gross - paye - deductions,
         deductions / 2, reference.isEmpty() ? QVariant() : QVariant(reference),
         reference.isEmpty() ? QVariant() : QVariant(date.addDays(1).toString(Qt::ISODate)), memo});
    return rows->wage.lastInsertRowId();
}

void ReportsTest::slipLine(const QString& description, const QString& number, const QString& rate,
                           const QString& amount, const QString& total) {
    rows->wage.execute(
        QStringLiteral(
            "INSERT INTO PaySlip (Description, Number, Rate, Amount, Total) VALUES (?, ?, ?, ?, ?)"),
        {description, number, rate, amount, total});
}

void ReportsTest::farmDetails(const QVariant& name, const QVariant& a1, const QVariant& a2,
                              const QVariant& a3, const QVariant& gst) {
    rows->farm.execute(
        QStringLiteral("UPDATE [Farm Details] SET [Farm Name] = ?, Address1 = ?, Address2 = ?, "
                       "Address3 = ?, [GST Reg Number] = ?"),
        {name, a1, a2, a3, gst});
}

QString ReportsTest::pdfText(const QString& file) {
    QProcess p;
    p.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
    if (!p.waitForFinished(30000) || p.exitCode() != 0) return QStringLiteral("<pdftotext failed>");
    return QString::fromUtf8(p.readAllStandardOutput());
}

QStringList ReportsTest::pdfLines(const QString& file) {
    QStringList lines;
    for (const QString& line : pdfText(file).split(u'\n')) {
        const QString s = line.simplified();
        if (!s.isEmpty()) lines << s;
    }
    return lines;
}

} // namespace qltest
