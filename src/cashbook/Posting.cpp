#include "Posting.h"
#include "CashbookLookups.h"
#include "data/PayFreeze.h"
#include "data/PayeInfo.h"
#include "data/Recordset.h"
#include "frame/SettingGetters.h"
#include "frame/Texts.h"
#include "payengine/AppContext.h"
#include "payengine/PayView.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"

namespace ql {

namespace {

Currency moneyOrZero(const QVariant& v) {
    return IsNull(v) ? Currency() : CCur(v);
}
qint32 longOf(const QVariant& v) {
    return IsNull(v) ? 0 : CLng(v);
}

// A withdrawal's header; returns its TransactionsID, read from the last row as the table shows it.
qint32 addTransaction(Recordset& rs, const QDate& date, qint32 addressID, const QString& reference,
                      Currency amount, qint32 banksID, const QString& otherParty, Currency oldBalance,
                      qint32 oldCount) {
    rs.AddNew();
    rs.setValue(QStringLiteral("Date"), date);
    rs.setValue(QStringLiteral("AddressID"), addressID);
    rs.setValue(QStringLiteral("Reference"), reference);
    rs.setValue(QStringLiteral("Amount"), QVariant::fromValue(amount));
    rs.setValue(QStringLiteral("BanksID"), banksID);
    rs.setValue(QStringLiteral("Other Party"), otherParty);
    if (banksID >= 995) {
        rs.setValue(QStringLiteral("PayDate"), date);
        rs.setValue(QStringLiteral("FrequencyID"), 1);
    }
    rs.setValue(QStringLiteral("Balance"), QVariant::fromValue(oldBalance + amount));
    rs.setValue(QStringLiteral("Count"), oldCount + 1);
    rs.Update();
    rs.MoveLast();
    return CLng(rs.value(QStringLiteral("TransactionsID")));
}

} // namespace

QString postedPaysTable() {
    return QStringLiteral("QuillaryPostedPays");
}

void ensurePostedPaysTable(Database& farm) {
    if (farm.hasTable(postedPaysTable())) return;
    farm.executeScript(QStringLiteral("CREATE TABLE IF NOT EXISTS QuillaryPostedPays (\n"
                                      "    WageID LONG NOT NULL PRIMARY KEY,\n"
                                      "    Reference TEXT(50),\n"
                                      "    PostedDate DATETIME,\n"
                                      "    TransactionsID LONG,\n"
                                      "    TaxTransactionsID LONG DEFAULT 0\n"
                                      ")"));
}

std::optional<PostedPay> findPostedPay(Database& farm, qint32 wageID) {
    if (!farm.hasTable(postedPaysTable())) return std::nullopt;
    auto rs = farm.openRecordset(QStringLiteral("SELECT * FROM QuillaryPostedPays WHERE WageID = ") +
                                     QString::number(wageID),
                                 RecordsetType::Snapshot);
    if (rs->EOF_()) return std::nullopt;
    PostedPay p;
    p.WageID = wageID;
    p.Reference = rs->value(QStringLiteral("Reference")).toString();
    const QVariant posted = rs->value(QStringLiteral("PostedDate"));
    p.PostedDate = IsNull(posted) ? QDate() : CDate(posted);
    p.TransactionsID = longOf(rs->value(QStringLiteral("TransactionsID")));
    p.TaxTransactionsID = longOf(rs->value(QStringLiteral("TaxTransactionsID")));
    return p;
}

std::optional<PostedPay> findPostedPay(qint32 wageID) {
    Database farm;
    farm.open(DataFileName());
    return findPostedPay(farm, wageID);
}

QString alreadyPostedMessage(const PostedPay& posted) {
    return TranslateText(
        QStringLiteral("This pay has already been posted to the Cashbook with the reference |0| "
                       "(transaction |1|), so it is not posted again."),
        QStringList{posted.Reference, QString::number(posted.TransactionsID)});
}

QString PostPayToCashbook(const QString& Reference, const QString& Description, const QDate& Date) {
    PayView* view = App().WageForm;
    if (!view) return QStringLiteral("No current record.");
    return PostPayToCashbook(view->datPays, Reference, Description, Date);
}

QString PostPayToCashbook(PayList& pays, const QString& Reference, const QString& Description,
                          const QDate& Date) {
    Database farm;
    std::unique_ptr<Recordset> transactions, details;
    Database& wage = App().WageDatabase;
    const qint32 heldID = longOf(pays.value(QStringLiteral("WageID")));
    bool held = false, posted = false;
    try {
        // The pay is held before anything is posted, so that its figures can't change from here on,
        // and they are read from the file, as another process or screen may have changed them.
        HoldPay(wage, heldID, Reference);
        held = true;
        auto stored = wage.openRecordset(QStringLiteral("SELECT * FROM Wages WHERE WageID = %1").arg(heldID),
                                         RecordsetType::Snapshot);
        Recordset& pay = *stored;
        // 1 to 4: the accounts, the label and the pay's figures.
        farm.open(DataFileName());
        const qint32 payeAccount = CLng(LoadPayeInfo(farm, QStringLiteral("PAYEAccount"), PAYEAccount()));
        const QString payeLabel = PayAsYouEarn();
        const qint32 adjustAccount =
            CLng(LoadPayeInfo(farm, QStringLiteral("AdjustAccount"), AdjustAccount()));
        const qint32 wageAccount = CLng(LoadPayeInfo(farm, QStringLiteral("WageAccount"), WageAccount()));
        const QVariant details_ = pay.value(QStringLiteral("Details"));
        const QString memo = IsNull(details_) ? QString() : details_.toString();
        const QVariant hours = pay.value(QStringLiteral("Hours"));
        const float quantity = IsNull(hours) ? 0.0f : CSng(hours);
        const Currency payAmount = -moneyOrZero(pay.value(QStringLiteral("TakeHome")));
        const Currency wageAmount = -moneyOrZero(pay.value(QStringLiteral("TotalTaxable")));
        const Currency allowAmount = -moneyOrZero(pay.value(QStringLiteral("NonTaxAllow")));
        const Currency deductAmount = moneyOrZero(pay.value(QStringLiteral("Deductions")));
        Currency taxAmount = moneyOrZero(pay.value(QStringLiteral("PAYE")));
        const bool nonCash = CBool(LoadPayeInfo(farm, QStringLiteral("PayeNonCash"), PAYENonCash()));
        const qint32 paymentAccount =
            CLng(LoadPayeInfo(farm, QStringLiteral("PaymentAccount"), PaymentAccount()));
        taxAmount = -taxAmount;
        const qint32 wageID = longOf(pay.value(QStringLiteral("WageID")));

        // 5 to 7: the parties, the banks and their balances, all read before anything is written.
        qint32 addressID = 0;
        const QVariant employeeID = pay.value(QStringLiteral("EmployeeID"));
        if (!IsNull(employeeID)) addressID = getEmployeeAddressID(CLng(employeeID));
        qint32 banksID = 0, enterpriseID = 0;
        getcashbookIDs(App().WageDatabase, banksID, enterpriseID);
        Currency balance;
        qint32 count = 0;
        GetBankBalance(farm, banksID, balance, count);
        const QString otherParty = GetOtherParty(farm, addressID);
        const qint32 payeAddressID =
            CLng(LoadPayeInfo(farm, QStringLiteral("PayeAddressID"), PAYEAddressID()));
        const qint32 taxBank = GetDefaultBank(farm, !nonCash);
        Currency taxBalance;
        qint32 taxCount = 0;
        GetBankBalance(farm, taxBank, taxBalance, taxCount);
        const QString taxOffice = GetOtherParty(farm, payeAddressID);

        // 8: the tables for writing, the record of posted pays, and the transaction.
        ensurePostedPaysTable(farm);
        transactions = farm.openRecordset(QStringLiteral("SELECT * FROM Transactions WHERE 1 = 0"),
                                          RecordsetType::Dynaset);
        details = farm.openRecordset(QStringLiteral("SELECT * FROM TransactionDetails WHERE 1 = 0"),
                                     RecordsetType::Dynaset);
        farm.beginTrans();
        if (const auto earlier = findPostedPay(farm, wageID)) {
            held = false; // posted before: the hold stays
            raiseError(err::DuplicateKey, QStringLiteral("Quillary"), alreadyPostedMessage(*earlier));
        }

        // 9 to 11: the pay's withdrawal and its lines.
        const qint32 payID = addTransaction(*transactions, Date, addressID, Reference, payAmount, banksID,
                                            otherParty, balance, count);
        AddTransactionDetail(*details, wageAmount, payID, wageAccount, enterpriseID, Description, memo,
                             quantity, false);
        if (deductAmount != Currency())
            AddTransactionDetail(*details, deductAmount, payID, adjustAccount, enterpriseID,
                                 QStringLiteral("Deductions"), QString(), 0.0f, false);
        if (allowAmount != Currency())
            AddTransactionDetail(*details, allowAmount, payID, adjustAccount, enterpriseID,
                                 QStringLiteral("Non taxable Allowances"), QString(), 0.0f, false);
        if (taxAmount != Currency())
            AddTransactionDetail(*details, -taxAmount, payID, payeAccount, enterpriseID, payeLabel, QString(),
                                 0.0f, true);

        // 12: the tax withdrawal, for any amount, 0.00 included.
        qint32 taxID = 0;
        if (nonCash) {
            taxID = addTransaction(*transactions, Date, payeAddressID, Reference, taxAmount, taxBank,
                                   taxOffice, taxBalance, taxCount);
            AddTransactionDetail(*details, taxAmount, taxID, paymentAccount, enterpriseID, payeLabel,
                                 QString(), 0.0f, false);
        }

        farm.execute(
            QStringLiteral("INSERT INTO QuillaryPostedPays (WageID, Reference, PostedDate, TransactionsID, "
                           "TaxTransactionsID) VALUES (?, ?, ?, ?, ?)"),
            {wageID, Reference, Date.toString(Qt::ISODate), payID, taxID});

        // 13
        farm.commitTrans();
        posted = true;
        details->Close();
        transactions->Close();
        farm.close();
        return QString();
    } catch (const std::exception& e) {
        const VbError error = toVbError(e);
        skipErrors([&] {
            if (farm.inTransaction()) farm.rollback();
        });
        skipErrors([&] {
            if (details) details->Close();
        });
        skipErrors([&] {
            if (transactions) transactions->Close();
        });
        skipErrors([&] { farm.close(); });
        if (held && !posted) skipErrors([&] { ReleasePay(wage, heldID); });
        return error.description();
    }
}

} // namespace ql
