#include "ReportControl.h"
#include "ReportLayout.h"
#include "runtime/VbError.h"
#include <QMap>

namespace ql {

namespace {

const QString kSource = QStringLiteral("Crystal");

QMap<int, ReportOutput>& outputs() {
    static QMap<int, ReportOutput> o;
    return o;
}

[[noreturn]] void badFormula(const QString& text, const QString& what) {
    raiseError(rpterr::BadFormula, kSource, QStringLiteral("Error in formula %1: %2.").arg(text, what));
}

void setSlot(QStringList& list, int index, const QString& text) {
    if (index < 0) raiseError(err::SubscriptOutOfRange);
    while (list.size() <= index)
        list.append(QString());
    list[index] = text;
}

// A quoted literal from i (at its opening quote); a doubled quote stands for one.
QString readQuoted(const QString& text, qsizetype& i, const QString& whole) {
    const QChar quote = text.at(i++);
    QString value;
    while (i < text.size()) {
        const QChar c = text.at(i++);
        if (c == quote) {
            if (i < text.size() && text.at(i) == quote) {
                value += quote;
                ++i;
                continue;
            }
            return value;
        }
        value += c;
    }
    badFormula(whole, QStringLiteral("a text is not closed"));
}

} // namespace

ReportOutput setReportOutput(int destination, ReportOutput output) {
    ReportOutput previous = outputs().value(destination);
    if (output)
        outputs().insert(destination, std::move(output));
    else
        outputs().remove(destination);
    return previous;
}

void ReportControl::setDataFiles(int index, const QString& file) {
    if (index < 0) raiseError(err::SubscriptOutOfRange);
    m_dataFiles.insert(index, file);
}

void ReportControl::setFormulas(int index, const QString& text) {
    setSlot(m_formulas, index, text);
}

void ReportControl::setSortFields(int index, const QString& text) {
    setSlot(m_sortFields, index, text);
}

void ReportControl::setAction(int action) {
    if (action != 1) return;
    const PreparedReport report = prepare();
    const ReportOutput output = outputs().value(Destination);
    if (!output)
        raiseError(rpterr::OutputFailure, kSource,
                   QStringLiteral("There is no output for destination %1 here.").arg(Destination));
    output(report, *this);
    ++m_runs;
}

FormulaValue ParseFormula(const QString& text) {
    FormulaValue f;
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty()) return f;
    const qsizetype eq = trimmed.indexOf(u'=');
    if (eq <= 0) badFormula(text, QStringLiteral("no name before \"=\""));
    f.name = trimmed.left(eq).trimmed();
    for (const QChar c : f.name)
        if (!c.isLetterOrNumber() && c != u'_')
            badFormula(text, QStringLiteral("\"%1\" is not a formula name").arg(f.name));
    const QString expr = trimmed.mid(eq + 1);
    qsizetype i = 0;
    bool wantTerm = true;
    auto skip = [&] {
        while (i < expr.size() && expr.at(i).isSpace())
            ++i;
    };
    while (true) {
        skip();
        if (i >= expr.size()) break;
        const QChar c = expr.at(i);
        if (!wantTerm) {
            if (c != u'+')
                badFormula(text, QStringLiteral("\"%1\" where \"+\" was expected").arg(expr.mid(i)));
            ++i;
            wantTerm = true;
            continue;
        }
        if (c == u'\'' || c == u'"') {
            f.value += readQuoted(expr, i, text);
        } else if (expr.mid(i, 4).compare(QLatin1String("chr("), Qt::CaseInsensitive) == 0) {
            const qsizetype close = expr.indexOf(u')', i);
            bool ok = false;
            const int code = close < 0 ? -1 : expr.mid(i + 4, close - i - 4).trimmed().toInt(&ok);
            if (!ok || code < 0 || code > 0xFFFF)
                badFormula(text, QStringLiteral("a chr() without a character code"));
            f.value += QChar(code);
            i = close + 1;
        } else if (c.isDigit() || c == u'-' || c == u'.') {
            QString number;
            while (i < expr.size() && (expr.at(i).isDigit() || expr.at(i) == u'.' || expr.at(i) == u'-'))
                number += expr.at(i++);
            bool ok = false;
            number.toDouble(&ok);
            if (!ok) badFormula(text, QStringLiteral("\"%1\" is not a number").arg(number));
            f.value += number;
        } else {
            badFormula(text, QStringLiteral("\"%1\" is not a value").arg(expr.mid(i)));
        }
        wantTerm = false;
    }
    if (wantTerm) badFormula(text, QStringLiteral("no value after \"=\""));
    // A normalised line break: the report prints "\r\n" and "\n" alike.
    f.value.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    return f;
}

QString SelectionToSql(const QString& selection) {
    QString sql;
    qsizetype i = 0;
    const QString& s = selection;
    while (i < s.size()) {
        const QChar c = s.at(i);
        if (c.isSpace()) {
            sql += u' ';
            ++i;
        } else if (c == u'{') {
            const qsizetype close = s.indexOf(u'}', i);
            const QStringList parts = close < 0 ? QStringList() : s.mid(i + 1, close - i - 1).split(u'.');
            if (parts.size() != 2 || parts.at(0).isEmpty() || parts.at(1).isEmpty() ||
                parts.join(QString()).contains(u']'))
                badFormula(selection, QStringLiteral("a field is not written {Table.Column}"));
            sql += u'[' + parts.at(0) + QStringLiteral("].[") + parts.at(1) + u']';
            i = close + 1;
        } else if (c == u'\'' || c == u'"') {
            sql += u'\'' + readQuoted(s, i, selection).replace(u'\'', QStringLiteral("''")) + u'\'';
        } else if (c.isDigit() || c == u'.' || (c == u'-' && i + 1 < s.size() && s.at(i + 1).isDigit())) {
            sql += c;
            ++i;
            while (i < s.size() && (s.at(i).isDigit() || s.at(i) == u'.'))
                sql += s.at(i++);
        } else if (QStringLiteral("=<>()").contains(c)) {
            sql += c;
            ++i;
        } else if (c.isLetter()) {
            QString word;
            while (i < s.size() && s.at(i).isLetter())
                word += s.at(i++);
            const QString lower = word.toLower();
            if (lower != QLatin1String("and") && lower != QLatin1String("or") &&
                lower != QLatin1String("not"))
                badFormula(selection, QStringLiteral("\"%1\" is not known in a selection").arg(word));
            sql += u' ' + lower.toUpper() + u' ';
        } else {
            badFormula(selection, QStringLiteral("\"%1\" is not known in a selection").arg(c));
        }
    }
    return sql.simplified();
}

} // namespace ql
