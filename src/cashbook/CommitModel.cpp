#include "CommitModel.h"
#include "PaySlipPrinter.h"
#include "Posting.h"
#include "WageAccounts.h"
#include "data/PayFreeze.h"
#include "data/Recordset.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Texts.h"
#include "payengine/AppContext.h"
#include "payengine/PayLineFigures.h"
#include "payengine/PayTotals.h"
#include "payengine/TypedPaye.h"
#include "payengine/PayView.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"
#include "runtime/VbError.h"
#include <optional>

namespace ql {

QString NextReference(const QString& last) {
    if (IsNumeric(last)) return CStr(CDbl(last) + 1.0);
    if (!last.isEmpty()) return last;
    return QStringLiteral("1");
}

CommitModel::CommitModel(PayView& screen, QObject* owner) : m_screen(screen), m_owner(owner) {}

void CommitModel::Form_Load() {
    PayList& pays = m_screen.datPays;
    setCashbook(getWageCash() != 0);
    setPrint(ReadPrintPaySlip() != 0);
    const QVariant paid = pays.value(QStringLiteral("PaymentDate"));
    const QVariant date = IsNull(paid) ? pays.value(QStringLiteral("Date")) : paid;
    setPayDate(IsNull(date) ? Today() : CDate(date));
    memoVisible = !IsNull(pays.value(QStringLiteral("Details")));
    const QVariant reference = pays.value(QStringLiteral("Reference"));
    if (!IsNull(reference)) {
        reprint = true;
        txtReference = reference.toString();
        dateEnabled = false;
        referenceEnabled = false;
        printEnabled = false;
        setCashbook(false);
        cashbookEnabled = false;
        commitCaption = QStringLiteral("&OK");
        title = QStringLiteral("Pay Slip");
    }
    if (!reprint) {
        const QVariant id = pays.value(QStringLiteral("WageID"));
        skipErrors([&] {
            if (const auto typed = IsNull(id) ? std::nullopt : TypedPaye(App().WageDatabase, CLng(id)))
                typedPaye = Format(QVariant::fromValue(*typed), QStringLiteral("currency"));
        });
    }
    m_proposed = ReadReference();
    if (txtReference.isEmpty()) txtReference = NextReference(m_proposed);
    m_proposed = txtReference;
}

QString CommitModel::typedPayeCaption() const {
    return typedPaye.isEmpty() ? QString()
                               : TranslateText(QStringLiteral("|0| as typed: |1|"),
                                               QStringList{PayAsYouEarn(), typedPaye});
}

void CommitModel::setPayDate(const QDate& date) {
    payDate = date;
    TxtPayDate = Format(date, QStringLiteral("Short Date"));
}

void CommitModel::setCashbook(bool ticked) {
    if (ticked == chkCashbook) return;
    chkCashbook = ticked;
    if (remembersChoices) SwitchWageCash(ticked ? 1 : 0);
}

void CommitModel::setPrint(bool ticked) {
    if (ticked == chkPrint) return;
    chkPrint = ticked;
    if (remembersChoices) SavePrintPaySlip(ticked ? 1 : 0);
}

QString CommitModel::description() const {
    const PayList& pays = m_screen.datPays;
    QVariant interval;
    const QVariant employee = pays.value(QStringLiteral("EmployeeID"));
    if (!IsNull(employee))
        interval = App().WageDatabase.scalar(
            QStringLiteral(
                "SELECT PayInterval.IntervalName FROM Employees INNER JOIN PayInterval ON "
                "Employees.PayIntervalID = PayInterval.PayIntervalID WHERE Employees.EmployeeID = ") +
            QString::number(CLng(employee)));
    const QVariant date = pays.value(QStringLiteral("Date"));
    return TranslateText(QStringLiteral("|0| up to |1|"),
                         QVariantList{interval, IsNull(date)
                                                    ? QVariant()
                                                    : QVariant(Format(date, QStringLiteral("Short Date")))});
}

bool CommitModel::cmd_Commit_Click(int index) {
    if (index == 1) return true;
    if (index != 0) return false;
    PayList& pays = m_screen.datPays;
    if (txtReference.isEmpty()) {
        ShowMessage(QStringLiteral("Need reference"), msg::OKOnly, Firm(),
                    QStringLiteral("An Error has Occurred"), QString(), msg::Stop, true);
        focusControl = QStringLiteral("txtReference");
        return false;
    }
    // A reprint stores the same reference and date again (the boxes are disabled); only a new commit
    // has a reference to check and figures to bring in line.
    const QString refusal = reprint ? QString() : ReferenceRefusal(txtReference);
    if (!refusal.isEmpty()) {
        ShowMessage(refusal, msg::OKOnly, Firm(), QStringLiteral("An Error has Occurred"), QString(), msg::Stop,
                    true);
        focusControl = QStringLiteral("txtReference");
        return false;
    }
    // The pay is committed with the figures its lines give (a PAYE typed on purpose is its tax line),
    // not with totals a save left behind.
    if (!reprint) try {
        pays.UpdateRecord();
        const qint32 wageID = CLng(pays.value(QStringLiteral("WageID")));
        if (wageID == App().CurrentWageID) SettlePayFigures(m_screen);
        // A posted pay keeps the figures it was posted with.
        if (!PayFrozen(App().WageDatabase, wageID) && BringFiguresInLine(App().WageDatabase, wageID)) {
            pays.Refresh();
            for (pays.MoveFirst(); !pays.EOF_(); pays.MoveNext())
                if (CLng(pays.value(QStringLiteral("WageID"))) == wageID) break;
        }
    } catch (const std::exception& e) {
        ShowMessage(toVbError(e).description(), msg::OKOnly, Firm(), QStringLiteral("An Error has Occurred"),
                    QString(), msg::Stop, true);
        return false;
    }
    const QString dateLine = description();
    const QDate date = payDate.isValid() ? payDate : Today();
    QString outcome;
    if (chkCashbook) {
        outcome = EnsureWageAccounts(dialogOwner ? dialogOwner : m_owner);
        if (outcome.isEmpty() && pays.value(QStringLiteral("Reference")).toString().isEmpty()) {
            pays.UpdateRecord();
            // A pay posted by a commit that was cut off before its reference was stored is not
            // posted again: it takes the reference of its posting now.
            std::optional<PostedPay> posted;
            skipErrors([&] { posted = findPostedPay(CLng(pays.value(QStringLiteral("WageID")))); });
            if (posted) {
                ShowMessage(
                    TranslateText(
                        QStringLiteral("This pay was posted to the Cashbook before, with the reference "
                                       "|0|, but not committed. It is committed now with that "
                                       "reference and not posted again."),
                        QStringList{posted->Reference}),
                    msg::OKOnly, Firm(), QStringLiteral("Information"), QString(), msg::Information, true);
                txtReference = posted->Reference;
            } else {
                outcome = PostPayToCashbook(pays, txtReference, dateLine, date);
            }
        }
    }
    if (!outcome.isEmpty()) {
        if (outcome != QLatin1String("Cancelled"))
            ShowMessage(outcome, msg::OKOnly, Firm(), QStringLiteral("An Error has Occurred"), QString(),
                        msg::Stop, true);
        return false;
    }
    outcome = SaveReference(date);
    if (!outcome.isEmpty()) {
        ShowMessage(outcome, msg::OKOnly, Firm(), QStringLiteral("An Error has Occurred"), QString(), msg::Stop,
                    true);
        return false;
    }
    if (chkPrint) printSlip(dateLine, date);
    return true;
}

void CommitModel::printSlip(const QString& dateLine, const QDate& date) {
    PayList& pays = m_screen.datPays;
    if (onHide) onHide();
    PaySlipRequest request;
    request.owner = m_owner;
    request.screen = &m_screen;
    {
        const QVariant id = pays.value(QStringLiteral("WageID"));
        request.WageID = IsNull(id) ? 0 : CLng(id);
    }
    request.Description = dateLine;
    request.Reference = txtReference;
    request.PaymentDate = date;
    request.ShowMemo = chkMemo;
    PrintPaySlip(request);
}

QString CommitModel::ReadReference() {
    QString last;
    trap(QStringLiteral("ReadReference"), [&] {
        Database& db = App().WageDatabase;
        if (!db.tableNames().contains(QStringLiteral("Reference")))
            db.createTextTable(QStringLiteral("Reference"), QStringLiteral("LastReference"), 20);
        auto rs = db.openRecordset(QStringLiteral("Reference"), RecordsetType::Snapshot);
        if (!rs->EOF_()) {
            const QVariant v = rs->value(QStringLiteral("LastReference"));
            if (!IsNull(v)) last = v.toString();
        }
        rs->Close();
    });
    return last;
}

QString CommitModel::SaveReference(const QDate& date) {
    PayList& pays = m_screen.datPays;
    Database& wage = App().WageDatabase;
    const qint32 wageID = CLng(pays.value(QStringLiteral("WageID")));
    // One write transaction: the pay must still be uncommitted when its reference is stored, or a
    // second process committing it at the same time would write its own over the first.
    try {
        wage.beginWriteTrans();
        const QString stored = StoredReference(wage, wageID);
        // Stored already with this very reference (a reprint, or a posting adopted): the same is
        // written again. Another reference means another commit got there first.
        if (!stored.isEmpty() && stored != txtReference) {
            wage.rollback();
            return TranslateText(QStringLiteral("This pay was committed meanwhile by another user or "
                                                "program, with the reference |0|."),
                                 QStringList{stored});
        }
        // The date before the reference: a stop between the two leaves the pay open, not committed
        // without its date.
        pays.setValueNow(QStringLiteral("PaymentDate"), date);
        pays.setValueNow(QStringLiteral("Reference"), txtReference);
        auto rs = wage.openRecordset(QStringLiteral("Reference"), RecordsetType::Dynaset);
        if (rs->EOF_())
            rs->AddNew();
        else
            rs->Edit();
        rs->setValue(QStringLiteral("LastReference"), m_proposed);
        rs->Update();
        rs->Close();
        wage.commitTrans();
    } catch (const std::exception& e) {
        const VbError error = toVbError(e);
        skipErrors([&] {
            if (wage.inTransaction()) wage.rollback();
        });
        return error.description();
    }
    return QString();
}

QString ReferenceRefusal(const QString& reference) {
    if (reference.size() > kReferenceLength)
        return TranslateText(QStringLiteral("The reference can be at most |0| characters long."),
                             QStringList{QString::number(kReferenceLength)});
    for (const QChar c : reference)
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            return QStringLiteral("The reference can't hold line breaks or other control characters.");
    return QString();
}

} // namespace ql
