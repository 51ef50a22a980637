// Running a report up to its pages: the layout read, the formulas put in, the data files opened and the
// rows read, in the order and selection the control asks for.
#include "ReportControl.h"
#include "ReportLayout.h"
#include "data/Database.h"
#include "data/Recordset.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "runtime/Format.h"
#include "runtime/VbError.h"
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <map>
#include <memory>

namespace ql {

namespace {

const QString kSource = QStringLiteral("Crystal");

// A failure of the data, raised with the number the report screen reacts to.
[[noreturn]] void dataFailure(const VbError& e) {
    if (e.number() == 3260) raiseError(rpterr::DatabaseBusy, kSource, e.description());
    raiseError(rpterr::DatabaseFailure, kSource, e.description());
}

template <class F> auto guardData(F&& body) {
    try {
        return body();
    } catch (const VbError& e) {
        dataFailure(e);
    }
}

QString cellText(const QVariant& v, const QString& format) {
    if (IsNull(v)) return QString();
    if (!format.isEmpty()) return Format(v, format);
    if (v.typeId() == QMetaType::QString) return v.toString();
    return CStr(v);
}

class Filler {
public:
    Filler(const ReportLayout& layout, const QHash<QString, QString>& formulas,
           const QHash<QString, QString>& lookups)
        : m_layout(layout), m_formulas(formulas), m_lookups(lookups) {}

    // Puts formulas, lookup columns and the print date in; the page fields stay for the pages.
    QString fill(const QString& text) const {
        static const QRegularExpression field(QStringLiteral("\\{([^{}]*)\\}"));
        QString out;
        qsizetype last = 0;
        auto it = field.globalMatch(text);
        while (it.hasNext()) {
            const auto m = it.next();
            out += text.mid(last, m.capturedStart() - last);
            last = m.capturedEnd();
            const QString name = m.captured(1);
            if (name == QLatin1String("PageNumber") || name == QLatin1String("TotalPages")) {
                out += m.captured(0);
            } else if (name == QLatin1String("PrintDate")) {
                out += Format(QVariant(Today()), QStringLiteral("Short Date"));
            } else if (m_formulas.contains(name)) {
                out += m_formulas.value(name);
            } else if (m_lookups.contains(name.toLower())) {
                out += m_lookups.value(name.toLower());
            } else {
                raiseError(
                    rpterr::BadLayout, kSource,
                    QStringLiteral("The report file %1 cannot be read: {%2} is neither a formula nor a "
                                   "column of its lookups.")
                        .arg(QFileInfo(m_layout.fileName).fileName(), name));
            }
        }
        return out + text.mid(last);
    }

