#include "PayeHelp.h"
#include "frame/Texts.h"

namespace ql {

namespace {
const QString CRLF = QStringLiteral("\r\n");
}

QString AccountNameOnly(const QString& text) {
    QString name = text.trimmed();
    const qsizetype from = qMax<qsizetype>(name.size() - 3, 0); // the third character from the end
    const qsizetype colon = name.indexOf(u':', from);
    if (colon >= 0) name = name.left(qMax<qsizetype>(colon - 1, 0));
    return name;
}

QString GetPayePaymentsHelp(const QString& payeLabel, const QString& paymentAccount, bool electronic,
                            const QString& partyName) {
    const QStringList values{payeLabel, paymentAccount, partyName};
    QString text = partyName.isEmpty() ? TranslateText(QStringLiteral("|0| PAYMENTS"), values)
                                       : TranslateText(QStringLiteral("PAYMENTS to |2|"), values);
    text += CRLF;
    if (!electronic)
        text += TranslateText(QStringLiteral("Use a Cashbook 'Withdrawal' to debit |0| payments into |1|."),
                              values);
    else
        text += TranslateText(QStringLiteral("Use ePayments to process |0|."), values);
    return text;
}

PayeHelpTexts BuildPayeHelp(const QString& payeLabel, const QString& wageAccount,
                            const QString& holdingAccount, const QString& paymentAccount, bool electronic) {
    const QStringList values{payeLabel, AccountNameOnly(wageAccount), AccountNameOnly(holdingAccount),
                             AccountNameOnly(paymentAccount)};
    QString info =
        QStringLiteral("To enter WAGES manually in either the Cashbook or e-Payments ") + CRLF + CRLF;
    if (electronic) info += QStringLiteral(" Make two transactions") + CRLF + QStringLiteral("1.");
    info += QStringLiteral("Make a 'withdrawal' entry for the Net Wage amount and split it:") + CRLF;
    info += QStringLiteral("    ") +
            TranslateText(QStringLiteral("- Taxable amount debited into |1|"), values) + CRLF;
    info += QStringLiteral("    ") + TranslateText(QStringLiteral("- |0| amount credited into |2|"), values) +
            CRLF;
    if (electronic)
        info += TranslateText(QStringLiteral("2.  An ePayment 'Payable' entry of the |0| amount into |3|"),
                              values) +
                CRLF;
    info += CRLF + QStringLiteral("Use the Quillary to automatically generate above entries") + CRLF + CRLF;
    info += GetPayePaymentsHelp(payeLabel, values.at(3), electronic, QString());

    PayeHelpTexts texts;
    texts.taxationInfo = info;
    texts.payeNoncash =
        (electronic ? TranslateText(QStringLiteral("Untick to pay |0| manually"), values)
                    : TranslateText(QStringLiteral("Tick to pay |0| electronically"), values)) +
        CRLF + CRLF +
        QStringLiteral("NB Wage payments may be set to cash or electronic for each employee in the "
                       "Address Book");
    return texts;
}

} // namespace ql
