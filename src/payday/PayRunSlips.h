#pragma once
// The payslips of a pay run, chosen once for the whole run: while a PayRunSlips stands, a commit's
// payslip print opens no report screen but is kept as a prepared report, so that the run can save
// every slip as a PDF file, show them in one preview, print them at once or send them by email.
#include "cashbook/PaySlipPrinter.h"
#include "reports/PreparedReport.h"
#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>

namespace ql {

// Where the run's payslips go.
enum class SlipDelivery { None = 0, PdfFolder = 1, Preview = 2, Printer = 3, Email = 4 };
// The choice as the run's screen offers it ("Save as PDF files", ...).
QString SlipDeliveryCaption(SlipDelivery delivery);
// What the confirmation says of it ("saved as PDF files in FOLDER", ...).
QString SlipDeliveryPhrase(SlipDelivery delivery, const QString& folder);

// The choice and the folder as the user left them last (section PAYRUN), and storing them.
SlipDelivery ReadSlipDelivery();
void SaveSlipDelivery(SlipDelivery delivery);
QString ReadSlipFolder(); // the folder of the PDF files; Payslips in the documents folder at first
void SaveSlipFolder(const QString& folder);

struct PayRunSlip {
    qint32 wageID = 0;
    QString employee;
    QDate paid;
    QString reference;
    PreparedReport report;
};

// "Payslip NAME yyyy-mm-dd REFERENCE.pdf", with characters a file name cannot hold left out.
QString PaySlipFileName(const PayRunSlip& slip);

class PayRunSlips {
public:
    PayRunSlips();
    ~PayRunSlips();
    PayRunSlips(const PayRunSlips&) = delete;
    PayRunSlips& operator=(const PayRunSlips&) = delete;
    QList<PayRunSlip> slips;
    QStringList failures; // "Name: why" of each slip that could not be made

private:
    PaySlipPrinter m_previous;
};

} // namespace ql
