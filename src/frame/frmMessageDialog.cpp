#include "frmMessageDialog.h"
#include "Dialogs.h"
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace ql {
namespace {

QStyle::StandardPixmap kindIcon(qint32 kind) {
    switch (kind) {
    case msg::Stop:
        return QStyle::SP_MessageBoxCritical;
    case msg::Warning:
        return QStyle::SP_MessageBoxWarning;
    case msg::Question:
        return QStyle::SP_MessageBoxQuestion;
    default:
        return QStyle::SP_MessageBoxInformation;
    }
}

// The answer the window's close button gives: Cancel where the set has one, else its last button.
qint16 closeAnswer(qint32 buttons) {
    const QList<qint16> answers = buttonAnswers(buttons);
    return answers.contains(msg::Cancel) ? msg::Cancel : answers.last();
}

QLabel* textLabel(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

} // namespace

QString frmMessageDialog::shownAccessKeyText(const QString& text) {
    QString shown;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) == QLatin1Char('&')) {
            if (i + 1 < text.size() && text.at(i + 1) == QLatin1Char('&')) {
                shown += QLatin1Char('&');
                ++i;
            }
            continue;
        }
        shown += text.at(i);
    }
    return shown;
}

frmMessageDialog::frmMessageDialog(const QString& message, qint32 buttons, const QString& caption,
                                   const QString& heading, const QString& subHeading, qint32 kind,
                                   QWidget* parent)
    : QDialog(parent), m_answer(closeAnswer(buttons)) {
    setWindowTitle(caption);
    setModal(true);

    auto* icon = new QLabel(this);
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(kindIcon(kind), nullptr, this).pixmap(size, size));
    icon->setAlignment(Qt::AlignTop);

    auto* text = new QVBoxLayout;
    auto* head = textLabel(heading, this);
    QFont bold = head->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.15);
    head->setFont(bold);
    text->addWidget(head);
    if (!subHeading.isEmpty()) text->addWidget(textLabel(shownAccessKeyText(subHeading), this));
    text->addSpacing(8);
    text->addWidget(textLabel(message, this));

    auto* top = new QHBoxLayout;
    top->addWidget(icon);
    top->addSpacing(12);
    top->addLayout(text, 1);

    auto* row = new QHBoxLayout;
    row->addStretch(1);
    const QList<qint16> answers = buttonAnswers(buttons);
    const qint16 preferred = defaultAnswer(buttons);
    for (qint16 a : answers) {
        auto* b = new QPushButton(answerButtonText(a), this);
        b->setObjectName(QStringLiteral("answer") + answerName(a));
        b->setAccessibleName(answerName(a));
        b->setAutoDefault(true);
        if (a == preferred) {
            b->setDefault(true);
            b->setFocus();
        }
        connect(b, &QPushButton::clicked, this, [this, a] {
            m_answer = a;
            accept();
        });
        row->addWidget(b);
    }

    auto* all = new QVBoxLayout(this);
    all->addLayout(top);
    all->addSpacing(12);
    all->addLayout(row);
    setMinimumWidth(360);
}

qint16 runMessageDialog(const QString& message, qint32 buttons, const QString& caption,
                        const QString& heading, const QString& subHeading, qint32 kind, QWidget* parent) {
    frmMessageDialog d(message, buttons, caption, heading, subHeading, kind,
                       parent ? parent : QApplication::activeWindow());
    d.exec();
    return d.answer();
}

} // namespace ql
