#include "TaxEvaluator.h"
#include "FloatChecks.h"
#include "runtime/Convert.h"
#include "runtime/Format.h"
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <locale.h>

namespace ql {

namespace {

constexpr int kMaxReplaceSteps = 1 << 22;

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}
QChar first(QStringView t) {
    return t.isEmpty() ? QChar() : t.front();
}

// The number text has only digits and at most one '.', so the C locale reads it whatever the user's is.
double parseCNumber(const QByteArray& text) {
    static const locale_t c = newlocale(LC_ALL_MASK, "C", locale_t(nullptr));
    return strtod_l(text.constData(), nullptr, c);
}

// Keeps EvaluateSum's nesting count right on every way out.
struct NestingScope {
    int& n;
    explicit NestingScope(int& count) : n(count) { ++n; }
    ~NestingScope() { --n; }
};

} // namespace

QString TaxEvaluator::ReplaceText(const QString& Text, const QString& Find,
                                  const QString& Replacement) const {
    if (Find.isEmpty() || Find == Replacement) return QString();
    if (Replacement.contains(Find)) {
        // Searching again from the start would never end; each occurrence of the text as given is
        // replaced once instead.
        return QString(Text).replace(Find, Replacement);
    }
    // Equivalent to replacing the first occurrence and searching again from the first character:
    // the text moved to `done` holds no occurrence, so the next one can only end in what is appended.
    QString done;
    done.reserve(Text.size());
    QString pending; // characters still to read, last one first
    pending.reserve(Text.size());
    for (qsizetype i = Text.size() - 1; i >= 0; --i)
        pending += Text.at(i);
    int steps = 0;
    while (!pending.isEmpty()) {
        done += pending.back();
        pending.chop(1);
        if (done.endsWith(Find)) {
            done.chop(Find.size());
            for (qsizetype i = Replacement.size() - 1; i >= 0; --i)
                pending += Replacement.at(i);
            if (++steps > kMaxReplaceSteps) break; // a rewriting that keeps growing; stop with what there is
        }
    }
    for (qsizetype i = pending.size() - 1; i >= 0; --i)
        done += pending.at(i);
    return done;
}

QString TaxEvaluator::RemoveSpaces(const QString& Text) const {
    return ReplaceText(Text, QStringLiteral(" "), QString());
}

void TaxEvaluator::setExpression(const QString& text) {
    m_Expression = ReplaceText(RemoveSpaces(text).toUpper(), QStringLiteral("."), QStringLiteral(","));
}

double TaxEvaluator::Result() {
    m_Error = NoFault;
    m_nesting = 0;
    m_Result = EvaluateSum(m_Expression);
    m_Assigned = m_Error == NoFault;
    return m_Result;
}

double TaxEvaluator::Truncate(double Value, int Decimals) const {
    const QString formatted = Format(QVariant(Value), QStringLiteral(".00"));
    const QString plain = CStr(Value);
    if (Decimals == 2 && formatted == plain) return Value;
    const double scale = std::pow(10.0, Decimals);
    return std::floor(Value * scale) / scale;
}

double TaxEvaluator::EvaluateSum(QStringView Text) {
    NestingScope scope(m_nesting);
    if (m_nesting > MaxNesting) {
        m_Error = Malformed;
        return 0.0;
    }
    double sum = 0.0;
    for (QStringView piece : SplitAtOperators(Text, QLatin1Char('+'), QLatin1Char('-'))) {
        const double term = EvaluateTerm(piece);
        try {
            sum = fp::add(sum, term);
        } catch (const fp::ArithmeticFault&) {
            m_Error = ArithmeticFailure; // the sum keeps what it had
        }
    }
    return sum;
}

QList<QStringView> TaxEvaluator::SplitAtOperators(QStringView Text, QChar OperatorA, QChar OperatorB) {
    QList<QStringView> pieces;
    QStringView rest = Text;
    for (qsizetype at = FindOperator(rest, OperatorA, OperatorB, 0); at >= 0;
         at = FindOperator(rest, OperatorA, OperatorB, 0)) {
        pieces.append(rest.left(at));
        rest = rest.mid(at);
    }
    pieces.append(rest);
    return pieces;
}

qsizetype TaxEvaluator::FindOperator(QStringView Text, QChar OperatorA, QChar OperatorB, qsizetype Start) {
    int depth = 0;
    for (qsizetype i = Start; i < Text.size(); ++i) {
        const QChar c = Text.at(i);
        if (c == QLatin1Char('(')) {
            ++depth;
        } else if (c == QLatin1Char(')')) {
            if (--depth < 0) {
                m_Error = Unbalanced;
                return -1;
            }
        } else if ((c == OperatorA || c == OperatorB) && depth == 0 && i > 0) {
            return i;
        }
    }
    return -1;
}

