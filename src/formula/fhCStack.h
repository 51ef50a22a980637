#pragma once
// The stack of both passes of fhCEval: operator texts in the first, numbers in the second.
#include <QList>
#include <QVariant>

namespace ql {

namespace err {
// The evaluators' own error numbers are 32-bit values with the top bit set (0x80040001, 0x80040002).
// They are held as the runtime's Long holds them, a signed 32-bit number widened to long:
// -2147221503 and -2147221502. Print them as (quint32)number to get the hex form back.
constexpr long EvalFault = static_cast<qint32>(0x80040001u);
constexpr long EvalBadToken = static_cast<qint32>(0x80040002u);
} // namespace err

// 16-bit sum as the runtime's Integer computes it: past -32768..32767 raises Overflow (6).
qint16 addInteger(qint16 a, int b, const char* source);

class fhCStack {
public:
    qint16 StackSize() const { return top; }
    // Either a number or a text may be pushed.
    void Push(const QVariant& Value);
    // Raise EvalFault on an empty stack.
    QVariant Pop();
    QVariant GetPopValue() const;

private:
    QList<QVariant> Stack{QVariant()}; // indexed from 1; slot 0 is never used
    qint16 capacity = 0;
    qint16 top = 0;
};

} // namespace ql
