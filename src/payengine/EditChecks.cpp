#include "EditChecks.h"
#include <QRegularExpression>
#include "Allowances.h"
#include "AppContext.h"
#include "Contributions.h"
#include "Deductions.h"
#include "PayView.h"
#include "PaymentLines.h"
#include "data/GridArray.h"
#include "data/RoundCurrency.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Texts.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"
#include <cmath>

namespace ql {

namespace {

// The name a message gives a column: its heading, else its number.
QString columnName(const GridArray& grid, int column) {
    const QString heading = column < grid.headings().size() ? grid.headings().at(column) : QString();
    if (!heading.isEmpty()) return heading;
    return QStringLiteral("column ") + QString::number(column + 1);
}

// The figure of a cell as the grid shows it ("$1,234.50", "12.00"); 0 when it holds none.
double cellFigure(const GridArray& grid, int row, int column) {
    const QVariant v = grid.value(row, column);
    return IsNumeric(v) ? CDbl(v) : 0.0;
}

// The amount column of each view; -1 for a view without lines.
int amountColumn(int tab) {
    switch (tab) {
    case 1:
    case 2:
    case 4:
    case 5:
        return 4;
    case 7:
        return 5;
    default:
        return -1;
    }
}

// The names table of each view and its key: a line counts on the payslip only with a name found there.
struct NameTable {
    const char* table;
    const char* key;
};
NameTable nameTable(int tab) {
    switch (tab) {
    case 1:
        return {"PaymentNames", "PaymentNameID"};
    case 2:
        return {"TaxAllowName", "TaxNameID"};
    case 4:
        return {"NonTaxAllowName", "NonTaxNameID"};
    case 5:
        return {"DeductNames", "DeductNameID"};
    case 7:
        return {"ContributionNames", "ContributionNameID"};
    default:
        return {nullptr, nullptr};
    }
}

bool knownName(int tab, const QVariant& id) {
    const NameTable t = nameTable(tab);
    if (!t.table || !IsNumeric(id)) return false;
    const double value = CDbl(id);
    if (value != std::floor(value) || value < 1 || value > 2147483647.0) return false;
    const QVariant found = App().WageDatabase.scalar(QStringLiteral("SELECT count(*) FROM %1 WHERE %2 = %3")
                                                         .arg(QLatin1String(t.table), QLatin1String(t.key))
                                                         .arg(qint64(value)));
    return CLng(found) > 0;
}

QString tooLarge() {
    return TranslateText(
        QStringLiteral("The figures of this line would be too large: no figure of a line may "
                       "be more than |0|.\r\n\r\nThe previous value has been restored"),
        QStringList{Format(LargestLineFigure, QStringLiteral("Standard"))});
}

// Recalculates the line on a copy of the grid as the store will, and returns the copy's row.
GridArray recalculatedCopy(const PayView& form, int row, int column, const QString& text) {
    GridArray copy = form.WageGridArray;
    copy.setValue(row, column, text);
    const QString totalText = form.caption(QStringLiteral("lblTotalTaxable"));
    const Currency taxable = IsNumeric(totalText) ? RoundCurrency(totalText) : Currency();
    switch (App().CurrentTab) {
    case 1:
        RecalcPaymentRow(copy, row, column, text);
        break;
    case 2:
    case 4:
        RecalcAllowanceRow(copy, row, column, text);
        break;
    case 5:
        DefaultDeductionRow(column, taxable, copy, row);
        RecalcDeductionRow(copy, row, column, text);
        break;
    case 7:
        DefaultContributionRow(column, taxable, copy, row);
        RecalcContributionRow(copy, row, column, text, taxable);
        break;
    default:
        break;
    }
    return copy;
}

} // namespace

QString GridEntryRefusal(const PayView& form, int row, int column, const QString& text) {
    const int tab = App().CurrentTab;
    const int amountAt = amountColumn(tab);
    if (amountAt < 0 || column < 1) return QString();
    const GridArray& grid = form.WageGridArray;
    if (column == 1) {
        // A line without a name of the list is left out of the payslip and its totals.
        if (!knownName(tab, text))
            return QStringLiteral("Please choose the name of this line from the list.\r\n\r\n"
                                  "The previous value has been restored");
        // A pay holds one line of each name.
        for (int r = 0; r < grid.rowCount(); ++r) {
            const QVariant other = grid.value(r, 1);
            if (r != row && IsNumeric(other) && CDbl(other) == CDbl(text))
                return QStringLiteral(
                    "This pay already has a line of that name.\r\n\r\nChange the figures of "
                    "that line instead.\r\n\r\nThe previous value has been restored");
        }
    } else {
        const double typed = CDbl(text);
        if (typed < 0)
            return TranslateText(
                QStringLiteral("A negative figure can't be entered in |0|.\r\n\r\nTo reduce this "
                               "pay, lower or remove a line instead.\r\n\r\nThe previous value "
                               "has been restored"),
                QStringList{columnName(grid, column)});
        if (!std::isfinite(typed) || typed > LargestLineFigure) return tooLarge();
        if (!knownName(tab, grid.value(row, 1)))
            return QStringLiteral("Please choose a name for this line before entering its figures.\r\n\r\n"
                                  "The previous value has been restored");
    }
    GridArray copy;
    // A figure the arithmetic can't hold fails on the way: that line is too large as well.
    if (!skipErrors([&] { copy = recalculatedCopy(form, row, column, text); })) return tooLarge();
    for (int c = 2; c < copy.columnCount(); ++c) {
        const double figure = cellFigure(copy, row, c);
        if (figure < 0)
            return QStringLiteral("This change would leave a negative figure in the line.\r\n\r\n"
                                  "The previous value has been restored");
        if (!std::isfinite(figure) || figure > LargestLineFigure) return tooLarge();
    }
    if (tab == 1 || tab == 2) {
        // The pay's total taxable with this view's lines as they would be.
        double lines = 0;
        for (int r = 0; r < copy.rowCount(); ++r)
            lines += cellFigure(copy, r, amountAt);
        const QString other =
            form.caption(tab == 1 ? QStringLiteral("lblTaxable") : QStringLiteral("lblGross"));
        const double rest = IsNumeric(other) ? CDbl(other) : 0.0;
        if (lines + rest < -0.005)
            return QStringLiteral("This change would take the pay's total taxable below zero.\r\n\r\n"
                                  "The previous value has been restored");
    }
    return QString();
}

void ShowEntryRefusal(const QString& message) {
    ShowMessage(message, 0, Firm(), QStringLiteral("Invalid Entry"), QString(), 3, true);
}

QString DecimalCommaMeant(const QString& text) {
    static const QRegularExpression comma(QStringLiteral("^\\s*(-?\\$?\\d+),(\\d{1,2})\\s*$"));
    const QRegularExpressionMatch m = comma.match(text);
    if (!m.hasMatch()) return QString();
    return m.captured(1) + u'.' + m.captured(2);
}

QString ConfirmDecimalComma(const PayView& form, int column, const QString& text) {
    const QString meant = DecimalCommaMeant(text);
    if (meant.isEmpty()) return text;
    const qint16 answer = ShowMessage(
        TranslateText(QStringLiteral("|0| was typed in |1|. Did you mean |2|?\r\n\r\nYes enters |2|; No "
                                     "leaves the previous value."),
                      QStringList{text.trimmed(), columnName(form.WageGridArray, column), meant}),
        msg::YesNo, Firm(), QStringLiteral("Check Entry"), QString(), msg::Question, true);
    return answer == msg::Yes ? meant : QString();
}

} // namespace ql
