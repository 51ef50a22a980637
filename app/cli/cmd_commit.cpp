// The PAYE settings, the commit dialog and the cashbook posting, as a user drives them:
//   tax-settings [--set NAME=VALUE ...]      what the Tax Information dialog loads; --set saves as its OK
//   reference WAGE_ID                        the commit dialog loaded for the pay
//   commit WAGE_ID [options]                 the commit dialog: load, the changes, then Commit
//   post WAGE_ID REFERENCE DATE DESCRIPTION  the cashbook posting alone
#include "CliCommand.h"
#include "JsonRows.h"
#include "PayScreen.h"
#include "cashbook/CommitModel.h"
#include "cashbook/Posting.h"
#include "data/PayeInfo.h"
#include "data/Recordset.h"
#include "data/SqlSupport.h"
#include "frame/ScriptedDialogs.h"
#include "frame/SettingGetters.h"
#include "payengine/AppContext.h"
#include "payengine/PayTotals.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "taxsettings/PayeInfoForm.h"
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <memory>

namespace {

qint32 idArgument(const QString& text) {
    bool ok = false;
    const qint32 id = text.toInt(&ok);
    if (!ok) throw cli::CliUsageError();
    return id;
}

QDate dateArgument(const QString& text) {
    const QDate d = QDate::fromString(text, Qt::ISODate);
    if (!d.isValid()) throw cli::CliUsageError();
    return d;
}

bool onOff(const QString& text) {
    if (text == QLatin1String("on")) return true;
    if (text == QLatin1String("off")) return false;
    throw cli::CliUsageError();
}

// --- tax-settings ------------------------------------------------------------------------------

struct PayeField {
    const char* name;
    std::function<QVariant()> fallback;
};

// Every column of PayeInfo with the default it falls back on; the income tax columns have none.
const QList<PayeField>& payeFields() {
    static const QList<PayeField> fields{
        {"PAYEAccount", [] { return QVariant(ql::PAYEAccount()); }},
        {"PAYEFreq", [] { return QVariant(ql::PAYEFreq()); }},
        {"WageAccount", [] { return QVariant(ql::WageAccount()); }},
        {"PaymentAccount", [] { return QVariant(ql::PaymentAccount()); }},
        {"PAYEStart",
         [] {
             return ql::PAYEStart() == ql::ZeroDate ? QVariant(ql::PAYEStartText())
                                                    : QVariant(ql::PAYEStart());
         }},
        {"AdjustAccount", [] { return QVariant(ql::AdjustAccount()); }},
        {"TaxFreq", [] { return QVariant(); }},
        {"ITaxStart", [] { return QVariant(); }},
        {"PAYENonCash", [] { return QVariant(ql::PAYENonCash()); }},
        {"PAYEAddressID", [] { return QVariant(ql::PAYEAddressID()); }},
    };
    return fields;
}

QString settingsJson() {
    ql::Database farm;
    farm.open(ql::DataFileName());
    QStringList members;
    for (const PayeField& f : payeFields()) {
        const QString name = QString::fromLatin1(f.name);
        members << QStringLiteral("  ") + cli::jsonString(name) + QStringLiteral(": ") +
                       cli::jsonVariant(ql::LoadPayeInfo(farm, name, f.fallback()));
    }
    return QStringLiteral("{\n") + members.join(QStringLiteral(",\n")) + QStringLiteral("\n}");
}

// Selects the entry with the item data in a list of the dialog; false when the list has none.
bool selectData(ql::ComboModel& combo, const QString& value) {
    bool ok = false;
    const qint32 data = value.toInt(&ok);
    if (!ok) return false;
    for (int i = 0; i < combo.count(); ++i) {
        if (combo.itemData(i) == data) {
            combo.setSelectedIndex(i);
            return true;
        }
    }
    return false;
}

// One NAME=VALUE as the user's choice on the open dialog.
void applySetting(ql::PayeInfoForm& form, const QString& name, const QString& value,
                  ql::ScriptedDialogs& dialogs) {
    auto list = [&](ql::ComboModel& combo) {
        if (!selectData(combo, value))
            throw cli::CliFailure(QStringLiteral("%1 has no entry %2 to choose.").arg(name, value));
    };
    const QString key = name.toLower();
    if (key == QLatin1String("payeaccount")) {
        list(form.cmbHolding1);
        form.cmbHolding1_Click();
    } else if (key == QLatin1String("payefreq")) {
        list(form.cmbFreq1(0));
    } else if (key == QLatin1String("wageaccount")) {
        list(form.cmbWage1);
        form.cmbWage1_Click();
    } else if (key == QLatin1String("paymentaccount")) {
        list(form.cmbPayment);
        form.cmbPayment_Click();
    } else if (key == QLatin1String("adjustaccount")) {
        form.cmbAdjust_GotFocus();
        const int mark = dialogs.calls.size();
        list(form.cmbAdjust);
        form.cmbAdjust_Click();
        if (dialogs.calls.size() > mark) throw cli::CliFailure(dialogs.calls.last().message);
    } else if (key == QLatin1String("payestart")) {
        form.txt_GSTDate2 = value;
    } else if (key == QLatin1String("payenoncash")) {
        const QString v = value.toLower();
        form.chkNonCash = v == QLatin1String("on") || v == QLatin1String("true") || v == QLatin1String("y") ||
                          v == QLatin1String("yes") || v == QLatin1String("1");
        form.chkNonCash_Click();
    } else if (key == QLatin1String("payeaddressid")) {
        list(form.cmbTaxOffice);
        form.cmbTaxOffice_Click();
    } else if (key == QLatin1String("taxfreq") || key == QLatin1String("itaxstart")) {
        throw cli::CliFailure(QStringLiteral("%1 is not on the Tax Information dialog.").arg(name));
    } else {
        throw cli::CliFailure(QStringLiteral("There is no tax setting %1.").arg(name));
    }
    if (key == QLatin1String("payenoncash") || key == QLatin1String("payeaddressid"))
        cli::err() << name << " is shown on the Tax Information dialog, which does not store it.\n";
}

int taxSettings(const QStringList& args, QTextStream& out) {
    ql::AppContext context;
    ql::setApp(&context);
    ql::ScriptedDialogs dialogs;
    dialogs.setEcho([](const QString& line) { cli::err() << line << "\n"; });
    ql::setDialogs(&dialogs);
    struct Restore {
        ~Restore() {
            ql::setDialogs(nullptr);
            ql::setApp(nullptr);
        }
    } restore;
    if (!args.isEmpty()) {
        if (args.first() != QLatin1String("--set") || args.size() < 2) throw cli::CliUsageError();
        QList<std::pair<QString, QString>> sets;
        for (const QString& a : args.mid(1)) {
            const qsizetype eq = a.indexOf(u'=');
            if (eq <= 0) throw cli::CliUsageError();
            sets.append({a.left(eq), a.mid(eq + 1)});
        }
        ql::PayeInfoForm form;
        form.Form_Load();
        try {
            for (const auto& [name, value] : sets)
                applySetting(form, name, value, dialogs);
        } catch (...) {
            // The dialog saves on every way out; a refused choice leaves the earlier one standing.
            form.Form_Unload();
            throw;
        }
        form.cmdPartners_Click(0);
        form.Form_Unload();
    }
    out << settingsJson() << "\n";
    return 0;
}

// --- the commit dialog -------------------------------------------------------------------------

// The settings dialog as the command line answers it: loaded, then Cancel.
QString payeInfoCancelled(QObject*) {
    ql::PayeInfoForm form;
    form.Form_Load();
    form.cmdPartners_Click(2);
    form.Form_Unload();
    return form.result;
}

// A test aid: each statement waits a while (longer inside a transaction), so that a killed run is
// often caught mid-way, and inside the posting.
// With QUILLARY_TEST_TRACE set, each statement also leaves a line in that file: "F" inside a
// transaction of the farm database, "C" for that transaction's commit, "." otherwise, so a test can
// tell where a killed run stopped.
void slowStatementsForTesting() {
    const int micros = qEnvironmentVariableIntValue("QUILLARY_TEST_STATEMENT_DELAY_US");
    const int inTransaction = qEnvironmentVariableIntValue("QUILLARY_TEST_TRANSACTION_DELAY_US");
    const QString tracePath = qEnvironmentVariable("QUILLARY_TEST_TRACE");
    if (micros <= 0 && inTransaction <= 0 && tracePath.isEmpty()) return;
    auto trace = std::make_shared<QFile>(tracePath);
    if (!tracePath.isEmpty()) trace->open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered);
    const QString farmFile = QFileInfo(ql::DataFileName()).fileName();
    ql::setStatementHookForTesting([micros, inTransaction, trace, farmFile](sqlite3* db, const QString& sql) {
        const bool open = !sqlite3_get_autocommit(db);
        if (trace->isOpen()) {
            const bool farm =
                QFileInfo(QString::fromUtf8(sqlite3_db_filename(db, "main"))).fileName() == farmFile;
            const bool commit = sql.trimmed().startsWith(QLatin1String("COMMIT"), Qt::CaseInsensitive);
            trace->write(!(open && farm) ? ".\n" : commit ? "C\n" : "F\n");
        }
        const int wait = open ? qMax(micros, inTransaction) : micros;
        if (wait > 0) QThread::usleep(wait);
    });
}

