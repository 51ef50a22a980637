#include "EmployeeCsv.h"
#include "EmployeeFields.h"
#include "EmployeeStore.h"
#include "payday/IrdNumber.h"
#include "runtime/VbError.h"
#include <QFile>
#include <QRegularExpression>
#include <QSaveFile>

namespace ql {

namespace {

[[noreturn]] void refuse(const QString& message) {
    throw VbError(5, QStringLiteral("Employees"), message);
}

QString quoted(const QString& field) {
    const bool needs = field.contains(u',') || field.contains(u'"') || field.contains(u'\n') ||
                       field.contains(u'\r') || field != field.trimmed();
    if (!needs) return field;
    return u'"' + QString(field).replace(QStringLiteral("\""), QStringLiteral("\"\"")) + u'"';
}

} // namespace

bool ParseCsv(const QString& input, QList<QStringList>& rows, QString& problem) {
    QString text = input;
    if (text.startsWith(QChar(0xFEFF))) text.remove(0, 1);
    rows.clear();
    QStringList row;
    QString field;
    bool inQuotes = false, fieldQuoted = false, rowHasContent = false;
    int line = 1;
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (inQuotes) {
            if (c == u'"') {
                if (i + 1 < text.size() && text.at(i + 1) == u'"') {
                    field += u'"';
                    ++i;
                } else {
                    inQuotes = false;
                }
            } else {
                if (c == u'\n') ++line;
                field += c;
            }
            continue;
        }
        if (c == u'"') {
            if (!field.trimmed().isEmpty() || fieldQuoted) {
                problem = QStringLiteral("Row %1: a quote inside a field that isn't quoted.").arg(line);
                return false;
            }
            field.clear();
            inQuotes = fieldQuoted = rowHasContent = true;
        } else if (c == u',') {
            row << (fieldQuoted ? field : field.trimmed());
            field.clear();
            fieldQuoted = false;
            rowHasContent = true;
        } else if (c == u'\n' || c == u'\r') {
            if (c == u'\r' && i + 1 < text.size() && text.at(i + 1) == u'\n') ++i;
            row << (fieldQuoted ? field : field.trimmed());
            if (rowHasContent || !row.constFirst().isEmpty()) rows << row;
            row.clear();
            field.clear();
            fieldQuoted = rowHasContent = false;
            ++line;
        } else {
            if (fieldQuoted) {
                if (c.isSpace()) continue;
                problem = QStringLiteral("Row %1: text after the closing quote of a field.").arg(line);
                return false;
            }
            field += c;
            rowHasContent = true;
        }
    }
    if (inQuotes) {
        problem = QStringLiteral("Row %1: a quoted field is not closed.").arg(line);
        return false;
    }
    if (rowHasContent || !field.isEmpty()) {
        row << (fieldQuoted ? field : field.trimmed());
        rows << row;
    }
    return true;
}

QString CsvLine(const QStringList& fields) {
    QStringList out;
    for (const QString& f : fields) out << quoted(f);
    return out.join(u',') + QStringLiteral("\r\n");
}

QList<qint32> ImportEmployees(Database& wage, Database& farm, const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) refuse(QStringLiteral("The file %1 can't be read.").arg(path));
    const QByteArray bytes = file.readAll();
    file.close();
    QList<QStringList> rows;
    QString problem;
    if (!ParseCsv(QString::fromUtf8(bytes), rows, problem)) refuse(problem);
    if (rows.size() < 2) refuse(QStringLiteral("The file %1 has no employees: a header row and a row for each.").arg(path));

    const QStringList header = rows.constFirst();
    QStringList problems;
    QList<const EmployeeField*> columns;
    for (const QString& name : header) {
        const EmployeeField* f = FindEmployeeColumn(name);
        if (!f) problems << QStringLiteral("Row 1: \"%1\" is not a column of an employee.").arg(name);
        columns << f;
    }
    if (!problems.isEmpty()) refuse(problems.join(u'\n'));

    QHash<QString, int> irdRows;
    const QList<EmployeeDetails> existing = LoadEmployees(wage, farm);
    QList<EmployeeDetails> list;
    QStringList labels;
    for (int r = 1; r < rows.size(); ++r) {
        const QStringList& fields = rows.at(r);
        const QString label = QStringLiteral("Row %1: ").arg(r + 1);
        if (fields.size() != header.size())
            problems << label + QStringLiteral("%1 fields where the header has %2.").arg(fields.size()).arg(header.size());
        QList<QPair<QString, QString>> values;
        for (int c = 0; c < columns.size() && c < fields.size(); ++c) {
            if (fields.at(c).trimmed().isEmpty()) continue;
            if (columns.at(c)->repeatable) {
                for (const QString& part : fields.at(c).split(u';', Qt::SkipEmptyParts))
                    values << qMakePair(columns.at(c)->option, part.trimmed());
            } else {
                values << qMakePair(columns.at(c)->option, fields.at(c));
            }
        }
        EmployeeDetails d;
        QList<FieldProblem> rowProblems = ApplyEmployeeValues(d, values);
        if (rowProblems.isEmpty()) rowProblems = EmployeeProblems(wage, d);
        for (const FieldProblem& f : rowProblems) problems << label + f.message;
        const QString digits = IrdDigits(d.IRDNumber).remove(QRegularExpression(QStringLiteral("^0+")));
        if (!digits.isEmpty()) {
            for (const EmployeeDetails& e : existing)
                if (IrdDigits(e.IRDNumber).remove(QRegularExpression(QStringLiteral("^0+"))) == digits)
                    problems << label + QStringLiteral("IRD number: %1 is already on the payroll (employee %2).")
                                            .arg(d.IRDNumber, QString::number(e.EmployeeID));
            if (irdRows.contains(digits))
                problems << label + QStringLiteral("IRD number: %1 is also in row %2.").arg(d.IRDNumber).arg(irdRows.value(digits));
            else
                irdRows.insert(digits, r + 1);
        }
        list << d;
        labels << label;
    }
    if (!problems.isEmpty()) refuse(problems.join(u'\n'));
    return SaveEmployees(wage, farm, list, labels);
}

int ExportEmployees(Database& wage, Database& farm, const QString& path) {
    const QList<EmployeeDetails> list = LoadEmployees(wage, farm);
    QString text;
    QStringList header;
    for (const EmployeeField& f : EmployeeFields()) header << EmployeeColumnName(f.option);
    text += CsvLine(header);
    for (const EmployeeDetails& d : list) {
        QStringList fields;
        for (const EmployeeField& f : EmployeeFields()) fields << f.write(d);
        text += CsvLine(fields);
    }
    QSaveFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(text.toUtf8()) < 0 || !out.commit())
        refuse(QStringLiteral("The file %1 can't be written.").arg(path));
    return static_cast<int>(list.size());
}

} // namespace ql
