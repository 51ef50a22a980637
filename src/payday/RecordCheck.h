#pragma once
// The pieces every file check is made of: the file cut into comma-separated records, and the field
// rules (length, characters, numbers, dates) each record is held to. A problem is one line of text
// that names the line of the file and whom it concerns.
#include <QDate>
#include <QList>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

namespace ql {

struct CsvRecord {
    int line = 0; // from 1
    QStringList fields;
    QString field(int position) const { return position <= fields.size() ? fields.at(position - 1) : QString(); }
};

// The records of a file whose lines end in CR LF (or, when lfAllowed, LF alone, and the last line
// without a line end). Characters outside printable ASCII, empty lines and stray carriage returns are
// problems.
QList<CsvRecord> SplitCsvRecords(const QString& text, bool lfAllowed, QStringList& problems);

// Checks the fields of one record, adding "Line N (who): ..." problems.
class RecordCheck {
public:
    RecordCheck(const CsvRecord& record, QString who, QStringList& problems);

    // The record has exactly count fields; more are allowed when they are all empty (tolerant of a
    // trailing comma). False (and a problem) otherwise.
    bool fieldCount(int count);

    void problem(const QString& what);
    const QString& value(int position) const { return m_values.at(position - 1); }
    bool blank(int position) const { return value(position).isEmpty(); }

    // Text of allowed characters, no leading or trailing blanks, up to size; required or not.
    void text(int position, const QString& name, int size, bool required,
              const std::function<bool(QChar)>& allowed, const QString& allowedWords);
    // Whole numbers of digits only, up to size digits; negative ones only when signedAllowed.
    std::optional<qint64> number(int position, const QString& name, int size, bool required,
                                 bool signedAllowed = false);
    // CCYYMMDD (or another Qt format) that is a real date.
    QDate date(int position, const QString& name, bool required, const QString& format = QStringLiteral("yyyyMMdd"));
    // One of the values (exact).
    void oneOf(int position, const QString& name, const QStringList& values, bool required);
    // A nine-digit IRD number that passes the check; "000000000" only when unknownAllowed.
    void irdNumber(int position, const QString& name, bool unknownAllowed, bool required = true);
    // The value is exactly this.
    void equals(int position, const QString& name, const QString& expected);
    // The value is empty.
    void empty(int position, const QString& name, const QString& why);

private:
    const CsvRecord& m_record;
    QString m_who;
    QStringList& m_problems;
    QStringList m_values;
};

// Character classes of the layouts.
bool IsLetterOrBlank(QChar c);                // ALPHA
bool IsLetterDigitBlankOrDash(QChar c);       // ANUM
bool IsDigit(QChar c);
bool IsEmailCharacter(QChar c);               // EMAIL

} // namespace ql