QString referenceJson(const ql::CommitModel& m) {
    // A typed PAYE is named only when there is one.
    const QString typed = m.typedPaye.isEmpty()
                              ? QString()
                              : QStringLiteral(",\n  \"typedPAYE\": ") + cli::jsonString(m.typedPaye);
    return QStringLiteral("{\n  \"mode\": %1,\n  \"title\": %2,\n  \"reference\": %3,\n  \"date\": %4,\n"
                          "  \"cashbook\": %5,\n  \"print\": %6%7\n}")
        .arg(cli::jsonString(m.reprint ? QStringLiteral("reprint") : QStringLiteral("commit")),
             cli::jsonString(m.title), cli::jsonString(m.txtReference),
             cli::jsonString(m.payDate.toString(Qt::ISODate)),
             m.chkCashbook ? QStringLiteral("true") : QStringLiteral("false"),
             m.chkPrint ? QStringLiteral("true") : QStringLiteral("false"), typed);
}

// Presses the wage screen's commit button on the pay and runs the dialog with dialogRun.
void pressCommit(cli::PayScreen& open, const std::function<void(ql::CommitModel&)>& dialogRun) {
    bool shown = false;
    open.screen.showCommit = [&](ql::WageScreen& screen) {
        shown = true;
        ql::CommitModel model(screen);
        model.Form_Load();
        dialogRun(model);
    };
    const int mark = open.dialogs.calls.size();
    open.screen.cmdPrintPay_Click();
    if (!shown) throw cli::CliFailure(open.lastMessageSince(mark));
}

