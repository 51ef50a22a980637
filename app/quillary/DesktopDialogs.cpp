#include "DesktopDialogs.h"
#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

namespace {
QMessageBox::Icon iconOf(qint32 kind) {
    switch (kind) {
    case ql::msg::Stop: return QMessageBox::Critical;
    case ql::msg::Warning: return QMessageBox::Warning;
    case ql::msg::Question: return QMessageBox::Question;
    default: return QMessageBox::Information;
    }
}
} // namespace

qint16 DesktopDialogs::messageBox(const QString& message, qint32 buttons, const QString& caption,
                                  const QString& heading, const QString& subHeading, qint32 kind, bool) {
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(caption);
    box.setIcon(iconOf(kind));
    QString head = QStringLiteral("<b>") + heading.toHtmlEscaped() + QStringLiteral("</b>");
    if (!subHeading.isEmpty()) // the access-key escape of the sub-heading shows as one "&"
        head += QStringLiteral("<br>") + QString(subHeading).replace(QStringLiteral("&&"), QStringLiteral("&")).toHtmlEscaped();
    box.setText(head);
    box.setInformativeText(QString(message).replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
    const QList<qint16> answers = ql::buttonAnswers(buttons);
    QList<QPair<QAbstractButton*, qint16>> map;
    for (qint16 a : answers) {
        QAbstractButton* b = box.addButton(ql::answerName(a), a == ql::msg::Cancel || a == ql::msg::No
                                                                 ? QMessageBox::RejectRole
                                                                 : QMessageBox::AcceptRole);
        map.append({b, a});
        if (a == ql::defaultAnswer(buttons))
            box.setDefaultButton(static_cast<QPushButton*>(b));
    }
    box.exec();
    for (const auto& [b, a] : map)
        if (box.clickedButton() == b)
            return a;
    return answers.contains(ql::msg::Cancel) ? ql::msg::Cancel : answers.last();
}

QString DesktopDialogs::inputBox(const QString& prompt, const QString& title, const QString& defaultText, bool masked,
                                 bool) {
    bool ok = false;
    const QString text = QInputDialog::getText(QApplication::activeWindow(), title, prompt,
                                               masked ? QLineEdit::Password : QLineEdit::Normal, defaultText, &ok);
    return ok ? text : QString();
}

void DesktopDialogs::errorDialog(const QString& description, long number, const QString& location,
                                 const QString& title, const QString& programName, qint32, bool) {
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(programName);
    box.setIcon(QMessageBox::Critical);
    box.setText(QStringLiteral("<b>") + (title.isEmpty() ? QStringLiteral("An Error has Occurred") : title).toHtmlEscaped() +
                QStringLiteral("</b>"));
    box.setInformativeText(description + QStringLiteral("\n\nError ") + QString::number(number) +
                           QStringLiteral(" in ") + location.trimmed());
    box.exec();
}
