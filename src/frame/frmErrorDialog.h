#pragma once
// The error dialog of the uniform error report: what went wrong, its number and where. Modal.
#include <QDialog>

namespace ql {

class frmErrorDialog : public QDialog {
    Q_OBJECT
public:
    frmErrorDialog(const QString& description, long number, const QString& location, const QString& title,
                   const QString& programName, qint32 level, QWidget* parent = nullptr);
};

void runErrorDialog(const QString& description, long number, const QString& location, const QString& title,
                    const QString& programName, qint32 level, QWidget* parent = nullptr);

} // namespace ql
