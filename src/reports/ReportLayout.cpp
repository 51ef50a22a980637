#include "ReportLayout.h"
#include "runtime/VbError.h"
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRegularExpression>
#include <QSet>

namespace ql {

namespace {

const QString kSource = QStringLiteral("Crystal");

struct Statement {
    int line = 0;
    QString keyword;
    QHash<QString, QString> options;
};

[[noreturn]] void bad(const QString& file, int line, const QString& what) {
    raiseError(rpterr::BadLayout, kSource,
               QStringLiteral("The report file %1 cannot be read: line %2: %3.")
                   .arg(QFileInfo(file).fileName())
                   .arg(line)
                   .arg(what));
}

// One statement: the keyword, then key=value options; a quoted value keeps its blanks.
Statement readStatement(const QString& text, int line, const QString& file) {
    Statement s;
    s.line = line;
    qsizetype i = 0;
    const qsizetype n = text.size();
    auto skipBlanks = [&] {
        while (i < n && text.at(i).isSpace())
            ++i;
    };
    skipBlanks();
    while (i < n && !text.at(i).isSpace())
        s.keyword += text.at(i++);
    s.keyword = s.keyword.toLower();
    while (true) {
        skipBlanks();
        if (i >= n) break;
        QString key;
        while (i < n && text.at(i) != u'=' && !text.at(i).isSpace())
            key += text.at(i++);
        if (i >= n || text.at(i) != u'=') bad(file, line, QStringLiteral("\"%1\" has no value").arg(key));
        ++i;
        QString value;
        if (i < n && text.at(i) == u'"') {
            ++i;
            bool closed = false;
            while (i < n) {
                if (text.at(i) == u'"') {
                    if (i + 1 < n && text.at(i + 1) == u'"') {
                        value += u'"';
                        i += 2;
                        continue;
                    }
                    ++i;
                    closed = true;
                    break;
                }
                value += text.at(i++);
            }
            if (!closed) bad(file, line, QStringLiteral("the quote after %1= is not closed").arg(key));
        } else {
            while (i < n && !text.at(i).isSpace())
                value += text.at(i++);
        }
        if (key.isEmpty()) bad(file, line, QStringLiteral("a value without a name"));
        s.options.insert(key.toLower(), value);
    }
    return s;
}

class Reader {
public:
    Reader(const Statement& s, const QString& file) : m_s(s), m_file(file) {}

