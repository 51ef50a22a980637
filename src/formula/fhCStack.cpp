#include "fhCStack.h"
#include "runtime/VbError.h"

namespace ql {

qint16 addInteger(qint16 a, int b, const char* source) {
    const int sum = int(a) + b;
    if (sum < -32768 || sum > 32767) raiseError(err::Overflow, QString::fromLatin1(source));
    return static_cast<qint16>(sum);
}

void fhCStack::Push(const QVariant& Value) {
    const qint16 newTop = addInteger(top, 1, "fhCStack");
    if (newTop > capacity) {
        // Grows ten slots at a time and never shrinks.
        const qint16 newCapacity = addInteger(capacity, 10, "fhCStack");
        Stack.resize(qsizetype(newCapacity) + 1);
        capacity = newCapacity;
    }
    top = newTop;
    Stack[top] = Value;
}

QVariant fhCStack::Pop() {
    if (top <= 0)
        raiseError(err::EvalFault, QStringLiteral("fhCStack"),
                   QStringLiteral("Pop method invoked on empty stack"));
    QVariant v = Stack[top];
    --top;
    return v;
}

QVariant fhCStack::GetPopValue() const {
    if (top <= 0)
        raiseError(err::EvalFault, QStringLiteral("fhCStack"),
                   QStringLiteral("GetPopValue method invoked on empty stack"));
    return Stack[top];
}

} // namespace ql
