#pragma once
// The one run-time error type: every failure of the system is one of these.
#include <QString>
#include <exception>
#include <string>

namespace ql {

// Error numbers the system reacts to.
namespace err {
constexpr long InvalidProcedureCall = 5;
constexpr long Overflow = 6;
constexpr long SubscriptOutOfRange = 9;
constexpr long DivisionByZero = 11;
constexpr long TypeMismatch = 13;
constexpr long InvalidUseOfNull = 94;
constexpr long NoCurrentRecord = 3021;
constexpr long DuplicateKey = 3022;
constexpr long NotADatabase = 3049;
constexpr long MissingObject = 3078; // table or query that does not exist
constexpr long RowInUse = 3200;
constexpr long RequiredField = 3314;
} // namespace err

class VbError : public std::exception {
public:
    VbError(long number, QString source, QString description)
        : m_number(number), m_source(std::move(source)), m_description(std::move(description)),
          m_what(m_description.toStdString()) {}

    long number() const noexcept { return m_number; }
    const QString& source() const noexcept { return m_source; }
    const QString& description() const noexcept { return m_description; }
    const char* what() const noexcept override { return m_what.c_str(); }

private:
    long m_number;
    QString m_source;
    QString m_description;
    std::string m_what;
};

// The runtime's standard description for a number ("Overflow" for 6, ...); empty when unknown.
QString standardDescription(long number);

// Raises the run-time error; the description defaults to the runtime's own text for the number.
[[noreturn]] void raiseError(long number, const QString& source = QStringLiteral("Quillary"),
                             const QString& description = QString());

} // namespace ql
