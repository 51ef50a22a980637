#pragma once
// The commit dialog ("Commit Pay", or "Pay Slip" for a committed pay) without widgets. It works on
// the current row of the wage screen's pay list: it proposes a reference and a payment date, keeps
// the two tick boxes in their settings at once, and on Commit checks the wage accounts, posts the pay
// to the cashbook, stores the reference and the date, and prints the payslip. frmCommit shows it;
// quillary-cli drives it as a user's clicks and typing.
#include <QDate>
#include <QObject>
#include <QString>
#include <functional>

namespace ql {

class PayView;

class CommitModel {
public:
    // screen stands on the pay; owner places the dialogs this one opens.
    explicit CommitModel(PayView& screen, QObject* owner = nullptr);

    // The load: the boxes, the date, the memo box, reprint mode, and the proposed reference.
    void Form_Load();

    // What the dialog shows.
    QString title = QStringLiteral("Commit Pay");
    QString commitCaption = QStringLiteral("Commit"); // cmd_Commit(0)
    bool reprint = false;
    QDate payDate;      // FHDatePicker_PayDate
    QString TxtPayDate; // the same date, "Short Date"
    QString txtReference;
    bool chkCashbook = false;
    bool chkPrint = false; // chk_Print
    bool chkMemo = false;
    bool memoVisible = false;     // chkMemo and LblChkMemo
    bool dateEnabled = true;      // FHDatePicker_PayDate, TxtPayDate, lblPayDate
    bool referenceEnabled = true; // txtReference, lblReference
    bool printEnabled = true;     // chk_Print
    bool cashbookEnabled = true;
    QString focusControl; // where the dialog puts the focus ("txtReference")
    // The PAYE the user typed over the calculated one, as it will be committed ("$100.00"); empty when
    // the PAYE is calculated. The dialog says so, since a commit keeps a typed PAYE.
    QString typedPaye;
    QString typedPayeCaption() const; // "PAYE as typed: $100.00", with the PAYE's own name
    const QString& proposedReference() const { return m_proposed; }

    // False for a commit made without the dialog (the pay run's): the boxes then change for this
    // commit only, so a pay found committed meanwhile (reprint mode sets the cashbook box off) does not
    // switch the cashbook off for every later commit.
    bool remembersChoices = true;

    // The user's changes. A change of a box writes its setting at once, as a click does.
    void setPayDate(const QDate& date); // the picker's change: TxtPayDate follows
    void setCashbook(bool ticked);      // SwitchWageCash
    void setPrint(bool ticked);         // the setting PrintPaySlip
    void setMemo(bool ticked) { chkMemo = ticked; }

    // Index 0 Commit (or OK), 1 Cancel. True when the dialog unloads; false when it stays open.
    bool cmd_Commit_Click(int index);
    // The owner of the tax settings dialog that the account check may open (the commit dialog itself
    // on the desktop); the owner given at construction when unset.
    QObject* dialogOwner = nullptr;
    // The dialog hides itself before the payslip prints.
    std::function<void()> onHide;

    // "|0| up to |1|": the employee's pay interval and the pay's date as the wage screen shows it.
    QString description() const;

private:
    QString ReadReference();
    // Stores the reference and date; the failure's description, or empty.
    QString SaveReference(const QDate& date);
    void printSlip(const QString& dateLine, const QDate& date);
    PayView& m_screen;
    QObject* m_owner;
    QString m_proposed;
};

// The reference proposed after last: a number grows by 1 (through the runtime's number-to-text
// conversion), any other text stays as it is, and none gives "1".
QString NextReference(const QString& last);

// The length of a pay's reference, as its column holds it.
constexpr int kReferenceLength = 50;
// Why a reference can't be stored; empty when it can.
QString ReferenceRefusal(const QString& reference);

} // namespace ql
