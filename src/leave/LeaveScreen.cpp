#include "LeaveScreen.h"
#include "basLeave.h"
#include "frame/Messages.h"
#include "frame/SettingGetters.h"
#include "frame/Settings.h"
#include "payengine/AppContext.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/Trap.h"

namespace ql {

namespace {

constexpr int kPages = 5;

QVector<QVariant> emptyRow() {
    return QVector<QVariant>(leave::ColumnCount);
}

bool holdsText(const QVariant& v) {
    return !IsNull(v) && !v.toString().isEmpty();
}

QDate labelDate(const QString& caption) {
    return IsDate(QVariant(caption)) ? CDate(QVariant(caption)) : ZeroDate;
}

} // namespace

LeaveScreen::LeaveScreen() {
    tgrdLeave.Columns = emptyRow();
    Form_Load();
}

// --- events of the wage screen ----------------------------------------------------------------------

void LeaveScreen::Form_Load() {
    tabLeaveCaption = tabLeaveCaptions();
    tabLeaveIndex = 0;
}

void LeaveScreen::setOption(int index) {
    optWhichYears = index == 0 ? 0 : 1;
    if (onOptionChanged) onOptionChanged(optWhichYears);
}

void LeaveScreen::enterTab() {
    setOption(AllLeave() ? 1 : 0);
    FillLeaveData(*this, tabLeaveIndex);
}

void LeaveScreen::leaveTab() {
    SaveLeaveXArray(*this);
    storeAllLeave();
}

void LeaveScreen::storeAllLeave() const {
    WriteSetting(QStringLiteral("WAGE"), QStringLiteral("AllLeave"),
                 optWhichYears == 0 ? QStringLiteral("N") : QStringLiteral("Y"));
}

void LeaveScreen::saveBeforeEmployeeChange() {
    if (App().CurrentEmployeeID != 0) SaveLeaveXArray(*this);
}

void LeaveScreen::employeeChanged(bool leaveTabUp) {
    if (leaveTabUp) FillLeaveData(*this, tabLeaveIndex);
}

void LeaveScreen::initPage() {
    InitLeave(*this, tabLeaveIndex);
}

void LeaveScreen::unload(bool leaveTabUp) {
    // An unload runs to its end: a failing step is skipped.
    skipErrors([&] { storeAllLeave(); });
    if (leaveTabUp) skipErrors([&] { SaveLeaveXArray(*this); });
}

void LeaveScreen::saveLeave() {
    SaveLeaveXArray(*this);
}

// --- events of the tab -------------------------------------------------------------------------------

void LeaveScreen::tabLeave_Click(int index) {
    if (index < 0 || index >= kPages || index == tabLeaveIndex) return;
    SaveLeaveXArray(*this);
    tabLeaveIndex = index;
    FillLeaveData(*this, index);
}

void LeaveScreen::nextPage() {
    tabLeave_Click((tabLeaveIndex + 1) % kPages);
}

void LeaveScreen::optWhichYears_Click(int index) {
    // The save still deletes by the old filter: LeaveWhere changes only with the fill.
    setOption(index);
    SaveLeaveXArray(*this);
    FillLeaveData(*this, tabLeaveIndex);
}

// --- the grid ----------------------------------------------------------------------------------------

QVariant LeaveScreen::cellValue(int row, int column) const {
    if (tgrdLeave.dirty && row == tgrdLeave.Row) return tgrdLeave.Columns.value(column);
    if (row < 0 || row >= LeaveArray.rowCount() || column < 0 || column >= LeaveArray.columnCount())
        return {};
    return LeaveArray.value(row, column);
}

QString LeaveScreen::cellText(int row, int column) const {
    const QVariant v = cellValue(row, column);
    if (IsNull(v)) return QString();
    if (column == leave::Description) return LeaveArray.column(column).displayText(v);
    return Format(v, QString());
}

QVariant LeaveScreen::kindValue(const QString& text) const {
    for (const GridValueItem& item : LeaveArray.column(leave::Description).valueItems) {
        if (IsNull(item.value) || item.value.toString().isEmpty()) continue;
        if (item.name.compare(text.trimmed(), Qt::CaseInsensitive) == 0 ||
            item.value.toString() == text.trimmed())
            return item.value;
    }
    return {};
}

void LeaveScreen::fieldBounds(QDate& upper, QDate& lower) const {
    upper = ZeroDate;
    lower = ZeroDate;
    if (currentYear()) {
        upper = labelDate(lbltDate);
        lower = labelDate(lblfDate);
    }
}

void LeaveScreen::recordBounds(QDate& lower, QDate& upper) const {
    if (currentYear()) {
        fieldBounds(upper, lower);
    } else {
        lower = Today();
        upper = lower;
    }
}

void LeaveScreen::selectRow(int row) {
    if (row == tgrdLeave.Row && tgrdLeave.dirty) return;
    if (tgrdLeave.dirty) UpdateGrid();
    tgrdLeave.Row = row;
    tgrdLeave.dirty = false;
    tgrdLeave.Columns = emptyRow();
    if (row < LeaveArray.rowCount())
        for (int c = 0; c < leave::ColumnCount && c < LeaveArray.columnCount(); ++c)
            tgrdLeave.Columns[c] = LeaveArray.value(row, c);
}

bool LeaveScreen::storeCell(int row, int column, const QString& text) {
    if (row < 0 || row > LeaveArray.rowCount() || column < 0 || column >= leave::ColumnCount)
        raiseError(err::SubscriptOutOfRange);
    if (!LeaveArray.editable() || !LeaveArray.column(column).visible) return false;
    QVariant typed = text;
    if (column == leave::Description && !text.isEmpty()) {
        typed = kindValue(text);
        // Not an entry of the list: the grid's own data error, which shows no message.
        if (!typed.isValid()) return false;
    }
    selectRow(row);
    const QVariant old = tgrdLeave.Columns[column];
    tgrdLeave.Columns[column] = typed;

    QDate upper, lower;
    fieldBounds(upper, lower);
    bool ok = false;
    QString message;
    ValidateLeaveField(column, ok, message, *this, upper, lower);
    if (!ok) {
        ShowMessage(message, msg::OKOnly, Firm(), QStringLiteral("Invalid Entry"), QString(), msg::Warning,
                    true);
        tgrdLeave.Columns[column] = old;
        return false;
    }
    tgrdLeave.dirty = true;

    const QVector<QVariant>& c = tgrdLeave.Columns;
    if (holdsText(c[leave::LeaveID]) && holdsText(c[leave::EmployeeID]) && holdsText(c[leave::LeaveTypeID]) &&
        holdsText(c[leave::Description]))
        UpdateGrid();
    RefreshLeaveTotals(*this);
    return true;
}

void LeaveScreen::UpdateGrid() {
    if (onFlushEditor && !m_flushing) {
        m_flushing = true;
        try {
            onFlushEditor();
        } catch (...) {
            m_flushing = false;
            throw;
        }
        m_flushing = false;
    }
    if (!tgrdLeave.dirty) return;
    QDate lower, upper;
    recordBounds(lower, upper);
    if (!ValidateLeaveRecord(tgrdLeave, lower, upper))
        ShowMessage(
            QStringLiteral("This record entry is invalid. The From Date, Leave Type and Days fields must "
                           "all contain data."),
            msg::OKOnly, Firm(), QStringLiteral("Invalid Data"), QString(), msg::Warning, true);
    // The update goes ahead: a row without a kind stays in the grid, and the save drops it.
    if (tgrdLeave.Row >= LeaveArray.rowCount()) {
        LeaveArray.insertRow(LeaveArray.rowCount());
        tgrdLeave.Row = LeaveArray.rowCount() - 1;
    }
    for (int c = 0; c < leave::ColumnCount && c < LeaveArray.columnCount(); ++c)
        LeaveArray.setValue(tgrdLeave.Row, c, tgrdLeave.Columns[c]);
    tgrdLeave.dirty = false;
    RefreshLeaveTotals(*this);
}

bool LeaveScreen::tgrdLeave_BeforeDelete() {
    const qint16 answer =
        ShowMessage(QStringLiteral("Are you sure you want to delete this entry?"), msg::YesNo, Firm(),
                    QStringLiteral("Delete Entry?"), QStringLiteral("Please Confirm"), msg::Question, true);
    return answer != msg::Yes;
}

bool LeaveScreen::deleteRow(int row) {
    if (row < 0 || row >= LeaveArray.rowCount()) return false;
    if (tgrdLeave.dirty && tgrdLeave.Row != row) UpdateGrid();
    if (!LeaveArray.editable() || tgrdLeave_BeforeDelete()) return false;
    deleteArrayRow(row);
    return true;
}

void LeaveScreen::deleteArrayRow(int row) {
    tgrdLeave = LeaveGrid{};
    tgrdLeave.Columns = emptyRow();
    LeaveArray.deleteRow(row);
    RefreshLeaveTotals(*this);
}

} // namespace ql
