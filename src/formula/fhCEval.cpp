#include "fhCEval.h"
#include "fhCStack.h"
#include "runtime/Convert.h"
#include "runtime/VbError.h"
#include <cmath>

namespace ql {

namespace {

const char* const kSource = "fhCEval";

enum ScanState { Start = 0, AfterOperand = 1, AfterBinary = 2, AfterSign = 3 };

bool isOperandChar(QChar c) {
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('.') || c == QLatin1Char(',');
}

// Floating-point failures are the runtime's errors, as its Double arithmetic raises them.
double checked(double r) {
    if (std::isnan(r)) raiseError(err::InvalidProcedureCall, QString::fromLatin1(kSource));
    if (!std::isfinite(r)) raiseError(err::Overflow, QString::fromLatin1(kSource));
    return r;
}

double power(double base, double exponent) {
    if (base == 0.0 && exponent < 0.0) raiseError(err::DivisionByZero, QString::fromLatin1(kSource));
    return checked(std::pow(base, exponent));
}

} // namespace

double fhCEval::Evaluate(const QString& Expression) {
    QString postfix;
    const qint16 column = InfixToPostfix(Expression, postfix);
    if (column != 0)
        raiseError(err::EvalFault, QString::fromLatin1(kSource),
                   lastMessage + QStringLiteral(" : Column ") + QString::number(column));
    return DoEvaluate(postfix);
}

qint16 fhCEval::Precedence(const QString& Operator) {
    if (Operator == QLatin1String("+") || Operator == QLatin1String("-")) return 1;
    if (Operator == QLatin1String("*") || Operator == QLatin1String("/")) return 2;
    if (Operator == QLatin1String("^")) return 3;
    if (Operator == QLatin1String("(-)") || Operator == QLatin1String("i")) return 10;
    return 0;
}

qint16 fhCEval::InfixToPostfix(const QString& Expression, QString& Postfix) {
    fhCStack operators;
    Postfix.clear();
    int state = Start;
    qint16 depth = 0;
    qint16 pos = 1;
    const qsizetype length = Expression.size();

    auto fail = [&](const char* message, qint16 column) {
        lastMessage = QString::fromLatin1(message);
        return column;
    };
    auto popToPostfix = [&]() { Postfix += operators.Pop().toString() + QLatin1Char(' '); };

    while (pos <= length) {
        const QChar c = Expression.at(pos - 1);
        if (c == QLatin1Char('(')) {
            if (state == AfterOperand) return fail("Operator expected", pos);
            operators.Push(QStringLiteral("("));
            depth = addInteger(depth, 1, kSource);
            if (state == AfterSign) state = AfterBinary;
        } else if (c == QLatin1Char(')')) {
            if (state != AfterOperand) return fail("Operand expected", pos);
            if (depth == 0) return fail("Closing parenthesis without matching open parenthesis", pos);
            for (QString op = operators.Pop().toString(); op != QLatin1String("(");
                 op = operators.Pop().toString())
                Postfix += op + QLatin1Char(' ');
            depth = addInteger(depth, -1, kSource);
        } else if (c == QLatin1Char('+') || c == QLatin1Char('-') || c == QLatin1Char('*') ||
                   c == QLatin1Char('/') || c == QLatin1Char('^') || c == QLatin1Char('i')) {
            const bool isSign = c == QLatin1Char('+') || c == QLatin1Char('-');
            if (state == AfterOperand) {
                const QString op(c);
                while (operators.StackSize() > 0 &&
                       Precedence(operators.GetPopValue().toString()) >= Precedence(op))
                    popToPostfix();
                operators.Push(op);
                state = AfterBinary;
            } else if (isSign && (state == Start || state == AfterBinary)) {
                if (c == QLatin1Char('-')) operators.Push(QStringLiteral("(-)"));
                state = AfterSign;
            } else {
                return fail("Operand expected", pos);
            }
        } else if (isOperandChar(c)) {
            if (state == AfterOperand) return fail("Operator expected", pos);
            QString operand;
            int points = 0;
            while (pos <= length && isOperandChar(Expression.at(pos - 1))) {
                const QChar d = Expression.at(pos - 1);
                if (d == QLatin1Char('.') || d == QLatin1Char(','))
                    if (++points > 1) return fail("Operand contains multiple decimal points", pos);
                operand += d;
                pos = addInteger(pos, 1, kSource);
            }
            pos = addInteger(pos, -1, kSource);
            if (operand == QLatin1String(".") || operand == QLatin1String(","))
                return fail("Invalid operand", pos);
            Postfix += operand + QLatin1Char(' ');
            state = AfterOperand;
        } else if (c.unicode() > ' ') {
            return fail("Unexpected character encountered", pos);
        }
        pos = addInteger(pos, 1, kSource);
    }

    if (state == AfterBinary || state == AfterSign) return fail("Operand expected", pos);
    if (depth > 0) return fail("Closing parenthesis expected", pos);
    while (operators.StackSize() > 0)
        popToPostfix();
    return 0;
}

double fhCEval::DoEvaluate(const QString& Postfix) {
    fhCStack values;
    auto popNumber = [&]() { return values.Pop().toDouble(); };

    // Positions are 16-bit like those of the first pass.
    qint16 start = 1;
    while (true) {
        const qsizetype found = start <= Postfix.size() ? Postfix.indexOf(QLatin1Char(' '), start - 1) : -1;
        if (found < 0) break;
        if (found + 1 > 32767) raiseError(err::Overflow, QString::fromLatin1(kSource));
        const QString token = Postfix.mid(start - 1, found - (start - 1));
        start = addInteger(static_cast<qint16>(found + 1), 1, kSource);

        if (IsNumeric(token)) {
            values.Push(CDbl(QVariant(token)));
        } else if (token == QLatin1String("+")) {
            const double right = popNumber(), left = popNumber();
            values.Push(checked(left + right));
        } else if (token == QLatin1String("-")) {
            const double right = popNumber(), left = popNumber();
            values.Push(checked(left - right));
        } else if (token == QLatin1String("*")) {
            const double right = popNumber(), left = popNumber();
            values.Push(checked(left * right));
        } else if (token == QLatin1String("/")) {
            const double right = popNumber(), left = popNumber();
            values.Push(right == 0.0 ? 0.0 : checked(left / right));
        } else if (token == QLatin1String("^")) {
            const double right = popNumber(), left = popNumber();
            values.Push(power(left, right));
        } else if (token == QLatin1String("(-)")) {
            values.Push(-popNumber());
        } else if (token == QLatin1String("i") || token == QLatin1String("I")) {
            values.Push(std::floor(popNumber()));
        } else {
            raiseError(err::EvalBadToken, QString::fromLatin1(kSource),
                       QStringLiteral("Bad token in Evaluate: ") + token);
        }
    }
    if (values.StackSize() == 0) return 0.0;
    return popNumber();
}

} // namespace ql
