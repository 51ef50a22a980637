#pragma once
// The minimum wage check and holiday pay as you go of the shown pay on the screen: the figures of each,
// and "Add Top-up" and "Add 8%", which put the line on the pay and recalculate it.
#include <QDialog>

class QLabel;
class QPushButton;

namespace ql {

class Database;

class PayChecksDialog : public QDialog {
    Q_OBJECT
public:
    // The pay must exist (see ShowPayChecks).
    PayChecksDialog(Database& wage, qint32 wageID, QWidget* parent = nullptr);
    QString minimumWageText() const;
    QString payAsYouGoText() const;
    // Puts the top-up, or the 8%, on the pay; false when refused (the message was shown).
    bool addTopUp();
    bool addPayAsYouGo();

private:
    void showChecks();
    template <class F> bool putOnPay(F&& put);

    Database& m_wage;
    qint32 m_wageID;
    QLabel* m_minimum = nullptr;
    QLabel* m_payg = nullptr;
    QPushButton* m_addTopUp = nullptr;
    QPushButton* m_addPayg = nullptr;
};

// Opens the checks of the pay modally; no pay is refused with a message.
void ShowPayChecks(Database& wage, qint32 wageID, QWidget* owner);

} // namespace ql