int reference(const QStringList& args, QTextStream& out) {
    if (args.size() != 1) throw cli::CliUsageError();
    cli::PayScreen open(idArgument(args.at(0)));
    pressCommit(open, [&](ql::CommitModel& model) { out << referenceJson(model) << "\n"; });
    return 0;
}

QString rowsWritten(ql::Database& farm, qint64 after, qint32 wageID) {
    const QString transactions = cli::jsonRows(
        farm,
        QStringLiteral("SELECT * FROM Transactions WHERE TransactionsID > %1 ORDER BY TransactionsID")
            .arg(after),
        2);
    const QString details = cli::jsonRows(
        farm,
        QStringLiteral(
            "SELECT * FROM TransactionDetails WHERE TransactionsID > %1 ORDER BY TransactionsID, rowid")
            .arg(after),
        2);
    QString wage;
    if (wageID > 0) {
        auto rs = ql::App().WageDatabase.openRecordset(
            QStringLiteral("SELECT * FROM Wages WHERE WageID = %1").arg(wageID), ql::RecordsetType::Snapshot);
        wage = QStringLiteral("  \"Wages\": ") + cli::jsonRow(*rs) + QStringLiteral(",\n");
    }
    return QStringLiteral("{\n") + wage + QStringLiteral("  \"Transactions\": ") + transactions +
           QStringLiteral(",\n  \"TransactionDetails\": ") + details + QStringLiteral("\n}");
}

qint64 lastTransaction() {
    ql::Database farm;
    farm.open(ql::DataFileName());
    return farm.scalar(QStringLiteral("SELECT coalesce(max(TransactionsID), 0) FROM Transactions"))
        .toLongLong();
}

