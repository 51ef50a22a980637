#include "frmErrorDialog.h"
#include <QApplication>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>

namespace ql {
namespace {

QLabel* plain(const QString& text, QWidget* parent) {
    auto* l = new QLabel(text, parent);
    l->setTextFormat(Qt::PlainText);
    l->setWordWrap(true);
    l->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return l;
}

} // namespace

frmErrorDialog::frmErrorDialog(const QString& description, long number, const QString& location,
                               const QString& title, const QString& programName, qint32 /*level*/,
                               QWidget* parent)
    : QDialog(parent) {
    setWindowTitle(programName + QStringLiteral(" Error"));
    setModal(true);

    auto* icon = new QLabel(this);
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxCritical, nullptr, this).pixmap(size, size));
    icon->setAlignment(Qt::AlignTop);

    auto* head = plain(title.isEmpty() ? QStringLiteral("An Error has Occurred") : title, this);
    QFont bold = head->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.15);
    head->setFont(bold);

    auto* details = new QFormLayout;
    details->addRow(QStringLiteral("Description:"), plain(description, this));
    details->addRow(QStringLiteral("Error number:"), plain(QString::number(number), this));
    details->addRow(QStringLiteral("Location:"), plain(location.trimmed(), this));

    auto* text = new QVBoxLayout;
    text->addWidget(head);
    text->addSpacing(8);
    text->addLayout(details);

    auto* top = new QHBoxLayout;
    top->addWidget(icon);
    top->addSpacing(12);
    top->addLayout(text, 1);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto* all = new QVBoxLayout(this);
    all->addLayout(top);
    all->addWidget(buttons);
    setMinimumWidth(400);
}

void runErrorDialog(const QString& description, long number, const QString& location, const QString& title,
                    const QString& programName, qint32 level, QWidget* parent) {
    frmErrorDialog d(description, number, location, title, programName, level,
                     parent ? parent : QApplication::activeWindow());
    d.exec();
}

} // namespace ql
