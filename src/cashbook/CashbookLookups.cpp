#include "CashbookLookups.h"
#include "data/Recordset.h"
#include "payengine/AppContext.h"
#include "runtime/Convert.h"
#include "runtime/Trap.h"

namespace ql {

namespace {
qint32 longOrZero(const QVariant& v) {
    return IsNull(v) ? 0 : CLng(v);
}
} // namespace

void getcashbookIDs(Database& db, qint32& banksID, qint32& enterpriseID) {
    trap(QStringLiteral("getcashbookIDs"), [&] {
        auto rs = db.openRecordset(QStringLiteral("SELECT DISTINCTROW BankID, EnterpriseID From Employees "
                                                  "WHERE EmployeeID=") +
                                       QString::number(App().CurrentEmployeeID) + QStringLiteral(";"),
                                   RecordsetType::Snapshot);
        if (!rs->EOF_()) {
            banksID = longOrZero(rs->value(QStringLiteral("BankID")));
            enterpriseID = longOrZero(rs->value(QStringLiteral("EnterpriseID")));
        } else {
            banksID = GetDefaultBank(db, true);
            enterpriseID = 1;
        }
        rs->Close();
    });
}

qint32 getEmployeeAddressID(qint32 employeeID) {
    qint32 addressID = 0;
    trap(QStringLiteral("getEmployeeAddressID"), [&] {
        auto rs = App().WageDatabase.openRecordset(
            QStringLiteral("Select AddressID from Employees where EmployeeID = ") +
                QString::number(employeeID),
            RecordsetType::Snapshot);
        if (!rs->EOF_()) addressID = longOrZero(rs->value(QStringLiteral("AddressID")));
        rs->Close();
    });
    return addressID;
}

QString GetOtherParty(Database& db, qint32 addressID) {
    QString name;
    trap(QStringLiteral("GetOtherParty"), [&] {
        auto rs = db.openRecordset(QStringLiteral("Select BusName from Addresses where AddressID = ") +
                                       QString::number(addressID),
                                   RecordsetType::Snapshot);
        if (!rs->EOF_()) {
            const QVariant v = rs->value(QStringLiteral("BusName"));
            name = IsNull(v) ? QString() : v.toString();
        }
        rs->Close();
    });
    return name;
}

void GetBankBalance(Database& db, qint32 banksID, Currency& balance, qint32& count) {
    // The bank's last row, as a move to the end of "Select * from Transactions where BanksID = n"
    // finds it, without reading the bank's whole history.
    auto rs = db.openRecordset(QStringLiteral("Select Balance, [Count] from Transactions where BanksID = ") +
                                   QString::number(banksID) + QStringLiteral(" ORDER BY rowid DESC LIMIT 1"),
                               RecordsetType::Snapshot);
    if (!rs->EOF_()) {
        const QVariant b = rs->value(QStringLiteral("Balance"));
        const QVariant c = rs->value(QStringLiteral("Count"));
        balance = CCur(b);
        count = CLng(c);
    }
    rs->Close();
}

qint32 GetDefaultPartner(Database& db) {
    qint32 partner = 1;
    auto rs = db.openRecordset(QStringLiteral("SELECT DISTINCTROW Partners.PartnerID From Partners "
                                              "WHERE (((Partners.PartnerDefault)=True));"),
                               RecordsetType::Snapshot);
    if (!rs->EOF_()) partner = CLng(rs->value(0));
    rs->Close();
    return partner;
}

qint32 GetDefaultBank(Database& db, bool ordinary) {
    qint32 bank = ordinary ? 1 : 999;
    qint32 partner = 1;
    skipErrors([&] { partner = GetDefaultPartner(db); });
    // The ordinary query runs the partner into its filter with no word between them, so it never
    // reads and the fallback stands.
    const QString sql = ordinary ? QStringLiteral("Select top 1 BanksID from Banks where  PartnerID = ") +
                                       QString::number(partner) + QStringLiteral("BanksID < 995")
                                 : QStringLiteral("Select BanksID from Banks where PartnerID = ") +
                                       QString::number(partner) + QStringLiteral(" and AccountType=1");
    std::unique_ptr<Recordset> rs;
    skipErrors([&] { rs = db.openRecordset(sql, RecordsetType::Snapshot); });
    skipErrors([&] {
        if (rs && !rs->EOF_()) bank = CLng(rs->value(QStringLiteral("BanksID")));
    });
    skipErrors([&] {
        if (rs) rs->Close();
    });
    return bank;
}

void AddTransactionDetail(Recordset& rst, Currency amount, qint32 transactionsID, qint32 account,
                          qint32 enterprise, const QString& particulars, const QString& memo, float quantity,
                          bool isPaye) {
    rst.AddNew();
    rst.setValue(QStringLiteral("TransactionsID"), transactionsID);
    rst.setValue(QStringLiteral("Account Code"), account);
    rst.setValue(QStringLiteral("Net Amount"), QVariant::fromValue(amount));
    rst.setValue(QStringLiteral("Gross Amount"), QVariant::fromValue(amount));
    rst.setValue(QStringLiteral("GST Amount"), 0);
    rst.setValue(QStringLiteral("Enterprise Code"), enterprise);
    rst.setValue(QStringLiteral("Quantity"), quantity);
    rst.setValue(QStringLiteral("Particulars"),
                 particulars.size() >= 31 ? particulars.left(30) : particulars);
    rst.setValue(QStringLiteral("Transaction Memo"), memo);
    rst.setValue(QStringLiteral("TaxReturnID"), 0);
    rst.setValue(QStringLiteral("TaxNumber"), 0);
    if (isPaye) rst.setValue(QStringLiteral("PAYERtnID"), -1);
    rst.Update();
}

} // namespace ql