int commit(const QStringList& args, QTextStream& out) {
    if (args.isEmpty()) throw cli::CliUsageError();
    const qint32 wageID = idArgument(args.at(0));
    std::optional<QString> typed, memo;
    std::optional<QDate> date;
    std::optional<bool> cashbook, print;
    for (int i = 1; i < args.size(); i += 2) {
        if (i + 1 >= args.size()) throw cli::CliUsageError();
        const QString& option = args.at(i);
        const QString& value = args.at(i + 1);
        if (option == QLatin1String("--reference"))
            typed = value;
        else if (option == QLatin1String("--date"))
            date = dateArgument(value);
        else if (option == QLatin1String("--cashbook"))
            cashbook = onOff(value);
        else if (option == QLatin1String("--print"))
            print = onOff(value);
        else if (option == QLatin1String("--memo"))
            memo = value;
        else
            throw cli::CliUsageError();
    }
    slowStatementsForTesting();
    ql::setPayeInfoDialog(payeInfoCancelled);
    const qint64 before = lastTransaction();
    cli::PayScreen open(wageID);
    if (memo) {
        // The memo as the memo dialog saves it: the text, or nothing when empty.
        open.screen.datPays.setValueNow(QStringLiteral("Details"),
                                        memo->isEmpty() ? QVariant() : QVariant(*memo));
    }
    bool committed = false;
    int mark = 0;
    QString alreadyCommitted;
    pressCommit(open, [&](ql::CommitModel& model) {
        // What is committed never changes: OK on a committed pay's slip stores nothing new, and a
        // reference or date typed for it is refused, as the disabled boxes refuse it on the desktop.
        if (model.reprint && ((typed && *typed != model.txtReference) || (date && *date != model.payDate))) {
            alreadyCommitted = model.txtReference;
            return;
        }
        if (model.reprint) {
            typed.reset();
            date.reset();
        }
        if (date) model.setPayDate(*date);
        if (typed) model.txtReference = *typed;
        if (cashbook) model.setCashbook(*cashbook);
        if (print) model.setPrint(*print);
        if (memo && model.memoVisible) model.setMemo(!memo->isEmpty());
        mark = open.dialogs.calls.size();
        committed = model.cmd_Commit_Click(0);
    });
    if (!alreadyCommitted.isEmpty())
        throw cli::CliFailure(QStringLiteral("This pay has already been committed with the reference %1; its "
                                             "reference and payment date can't be changed.")
                                  .arg(alreadyCommitted));
    if (!committed) throw cli::CliFailure(open.lastMessageSince(mark));
    ql::Database farm;
    farm.open(ql::DataFileName());
    out << rowsWritten(farm, before, wageID) << "\n";
    return 0;
}

int post(const QStringList& args, QTextStream& out) {
    if (args.size() != 4) throw cli::CliUsageError();
    const qint32 wageID = idArgument(args.at(0));
    const QDate date = dateArgument(args.at(2));
    slowStatementsForTesting();
    const qint64 before = lastTransaction();
    cli::PayScreen open(wageID);
    // Posted with the figures its lines give, as a commit would post it.
    ql::SettlePayFigures(open.screen);
    const QString failure = ql::PostPayToCashbook(open.screen.datPays, args.at(1), args.at(3), date);
    if (!failure.isEmpty()) throw cli::CliFailure(failure);
    ql::Database farm;
    farm.open(ql::DataFileName());
    out << rowsWritten(farm, before, 0) << "\n";
    return 0;
}

const cli::CliCommand taxSettingsCommand("tax-settings", "tax-settings [--set NAME=VALUE ...]", taxSettings);
const cli::CliCommand referenceCommand("reference", "reference WAGE_ID", reference);
const cli::CliCommand commitCommand(
    "commit",
    "commit WAGE_ID [--reference R] [--date YYYY-MM-DD] [--cashbook on|off] [--print on|off] [--memo TEXT]",
    commit);
const cli::CliCommand postCommand("post", "post WAGE_ID REFERENCE YYYY-MM-DD DESCRIPTION", post);

} // namespace