    PreparedText text(const LayoutText& t) const {
        return PreparedText{t.place, t.style, fill(t.text), fill(t.label)};
    }

private:
    const ReportLayout& m_layout;
    const QHash<QString, QString>& m_formulas;
    const QHash<QString, QString>& m_lookups;
};

// "+{Table.Column}" or "-{Table.Column}" as an ORDER BY term.
QString sortTerm(const QString& field) {
    QString f = field.trimmed();
    QString direction;
    if (f.startsWith(u'+') || f.startsWith(u'-')) {
        direction = f.startsWith(u'-') ? QStringLiteral(" DESC") : QString();
        f = f.mid(1).trimmed();
    }
    if (!f.startsWith(u'{')) f = u'{' + f + u'}';
    return SelectionToSql(f) + direction;
}

// The top-level WHERE of a query, outside brackets and quotes.
bool hasTopLevelWhere(const QString& sql) {
    int depth = 0;
    QChar quote;
    for (qsizetype i = 0; i < sql.size(); ++i) {
        const QChar c = sql.at(i);
        if (!quote.isNull()) {
            if (c == quote) quote = QChar();
        } else if (c == u'\'' || c == u'"' || c == u'[') {
            quote = c == u'[' ? QChar(u']') : c;
        } else if (c == u'(') {
            ++depth;
        } else if (c == u')') {
            --depth;
        } else if (depth == 0 && sql.mid(i, 5).compare(QLatin1String("where"), Qt::CaseInsensitive) == 0 &&
                   (i == 0 || !sql.at(i - 1).isLetterOrNumber()) &&
                   (i + 5 >= sql.size() || !sql.at(i + 5).isLetterOrNumber())) {
            return true;
        }
    }
    return false;
}

} // namespace

PreparedReport ReportControl::prepare() const {
    const ReportLayout layout = ReadReportLayout(ReportFileName);

    QHash<QString, QString> formulas;
    for (const LayoutFormula& f : layout.formulas)
        formulas.insert(f.name, f.defaultValue);
    for (const QString& text : m_formulas) {
        const FormulaValue f = ParseFormula(text);
        // A formula the layout does not print has nothing to change.
        if (!f.name.isEmpty() && layout.declares(f.name)) formulas.insert(f.name, f.value);
    }

    // Each data file is opened once, however many sources name it.
    std::map<int, std::unique_ptr<Database>> databases;
    auto database = [&](int source) -> Database& {
        auto it = databases.find(source);
        if (it != databases.end()) return *it->second;
        const QString file = DataFiles(source);
        if (file.isEmpty())
            raiseError(rpterr::DatabaseFailure, kSource,
                       QStringLiteral("No database file is given for data source %1.").arg(source));
        auto db = std::make_unique<Database>();
        guardData([&] { db->open(file); });
        return *databases.emplace(source, std::move(db)).first->second;
    };

    QHash<QString, QString> lookups;
    for (const auto& [source, table] : layout.lookups) {
        guardData([&] {
            auto rs = database(source).openRecordset(QStringLiteral("SELECT * FROM [%1] LIMIT 1").arg(table),
                                                     RecordsetType::Snapshot);
            for (int i = 0; i < rs->fieldCount(); ++i)
                lookups.insert((table + u'.' + rs->fieldName(i)).toLower(),
                               rs->EOF_() ? QString() : cellText(rs->value(i), QString()));
            rs->Close();
        });
    }

    QString sql = layout.dataTable.isEmpty() ? layout.dataQuery.trimmed()
                                             : QStringLiteral("SELECT * FROM [%1]").arg(layout.dataTable);
    if (sql.endsWith(u';')) sql.chop(1);
    const QString selection =
        SelectionFormula.trimmed().isEmpty() ? QString() : SelectionToSql(SelectionFormula);
    if (!selection.isEmpty())
        sql += (hasTopLevelWhere(sql) ? QStringLiteral(" AND (") : QStringLiteral(" WHERE (")) + selection +
               u')';
    QStringList order;
    for (const QString& f : m_sortFields)
        if (!f.trimmed().isEmpty()) order << sortTerm(f);
    if (order.isEmpty())
        for (const QString& f : layout.order)
            order << sortTerm(f);
    if (!order.isEmpty()) sql += QStringLiteral(" ORDER BY ") + order.join(QStringLiteral(", "));

    const Filler filler(layout, formulas, lookups);
    PreparedReport report;
    report.reportFile = ReportFileName;
    report.name = layout.name;
    report.pageSize = layout.pageSize;
    report.landscape = layout.landscape;
    report.marginsMm = layout.marginsMm;
    report.fontFamily = layout.fontFamily;
    report.fontSize = layout.fontSize;
    report.printDate = Format(QVariant(Today()), QStringLiteral("Short Date"));
    for (const LayoutColumn& c : layout.columns)
        report.columns.append(PreparedColumn{filler.fill(c.caption), c.width, c.align});

    QList<Currency> sums(layout.columns.size());
    guardData([&] {
        auto rs = database(layout.dataSource).openRecordset(sql, RecordsetType::Snapshot);
        QList<int> fields;
        for (const LayoutColumn& c : layout.columns) {
            const int index = rs->fieldIndex(c.field);
            if (index < 0)
                raiseError(rpterr::DatabaseFailure, kSource,
                           QStringLiteral("The column %1 is not in the report's data.").arg(c.field));
            fields << index;
        }
        QList<QPair<int, QRegularExpression>> styleTests;
        for (const LayoutRowStyle& rowStyle : layout.rowStyles) {
            int column = -1;
            for (int i = 0; i < layout.columns.size(); ++i)
                if (layout.columns.at(i).field.compare(rowStyle.field, Qt::CaseInsensitive) == 0)
                    column = i;
            if (column < 0)
                raiseError(rpterr::BadLayout, kSource,
                           QStringLiteral("The report file %1 cannot be read: the row style names %2, which is no "
                                          "column of the report.")
                               .arg(QFileInfo(layout.fileName).fileName(), rowStyle.field));
            styleTests.append({column, QRegularExpression(rowStyle.pattern)});
        }
        for (; !rs->EOF_(); rs->MoveNext()) {
            QStringList cells;
            for (int i = 0; i < layout.columns.size(); ++i) {
                const QVariant v = rs->value(fields.at(i));
                cells << cellText(v, layout.columns.at(i).format);
                if (!layout.columns.at(i).total.isEmpty() && !IsNull(v) && IsNumeric(v))
                    sums[i] = sums.at(i) + CCur(v);
            }
            QString style;
            for (int t = 0; t < styleTests.size() && style.isEmpty(); ++t)
                if (styleTests.at(t).second.match(cells.at(styleTests.at(t).first)).hasMatch())
                    style = layout.rowStyles.at(t).style;
            report.rows.append(cells);
            report.rowStyles.append(style);
        }
        rs->Close();
    });

    bool anyTotal = false;
    for (const LayoutColumn& c : layout.columns)
        anyTotal = anyTotal || !c.total.isEmpty();
    if (anyTotal) {
        for (int i = 0; i < layout.columns.size(); ++i) {
            const QString& format = layout.columns.at(i).total;
            report.totals << (format.isEmpty() ? QString() : Format(QVariant::fromValue(sums.at(i)), format));
        }
        if (report.totals.first().isEmpty()) report.totals.first() = filler.fill(layout.totalsCaption);
    }

    for (const LayoutText& t : layout.headings) {
        const PreparedText p = filler.text(t);
        if (!p.text.trimmed().isEmpty()) report.headings.append(p);
    }
    for (const LayoutText& t : layout.summaries) {
        const PreparedText p = filler.text(t);
        if (!p.text.trimmed().isEmpty()) report.summaries.append(p);
    }
    for (const LayoutText& t : layout.footers)
        report.footers.append(filler.text(t));
    return report;
}

} // namespace ql
