#include "PayDeletion.h"
#include "CashbookLookups.h"
#include "Posting.h"
#include "data/PayFreeze.h"
#include "data/Recordset.h"
#include "frame/SettingGetters.h"
#include "frame/Texts.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"
#include "runtime/VbError.h"

namespace ql {

namespace {

// The reversal of one withdrawal: the same bank, party and reference, the amount and every line
// turned round, dated today; its TransactionsID.
qint32 reverseTransaction(Database& farm, qint32 transactionsID, const QDate& today) {
    auto original = farm.openRecordset(
        QStringLiteral("SELECT * FROM Transactions WHERE TransactionsID = %1").arg(transactionsID),
        RecordsetType::Snapshot);
    if (original->EOF_()) return 0; // removed in the cashbook by hand: nothing left to turn round
    const qint32 banksID = IsNull(original->value(QStringLiteral("BanksID")))
                               ? 0
                               : CLng(original->value(QStringLiteral("BanksID")));
    const QVariant amountValue = original->value(QStringLiteral("Amount"));
    const Currency amount = IsNull(amountValue) ? Currency() : -CCur(amountValue);
    Currency balance;
    qint32 count = 0;
    GetBankBalance(farm, banksID, balance, count);
    auto rs = farm.openRecordset(QStringLiteral("SELECT * FROM Transactions WHERE 1 = 0"), RecordsetType::Dynaset);
    rs->AddNew();
    rs->setValue(QStringLiteral("Date"), today);
    rs->setValue(QStringLiteral("AddressID"), original->value(QStringLiteral("AddressID")));
    rs->setValue(QStringLiteral("Reference"), original->value(QStringLiteral("Reference")));
    rs->setValue(QStringLiteral("Amount"), QVariant::fromValue(amount));
    rs->setValue(QStringLiteral("BanksID"), banksID);
    rs->setValue(QStringLiteral("Other Party"), original->value(QStringLiteral("Other Party")));
    if (banksID >= 995) {
        rs->setValue(QStringLiteral("PayDate"), today);
        rs->setValue(QStringLiteral("FrequencyID"), 1);
    }
    rs->setValue(QStringLiteral("Balance"), QVariant::fromValue(balance + amount));
    rs->setValue(QStringLiteral("Count"), count + 1);
    rs->Update();
    rs->Close();
    original->Close();
    const qint32 reversal = qint32(farm.lastInsertRowId());
    farm.execute(QStringLiteral("INSERT INTO TransactionDetails (TransactionsID, [Account Code], [Net Amount], "
                                "[Gross Amount], [GST Amount], [Enterprise Code], Quantity, Particulars, "
                                "[Transaction Memo], TaxReturnID, TaxNumber, PAYERtnID) SELECT %1, [Account "
                                "Code], -[Net Amount], -[Gross Amount], -[GST Amount], [Enterprise Code], "
                                "-Quantity, Particulars, [Transaction Memo], 0, 0, PAYERtnID FROM "
                                "TransactionDetails WHERE TransactionsID = %2 ORDER BY rowid")
                     .arg(reversal)
                     .arg(transactionsID));
    return reversal;
}

// Reverses the pay's posting once; the reversing withdrawal (an earlier one when it was reversed before).
qint32 reversePosting(Database& farm, const PostedPay& posted) {
    ensureReversedPaysTable(farm);
    farm.beginWriteTrans();
    try {
        const QVariant earlier = farm.scalar(
            QStringLiteral("SELECT ReversalID FROM QuillaryReversedPays WHERE WageID = %1").arg(posted.WageID));
        if (!IsNull(earlier)) {
            farm.commitTrans();
            return CLng(earlier);
        }
        const QDate today = Today();
        const qint32 reversal = reverseTransaction(farm, posted.TransactionsID, today);
        const qint32 taxReversal =
            posted.TaxTransactionsID ? reverseTransaction(farm, posted.TaxTransactionsID, today) : 0;
        farm.execute(QStringLiteral("INSERT INTO QuillaryReversedPays (WageID, Reference, ReversedDate, ReversalID, "
                                    "TaxReversalID) VALUES (?, ?, ?, ?, ?)"),
                     {posted.WageID, posted.Reference, today.toString(Qt::ISODate), reversal, taxReversal});
        farm.commitTrans();
        return reversal;
    } catch (...) {
        if (farm.inTransaction()) farm.rollback();
        throw;
    }
}

} // namespace

void ensureDeletedPaysTable(Database& wage) {
    if (wage.hasTable(QStringLiteral("QuillaryDeletedPays"))) return;
    wage.executeScript(deletedPaysTableScript());
}

void ensureReversedPaysTable(Database& farm) {
    if (farm.hasTable(QStringLiteral("QuillaryReversedPays"))) return;
    farm.executeScript(QStringLiteral("CREATE TABLE IF NOT EXISTS QuillaryReversedPays (\n"
                                      "    WageID LONG NOT NULL PRIMARY KEY,\n"
                                      "    Reference TEXT(50),\n"
                                      "    ReversedDate DATETIME,\n"
                                      "    ReversalID LONG,\n"
                                      "    TaxReversalID LONG DEFAULT 0\n"
                                      ")"));
}

QString PayDeletion::notice() const {
    QStringList lines;
    if (reversalID)
        lines << TranslateText(QStringLiteral("Its Cashbook withdrawal has been reversed (transaction |0|)."),
                               QStringList{QString::number(reversalID)});
    if (filingDate.isValid())
        lines << TranslateText(QStringLiteral("The payday filing for |0| held this pay: it needs an amendment."),
                               QStringList{Format(QVariant(filingDate), QStringLiteral("Short Date"))});
    return lines.join(QStringLiteral("\r\n"));
}

PayDeletion DeletePay(Database& wage, qint32 wageID) {
    PayDeletion result;
    try {
        ensureDeletedPaysTable(wage);
        const QVariantList row = wage.firstRow(QStringLiteral("SELECT Reference, PaymentDate FROM Wages WHERE WageID = %1").arg(wageID));
        if (row.isEmpty()) {
            result.failure = QStringLiteral("This pay is no longer there: another user or program deleted it.");
            return result;
        }
        // The cashbook first: a stop between the two leaves the pay in the payroll with its withdrawal
        // reversed, and deleting it again finishes the work without a second reversal.
        std::optional<PostedPay> posted;
        {
            Database farm;
            farm.open(DataFileName());
            posted = findPostedPay(farm, wageID);
            if (posted) result.reversalID = reversePosting(farm, *posted);
        }
        wage.beginWriteTrans();
        try {
            const QVariantList now = wage.firstRow(
                QStringLiteral("SELECT Reference, PaymentDate FROM Wages WHERE WageID = %1").arg(wageID));
            if (now.isEmpty()) {
                wage.rollback();
                result.failure = QStringLiteral("This pay is no longer there: another user or program deleted it.");
                return result;
            }
            const bool committed = !IsNull(now.at(0)) && !now.at(0).toString().isEmpty();
            if (committed && !IsNull(now.at(1))) result.filingDate = CDate(now.at(1));
            wage.execute(QStringLiteral("INSERT OR REPLACE INTO QuillaryDeletedPays (WageID, EmployeeID, [Date], "
                                        "Reference, PaymentDate, Hours, TotalTaxable, PAYE, NonTaxAllow, "
                                        "Deductions, TakeHome, ReversalID, DeletedAt) SELECT WageID, EmployeeID, "
                                        "[Date], Reference, PaymentDate, Hours, TotalTaxable, PAYE, NonTaxAllow, "
                                        "Deductions, TakeHome, %1, datetime('now') FROM Wages WHERE WageID = %2")
                             .arg(result.reversalID)
                             .arg(wageID));
            wage.execute(QStringLiteral("DELETE FROM Wages WHERE WageID = %1").arg(wageID));
            wage.commitTrans();
        } catch (...) {
            if (wage.inTransaction()) wage.rollback();
            throw;
        }
        result.deleted = true;
    } catch (const std::exception& e) {
        result.failure = toVbError(e).description();
    }
    return result;
}

} // namespace ql
