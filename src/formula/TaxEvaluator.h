#pragma once
// An infix formula with named functions ("SALARY(x*p)", "PAYE(t/p)"), computed by recursive descent
// over the text itself. Faults never leave the class: they are stored in Error (the last one wins)
// and the formula still yields a number.
#include <QList>
#include <QString>
#include <QStringView>

namespace ql {

class TaxEvaluator {
public:
    // Fault codes of Error.
    enum : qint32 {
        NoFault = 0,
        TwoDecimalMarks = 1,
        Malformed = 2,
        BadOperator = 4,
        Unbalanced = 8,
        ArithmeticFailure = 16,
    };
    // Nesting of parentheses and function calls deeper than this is treated as malformed (2) rather
    // than followed down, so no text can exhaust the stack.
    static constexpr int MaxNesting = 64;

    // Stores the text without blanks, upper-cased, with every "." turned into ",".
    void setExpression(const QString& text);
    QString Expression() const { return m_Expression; }
    qint32 Error() const { return m_Error; }
    // Evaluates Expression anew at each call.
    double Result();
    bool Assigned() const { return m_Assigned; }

    // Every occurrence of Find replaced, searching again from the start after each replacement; the
    // empty text when Find is empty or equal to Replacement.
    QString ReplaceText(const QString& Text, const QString& Find, const QString& Replacement) const;
    // Value cut (floored) to Decimals places, except that a value already showing exactly two decimals
    // is kept as it is when Decimals is 2.
    double Truncate(double Value, int Decimals) const;

private:
    QString RemoveSpaces(const QString& Text) const;
    double EvaluateSum(QStringView Text);
    QList<QStringView> SplitAtOperators(QStringView Text, QChar OperatorA, QChar OperatorB);
    double EvaluateTerm(QStringView Text);
    void EvaluateFactor(QStringView Text, QChar& Operator, double& Value);
    double ReadNumber(QStringView& Text);
    qsizetype FindOperator(QStringView Text, QChar OperatorA, QChar OperatorB, qsizetype Start);
    QStringView TakeParenthesis(QStringView& Text);
    QStringView TakeFunction(QStringView& Text, QStringView& Arguments);
    double EvaluateFunction(QStringView Name, QStringView Arguments);
    // A factor's operand by its first character: a number, a parenthesis or a function call.
    double ReadOperand(QStringView& t);

    bool m_Assigned = false;
    QString m_Expression;
    double m_Result = 0.0;
    qint32 m_Error = NoFault;
    int m_nesting = 0; // 0 between reads
};

} // namespace ql