double TaxEvaluator::EvaluateTerm(QStringView Text) {
    if (m_Error != NoFault) return 0.0;
    double product = 0.0;
    QChar op = QLatin1Char('+');
    for (QStringView piece : SplitAtOperators(Text, QLatin1Char('*'), QLatin1Char('/'))) {
        double value = 0.0;
        EvaluateFactor(piece, op, value);
        try {
            if (op == QLatin1Char('*'))
                product = fp::mul(product, value);
            else if (op == QLatin1Char('/'))
                product = fp::div(product, value);
            else
                product = fp::add(product, value);
        } catch (const fp::ArithmeticFault&) {
            m_Error = ArithmeticFailure;
            return 0.0;
        }
    }
    return product;
}

double TaxEvaluator::ReadOperand(QStringView& t) {
    const QChar c = first(t);
    if (isDigit(c)) return ReadNumber(t);
    if (c == QLatin1Char('(')) return EvaluateSum(TakeParenthesis(t));
    QStringView arguments;
    const QStringView name = TakeFunction(t, arguments);
    return EvaluateFunction(name, arguments);
}

void TaxEvaluator::EvaluateFactor(QStringView Text, QChar& Operator, double& Value) {
    if (m_Error != NoFault) {
        Value = 0.0;
        return;
    }
    Operator = QLatin1Char('+');
    QStringView t = Text;
    bool negative = false;
    const QChar c = first(t);
    if (c == QLatin1Char('-')) {
        negative = true;
        t = t.mid(1);
    } else if (c == QLatin1Char('+') || c == QLatin1Char('*') || c == QLatin1Char('/')) {
        Operator = c;
        t = t.mid(1);
    }
    const double value = ReadOperand(t);

    double result = 0.0;
    if (t.isEmpty()) {
        result = value;
    } else {
        const QChar o = t.front();
        t = t.mid(1);
        const double exponent = ReadOperand(t);
        if (o == QLatin1Char('^')) {
            try {
                result = fp::pow(value, exponent);
            } catch (const fp::ArithmeticFault&) {
                m_Error = ArithmeticFailure;
                Value = 0.0;
                return;
            }
        } else {
            m_Error = BadOperator;
        }
    }
    if (!t.isEmpty()) m_Error = Malformed;
    Value = negative ? -result : result;
}

double TaxEvaluator::ReadNumber(QStringView& Text) {
    const QChar c = first(Text);
    // Where the body starts in Text: "," reads as "0,", a leading sign or other character is skipped.
    qsizetype offset = 0;
    bool negative = false;
    QByteArray number;
    if (c == QLatin1Char(',')) {
        number = "0";
        offset = 0;
    } else if (!isDigit(c)) {
        negative = c == QLatin1Char('-');
        offset = Text.isEmpty() ? 0 : 1;
    }
    bool seenMark = false;
    qsizetype i = offset;
    for (; i < Text.size(); ++i) {
        const QChar d = Text.at(i);
        if (isDigit(d)) {
            number += char(d.unicode());
        } else if (d == QLatin1Char(',')) {
            if (seenMark) {
                m_Error = TwoDecimalMarks;
                break;
            }
            seenMark = true;
            number += '.';
        } else {
            break;
        }
    }
    if (number.isEmpty()) {
        m_Error = Malformed;
        return 0.0;
    }
    Text = Text.mid(i);
    const double value = parseCNumber(number);
    if (!std::isfinite(value)) {
        m_Error = ArithmeticFailure; // more digits than a double holds
        return 0.0;
    }
    return negative ? -value : value;
}

QStringView TaxEvaluator::TakeParenthesis(QStringView& Text) {
    if (first(Text) != QLatin1Char('(')) {
        m_Error = Unbalanced;
        return {};
    }
    int depth = 1;
    for (qsizetype i = 1; i < Text.size(); ++i) {
        const QChar c = Text.at(i);
        if (c == QLatin1Char('('))
            ++depth;
        else if (c == QLatin1Char(')') && --depth == 0) {
            const QStringView inside = Text.mid(1, i - 1);
            Text = Text.mid(i + 1);
            return inside;
        }
    }
    m_Error = Unbalanced;
    return {};
}

QStringView TaxEvaluator::TakeFunction(QStringView& Text, QStringView& Arguments) {
    Arguments = {};
    const qsizetype open = Text.indexOf(QLatin1Char('('));
    if (open < 0) {
        // Unlike a number or a parenthesis, a name without its call is taken whole.
        m_Error = Malformed;
        const QStringView name = Text;
        Text = {};
        return name;
    }
    const QStringView name = Text.left(open);
    Text = Text.mid(open);
    Arguments = TakeParenthesis(Text);
    return name;
}

} // namespace ql
