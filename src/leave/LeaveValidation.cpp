// The corrections of one leave cell and of one leave row before the grid stores them.
#include "LeaveScreen.h"
#include "basLeave.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/MathFns.h"
#include "runtime/Trap.h"

namespace ql {

namespace {

const QString kShortDate = QStringLiteral("short date");

bool cellIsEmpty(const QVariant& v) {
    return IsNull(v) || v.toString().isEmpty();
}

QVariant shortDate(const QVariant& v) {
    return Format(v, kShortDate);
}

bool isText(const QVariant& v) {
    return v.typeId() == QMetaType::QString;
}

// a > b between two cells as they stand, by the runtime's rules for variants: two texts compare as
// text (so "9/1/2007" ranks above "10/1/2007"), two numbers or dates as numbers, and a number or date
// ranks below any text. Null compares to nothing.
bool ranksAbove(const QVariant& a, const QVariant& b) {
    if (IsNull(a) || IsNull(b)) return false;
    if (isText(a) && isText(b)) return a.toString().compare(b.toString(), Qt::CaseSensitive) > 0;
    if (isText(a) != isText(b)) return isText(a);
    const auto number = [](const QVariant& v) {
        return v.typeId() == QMetaType::QDate || v.typeId() == QMetaType::QDateTime ? DateToSerial(CDate(v))
                                                                                    : CDbl(v);
    };
    return number(a) > number(b);
}

bool isKind(const QVariant& cell, int kind) {
    if (IsNull(cell)) return false;
    if (IsNumeric(cell)) return CDbl(cell) == kind;
    return cell.toString() == QString::number(kind);
}

QVariant plusDays(const QVariant& from, double days) {
    return QVariant(DateAdd(QStringLiteral("d"), days, CDate(from)));
}

} // namespace

void ValidateLeaveField(int colIndex, bool& ok, QString& message, LeaveScreen& form, const QDate& upper,
                        const QDate& lower) {
    Q_UNUSED(message);
    ok = false;
    trap(QStringLiteral("ValidateLeaveField"), [&] {
        QVector<QVariant>& c = form.tgrdLeave.Columns;
        const bool taken = isKind(c[leave::Description], leave::Taken);
        const bool daysMode = form.CurrentLeaveTypeID != leave::InLieu;
        // How many days the To date lies after the From date: 1 gives 0, 1.5 gives 1, 2.5 gives 2.
        double days = 0;
        if (daysMode && IsNumeric(c[leave::Days]))
            days = std::max(0.0, roundHalfEven(CDbl(c[leave::Days]) + 0.4) - 1);

        switch (colIndex) {
        case leave::Days:
            if (!IsNumeric(c[leave::Days])) {
                c[leave::Days] = 0;
                break;
            }
            c[leave::Days] = Format(c[leave::Days], QStringLiteral("fixed"));
            if (daysMode && taken && CDbl(c[leave::Days]) > 0 && !IsDate(c[leave::DateTo]) &&
                IsDate(c[leave::DateFrom]))
                c[leave::DateTo] = plusDays(c[leave::DateFrom], days);
            break;
        case leave::DateFrom: {
            if (!IsDate(c[leave::DateFrom]))
                c[leave::DateFrom] = shortDate(QVariant(Today()));
            else
                c[leave::DateFrom] = shortDate(c[leave::DateFrom]);
            if (upper.isValid() && upper > ZeroDate) {
                const QDate from = CDate(c[leave::DateFrom]);
                if (from > upper)
                    c[leave::DateFrom] = shortDate(QVariant(upper));
                else if (from < lower)
                    c[leave::DateFrom] = shortDate(QVariant(lower));
            }
            if (daysMode) {
                if (taken) {
                    if (days > 0) c[leave::DateTo] = plusDays(c[leave::DateFrom], days);
                } else {
                    c[leave::DateTo] = c[leave::DateFrom];
                }
            }
            if (IsDate(c[leave::DateTo]) && CDate(c[leave::DateTo]) < CDate(c[leave::DateFrom]))
                c[leave::DateTo] = c[leave::DateFrom];
            break;
        }
        case leave::DateTo:
            if (!IsDate(c[leave::DateTo])) {
                if (IsDate(c[leave::DateFrom])) {
                    c[leave::DateTo] = c[leave::DateFrom];
                    if (daysMode && taken && days >= 1) c[leave::DateTo] = plusDays(c[leave::DateFrom], days);
                } else {
                    c[leave::DateTo] = shortDate(QVariant(Today()));
                }
            } else {
                c[leave::DateTo] = shortDate(c[leave::DateTo]);
            }
            // The From date gives way here, and the two cells are compared as they stand.
            if (ranksAbove(c[leave::DateFrom], c[leave::DateTo])) c[leave::DateFrom] = c[leave::DateTo];
            break;
        default:
            break;
        }
        ok = true;
    });
}

bool ValidateLeaveRecord(LeaveGrid& grid, const QDate& lower, const QDate& upper) {
    QVector<QVariant>& c = grid.Columns;
    QDate defaultDate = Today();
    if (defaultDate > upper)
        defaultDate = upper;
    else if (defaultDate < lower)
        defaultDate = lower;
    if (cellIsEmpty(c[leave::Description])) return false;
    if (cellIsEmpty(c[leave::Days])) c[leave::Days] = 0;
    if (cellIsEmpty(c[leave::DateFrom])) c[leave::DateFrom] = shortDate(QVariant(defaultDate));
    if (cellIsEmpty(c[leave::DateTo]) || (IsDate(c[leave::DateTo]) && IsDate(c[leave::DateFrom]) &&
                                          CDate(c[leave::DateTo]) < CDate(c[leave::DateFrom])))
        c[leave::DateTo] = c[leave::DateFrom];
    return true;
}

} // namespace ql
