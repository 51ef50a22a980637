#pragma once
// Arithmetic in two passes: InfixToPostfix turns "2*(3+4)" into "2 3 4 + * ", DoEvaluate computes
// such a text with a value stack. Faults are raised (ql::VbError), never caught here.
#include <QString>

namespace ql {

class fhCEval {
public:
    // Raises EvalFault with "<message> : Column <n>" when the text does not scan.
    double Evaluate(const QString& Expression);
    // Tokens each followed by one blank; number tokens are read with the locale's marks. An unknown
    // token raises EvalBadToken, an operator short of operands the stack's Pop error.
    double DoEvaluate(const QString& Postfix);

private:
    // 0 on success, else the 1-based column of the fault; the message goes to lastMessage.
    qint16 InfixToPostfix(const QString& Expression, QString& Postfix);
    static qint16 Precedence(const QString& Operator);

    QString lastMessage;
};

} // namespace ql
