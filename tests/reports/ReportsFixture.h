#pragma once
// Payroll, farm and modules databases in a fresh folder, the report folder of the source tree, and a
// report screen that records what a print prepared instead of waiting for a button.
#include "PayrollRows.h"
#include "TestEnv.h"
#include "payengine/PayView.h"
#include "reports/PreparedReport.h"
#include "reports/ReportControl.h"
#include "reports/ReportScreen.h"
#include <QDate>
#include <functional>
#include <memory>

namespace qltest {

// What the report screen held when it was shown.
struct ShownScreen {
    QString reportFile;
    QStringList formulas; // up to the last set slot
    QString selection;
    QStringList dataFiles; // 0 to 2
    QString info;
};

// The wage screen as far as a print reads it: the caption of the pay list.
struct SlipView : ql::PayView {
    void SelectLabel(const QString&) override {}
    void openView(int) override {}
};

class ReportsTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    // An employee on the roster; returns the EmployeeID.
    qint64 employee(const QString& first, const QString& last, const QString& ird = QString());
    // Makes the employee the current one of the context, as the wage screen does.
    void selectEmployee(qint64 employeeID);
    // A pay; committed when reference is not empty.
    qint64 pay(qint64 employeeID, const QDate& date, double gross, double paye, double deductions,
               const QString& reference = QString(), const QVariant& memo = QVariant());
    void slipLine(const QString& description, const QString& number = QString(),
                  const QString& rate = QString(), const QString& amount = QString(),
                  const QString& total = QString());
    void farmDetails(const QVariant& name, const QVariant& a1, const QVariant& a2, const QVariant& a3,
                     const QVariant& gst);

    // The text of a PDF as `pdftotext -layout` gives it.
    static QString pdfText(const QString& file);
    // The lines of that text with their blanks collapsed, empty lines left out.
    static QStringList pdfLines(const QString& file);
    QString outFile(const QString& name) const { return docs->path() + u'/' + name; }

    std::unique_ptr<TempDocuments> docs;
    std::unique_ptr<PayrollRows> rows;
    ql::Database modules;
    QList<ShownScreen> shown;
    QList<ql::PreparedReport> printed; // by the preview and the printer
    QList<int> destinations;
    // Runs on the shown screen after it is recorded (a button press, say); unset: closed at once.
    std::function<void(ql::ReportScreen&)> onShow;

private:
    ql::ReportScreenShow m_previousShow;
};

} // namespace qltest