    QString take(const char* key, const QString& fallback = QString()) {
        const QString k = QString::fromLatin1(key);
        m_used.insert(k);
        return m_s.options.value(k, fallback);
    }
    QString need(const char* key) {
        const QString k = QString::fromLatin1(key);
        if (!m_s.options.contains(k))
            bad(m_file, m_s.line, QStringLiteral("%1 needs %2=").arg(m_s.keyword, k));
        return take(key);
    }
    double number(const char* key, double fallback) {
        const QString v = take(key);
        if (v.isEmpty()) return fallback;
        bool ok = false;
        const double d = v.toDouble(&ok);
        if (!ok || d < 0)
            bad(m_file, m_s.line, QStringLiteral("%1=%2 is not a number").arg(QString::fromLatin1(key), v));
        return d;
    }
    QString oneOf(const char* key, const QStringList& allowed, const QString& fallback) {
        const QString v = take(key, fallback).toLower();
        if (!allowed.contains(v))
            bad(m_file, m_s.line,
                QStringLiteral("%1=%2 is not one of %3")
                    .arg(QString::fromLatin1(key), v, allowed.join(u',')));
        return v;
    }
    // Every option must have been asked for: a misspelt one is an error, not a silent default.
    void done() {
        for (auto it = m_s.options.cbegin(); it != m_s.options.cend(); ++it)
            if (!m_used.contains(it.key()))
                bad(m_file, m_s.line, QStringLiteral("%1 knows no %2=").arg(m_s.keyword, it.key()));
    }

private:
    const Statement& m_s;
    const QString& m_file;
    QSet<QString> m_used;
};

const QStringList kPlaces{QStringLiteral("left"), QStringLiteral("right"), QStringLiteral("center")};
const QStringList kStyles{QStringLiteral("title"), QStringLiteral("bold"), QStringLiteral("normal"),
                          QStringLiteral("small")};

LayoutText readText(Reader& r, bool placed) {
    LayoutText t;
    if (placed) t.place = r.oneOf("place", kPlaces, QStringLiteral("left"));
    t.style = r.oneOf("style", kStyles, QStringLiteral("normal"));
    t.text = r.need("text");
    return t;
}

} // namespace

bool ReportLayout::declares(const QString& formula) const {
    for (const LayoutFormula& f : formulas)
        if (f.name == formula) return true;
    return false;
}

int ReportLayout::lastSource() const {
    int last = dataSource;
    for (const auto& l : lookups)
        last = qMax(last, l.first);
    return last;
}

ReportLayout ParseReportLayout(const QString& text, const QString& fileName) {
    ReportLayout layout;
    layout.fileName = fileName;
    const QStringList lines =
        QString(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n")).split(u'\n');
    bool haveData = false;
    QString pending;
    int pendingLine = 0;
    for (int i = 0; i < lines.size(); ++i) {
        QString line = lines.at(i);
        if (pending.isEmpty()) pendingLine = i + 1;
        if (line.endsWith(u'\\')) {
            pending += line.chopped(1) + u' ';
            continue;
        }
        line = pending + line;
        pending.clear();
        const QString trimmed = line.trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith(u'#')) continue;
        const Statement s = readStatement(trimmed, pendingLine, fileName);
        Reader r(s, fileName);
        const QString& k = s.keyword;
        if (k == QLatin1String("report")) {
            layout.name = r.need("name");
        } else if (k == QLatin1String("page")) {
            layout.pageSize =
                r.oneOf("size", {QStringLiteral("a4"), QStringLiteral("a5"), QStringLiteral("letter")},
                        QStringLiteral("a4"))
                    .toUpper();
            if (layout.pageSize == QLatin1String("LETTER")) layout.pageSize = QStringLiteral("Letter");
            layout.landscape =
                r.oneOf("orientation", {QStringLiteral("portrait"), QStringLiteral("landscape")},
                        QStringLiteral("portrait")) == QLatin1String("landscape");
            layout.marginsMm = r.number("margins", layout.marginsMm);
            layout.fontFamily = r.take("font", layout.fontFamily);
            layout.fontSize = r.number("fontsize", layout.fontSize);
            if (layout.fontSize < 4) bad(fileName, s.line, QStringLiteral("fontsize must be 4 or more"));
        } else if (k == QLatin1String("formula")) {
            LayoutFormula f{r.need("name"), r.take("default")};
            if (f.name.isEmpty() || layout.declares(f.name))
                bad(fileName, s.line,
                    QStringLiteral("the formula \"%1\" is empty or declared twice").arg(f.name));
            layout.formulas.append(f);
        } else if (k == QLatin1String("data")) {
            if (haveData) bad(fileName, s.line, QStringLiteral("a report has one data statement"));
            haveData = true;
            layout.dataSource = int(r.number("source", 0));
            layout.dataTable = r.take("table");
            layout.dataQuery = r.take("query");
            if (layout.dataTable.isEmpty() == layout.dataQuery.isEmpty())
                bad(fileName, s.line, QStringLiteral("data needs either table= or query="));
        } else if (k == QLatin1String("lookup")) {
            layout.lookups.append({int(r.number("source", 0)), r.need("table")});
        } else if (k == QLatin1String("order")) {
            layout.order.append(r.need("field"));
        } else if (k == QLatin1String("heading")) {
            layout.headings.append(readText(r, true));
        } else if (k == QLatin1String("column")) {
            LayoutColumn c;
            c.field = r.need("field");
            c.caption = r.take("caption", c.field);
            c.width = r.number("width", 1);
            const QString align = r.oneOf("align", kPlaces, QStringLiteral("left"));
            c.align = align == QLatin1String("right")    ? Qt::AlignRight
                      : align == QLatin1String("center") ? Qt::AlignHCenter
                                                         : Qt::AlignLeft;
            c.format = r.take("format");
            c.total = r.take("total");
            if (c.width <= 0) bad(fileName, s.line, QStringLiteral("width must be above 0"));
            layout.columns.append(c);
        } else if (k == QLatin1String("rowstyle")) {
            LayoutRowStyle rs{r.need("field"), r.need("match"), r.oneOf("style", kStyles, QStringLiteral("bold"))};
            if (!QRegularExpression(rs.pattern).isValid())
                bad(fileName, s.line, QStringLiteral("match=%1 is not a valid pattern").arg(rs.pattern));
            layout.rowStyles.append(rs);
        } else if (k == QLatin1String("totals")) {
            layout.totalsCaption = r.need("caption");
        } else if (k == QLatin1String("summary")) {
            LayoutText t = readText(r, false);
            t.label = r.take("label");
            layout.summaries.append(t);
        } else if (k == QLatin1String("footer")) {
            layout.footers.append(readText(r, true));
        } else {
            bad(fileName, s.line, QStringLiteral("unknown statement \"%1\"").arg(k));
        }
        r.done();
    }
    if (!pending.isEmpty()) bad(fileName, pendingLine, QStringLiteral("the last line ends in a backslash"));
    if (!haveData) bad(fileName, lines.size(), QStringLiteral("the report has no data statement"));
    if (layout.columns.isEmpty()) bad(fileName, lines.size(), QStringLiteral("the report has no columns"));
    return layout;
}

ReportLayout ReadReportLayout(const QString& path) {
    QFile f(path);
    if (!QFileInfo(path).isFile() || !f.open(QIODevice::ReadOnly))
        raiseError(rpterr::FileNotFound, kSource,
                   QStringLiteral("The report file %1 cannot be found.").arg(path));
    return ParseReportLayout(QString::fromUtf8(f.readAll()), path);
}

} // namespace ql
