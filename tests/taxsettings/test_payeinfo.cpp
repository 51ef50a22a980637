// The PAYE settings: the row's access, the help texts, and the dialog's model.
#include "PayrollRows.h"
#include "TestEnv.h"
#include "data/PayeInfo.h"
#include "frame/Settings.h"
#include "runtime/Convert.h"
#include "runtime/DateFns.h"
#include "taxsettings/PayeHelp.h"
#include "taxsettings/PayeInfoForm.h"
#include <gtest/gtest.h>

using namespace ql;

namespace {

class PayeInfoTest : public ::testing::Test {
protected:
    qltest::TempDocuments docs;
    qltest::PayrollRows rows;

    QVariant stored(const QString& column) {
        return rows.farm.scalar(QStringLiteral("SELECT %1 FROM PayeInfo").arg(column));
    }
    int rowCount() { return rows.farm.scalar(QStringLiteral("SELECT count(*) FROM PayeInfo")).toInt(); }
    int messages() const {
        int n = 0;
        for (const DialogCall& c : rows.dialogs.calls)
            n += c.kind == DialogCall::Message;
        return n;
    }
    int indexOfData(const ComboModel& combo, qint32 data) {
        for (int i = 0; i < combo.count(); ++i)
            if (combo.itemData(i) == data) return i;
        return -1;
    }
    void addTaxOffice() {
        rows.farm.execute(QStringLiteral(
            "INSERT INTO Addresses (AddressID, BusinessFlag, BusName) VALUES (40, 1, 'Inland Revenue')"));
    }
};

TEST_F(PayeInfoTest, LoadGivesTheDefaultForAnEmptyColumnOrNoRow) {
    EXPECT_EQ(LoadPayeInfo(rows.farm, QStringLiteral("WageAccount"), 401001).toInt(), 401001);
    rows.farm.execute(QStringLiteral("DELETE FROM PayeInfo"));
    EXPECT_EQ(LoadPayeInfo(rows.farm, QStringLiteral("WageAccount"), 7).toInt(), 7);
    rows.farm.execute(QStringLiteral("INSERT INTO PayeInfo (WageAccount, PAYENonCash) VALUES (201001, 0)"));
    EXPECT_EQ(LoadPayeInfo(rows.farm, QStringLiteral("WageAccount"), 7).toInt(), 201001);
    // A stored false is a value, not an empty one.
    EXPECT_EQ(LoadPayeInfo(rows.farm, QStringLiteral("PAYENonCash"), true).toBool(), false);
    EXPECT_TRUE(rows.dialogs.calls.isEmpty());
}

TEST_F(PayeInfoTest, LoadOfAMissingColumnShowsTheReportAndGivesTheDefault) {
    EXPECT_EQ(LoadPayeInfo(rows.farm, QStringLiteral("NoSuchColumn"), 12).toInt(), 12);
    ASSERT_EQ(rows.dialogs.calls.size(), 1);
    const DialogCall& c = rows.dialogs.calls.at(0);
    EXPECT_TRUE(c.message.startsWith(QStringLiteral("Description - ")));
    EXPECT_TRUE(c.message.endsWith(QStringLiteral(") was generated in commoncode.payeinfo")));
    EXPECT_EQ(c.heading, QStringLiteral("An Error has Occurred"));
    EXPECT_EQ(c.caption, QStringLiteral("Fernhold Error"));
    EXPECT_EQ(c.kindOrLevel, 6);
    EXPECT_FALSE(c.flag);
}

TEST_F(PayeInfoTest, SaveConvertsByTheColumnTypeAndAddsTheRow) {
    rows.farm.execute(QStringLiteral("DELETE FROM PayeInfo"));
    SavePayeInfo(rows.farm, QStringLiteral("WageAccount"), QStringLiteral("201002"));
    EXPECT_EQ(rowCount(), 1);
    EXPECT_EQ(stored(QStringLiteral("WageAccount")).toLongLong(), 201002);
    SavePayeInfo(rows.farm, QStringLiteral("PAYEStart"), QStringLiteral("1/04/2026"));
    EXPECT_EQ(stored(QStringLiteral("PAYEStart")).toString(), QStringLiteral("2026-04-01"));
    SavePayeInfo(rows.farm, QStringLiteral("PAYENonCash"), QStringLiteral("True"));
    EXPECT_EQ(stored(QStringLiteral("PAYENonCash")).toInt(), 1);
    EXPECT_EQ(rowCount(), 1);
    EXPECT_TRUE(rows.dialogs.calls.isEmpty());
}

TEST_F(PayeInfoTest, SaveOfABadValueShowsTheReportAndKeepsTheOldValue) {
    SavePayeInfo(rows.farm, QStringLiteral("WageAccount"), 401001);
    SavePayeInfo(rows.farm, QStringLiteral("WageAccount"), QStringLiteral("abc"));
    EXPECT_EQ(stored(QStringLiteral("WageAccount")).toLongLong(), 401001);
    ASSERT_EQ(rows.dialogs.calls.size(), 1);
    EXPECT_TRUE(rows.dialogs.calls.at(0).message.endsWith(
        QStringLiteral("was generated in commoncode.savepayeinfo")));
}

TEST(PayeHelp, AccountNameOnlyCutsTheMarkerWithTheCharacterBeforeIt) {
    EXPECT_EQ(AccountNameOnly(QStringLiteral("Wages:X")), QStringLiteral("Wage"));
    EXPECT_EQ(AccountNameOnly(QStringLiteral("  PAYE Holding:XY ")), QStringLiteral("PAYE Holdin"));
    EXPECT_EQ(AccountNameOnly(QStringLiteral("Wages")), QStringLiteral("Wages"));
    EXPECT_EQ(AccountNameOnly(QStringLiteral("A:B:CDE")),
              QStringLiteral("A:B:CDE")); // no colon in the last three
    EXPECT_EQ(AccountNameOnly(QString()), QString());
}

TEST(PayeHelp, TextsForManualAndElectronicPayment) {
    const QString crlf = QStringLiteral("\r\n");
    const PayeHelpTexts manual =
        BuildPayeHelp(QStringLiteral("PAYE"), QStringLiteral("Wages:X"), QStringLiteral("PAYE Holding:X"),
                      QStringLiteral("PAYE Payment:X"), false);
    EXPECT_EQ(manual.taxationInfo,
              QStringLiteral("To enter WAGES manually in either the Cashbook or e-Payments ") + crlf + crlf +
                  QStringLiteral("Make a 'withdrawal' entry for the Net Wage amount and split it:") + crlf +
                  QStringLiteral("    - Taxable amount debited into Wage") + crlf +
                  QStringLiteral("    - PAYE amount credited into PAYE Holdin") + crlf + crlf +
                  QStringLiteral("Use the Quillary to automatically generate above entries") + crlf + crlf +
                  QStringLiteral("PAYE PAYMENTS") + crlf +
                  QStringLiteral("Use a Cashbook 'Withdrawal' to debit PAYE payments into PAYE Paymen."));
    EXPECT_EQ(manual.payeNoncash,
              QStringLiteral("Tick to pay PAYE electronically") + crlf + crlf +
                  QStringLiteral("NB Wage payments may be set to cash or electronic for each "
                                 "employee in the Address Book"));
    const PayeHelpTexts electronic =
        BuildPayeHelp(QStringLiteral("PAYE"), QStringLiteral("Wages:X"), QStringLiteral("PAYE Holding:X"),
                      QStringLiteral("PAYE Payment:X"), true);
    EXPECT_TRUE(electronic.taxationInfo.contains(QStringLiteral(" Make two transactions") + crlf +
                                                 QStringLiteral("1.Make a 'withdrawal' entry")));
    EXPECT_TRUE(electronic.taxationInfo.contains(
        QStringLiteral("2.  An ePayment 'Payable' entry of the PAYE amount into PAYE Paymen") + crlf));
    EXPECT_TRUE(electronic.taxationInfo.endsWith(QStringLiteral("PAYE PAYMENTS") + crlf +
                                                 QStringLiteral("Use ePayments to process PAYE.")));
    EXPECT_TRUE(
        electronic.payeNoncash.startsWith(QStringLiteral("Untick to pay PAYE manually") + crlf + crlf));
    EXPECT_EQ(GetPayePaymentsHelp(QStringLiteral("PAYE"), QStringLiteral("X"), true, QStringLiteral("IRD")),
              QStringLiteral("PAYMENTS to IRD") + crlf + QStringLiteral("Use ePayments to process PAYE."));
}

TEST_F(PayeInfoTest, DialogShowsTheDefaultsAndClosingCreatesTheRow) {
    rows.farm.execute(QStringLiteral("DELETE FROM PayeInfo"));
    addTaxOffice();
    {
        PayeInfoForm form;
        form.Form_Load();
        EXPECT_EQ(form.cmbHolding1.itemData(form.cmbHolding1.selectedIndex()), 401002);
        EXPECT_EQ(form.cmbWage1.itemData(form.cmbWage1.selectedIndex()), 401001);
        EXPECT_EQ(form.cmbPayment.itemData(form.cmbPayment.selectedIndex()), 401005);
        EXPECT_EQ(form.cmbAdjust.itemData(form.cmbAdjust.selectedIndex()), 401008);
        EXPECT_EQ(form.cmbFreq1(0).itemData(form.cmbFreq1(0).selectedIndex()), 1);
        EXPECT_EQ(form.cmbTaxOffice.count(), 1);
        EXPECT_EQ(form.cmbTaxOffice.selectedIndex(), -1); // PAYEAddressID defaults to 0
        EXPECT_FALSE(form.chkNonCash);
        EXPECT_EQ(form.captions.value(QStringLiteral("lblHolding")), QStringLiteral("PAYE Heading"));
        EXPECT_EQ(form.captions.value(QStringLiteral("lblTaxOffice")), QStringLiteral("Pay PAYE to:"));
        EXPECT_EQ(form.captions.value(QStringLiteral("lblpayment")), QStringLiteral("PAYE Payment Heading"));
        EXPECT_EQ(form.captions.value(QStringLiteral("lblPAYE1")), QStringLiteral("PAYE"));
        EXPECT_EQ(form.txt_GSTDate2, QStringLiteral("1/07/1995")); // the farm details' financial year
        EXPECT_TRUE(form.lbltaxationInfo.contains(QStringLiteral("debited into Wage\r\n")));
        EXPECT_TRUE(form.cmdPartners_Click(0));
        EXPECT_TRUE(form.result.isEmpty());
        form.Form_Unload();
    }
    EXPECT_EQ(rowCount(), 1);
    EXPECT_EQ(stored(QStringLiteral("PAYEAccount")).toInt(), 401002);
    EXPECT_EQ(stored(QStringLiteral("WageAccount")).toInt(), 401001);
    EXPECT_EQ(stored(QStringLiteral("PaymentAccount")).toInt(), 401005);
    EXPECT_EQ(stored(QStringLiteral("AdjustAccount")).toInt(), 401008);
    EXPECT_EQ(stored(QStringLiteral("PAYEFreq")).toInt(), 1);
    EXPECT_EQ(stored(QStringLiteral("PAYEStart")).toString(), QStringLiteral("1995-07-01"));
    // The save stops at the income tax frequency: nothing after it is stored.
    EXPECT_TRUE(IsNull(stored(QStringLiteral("TaxFreq"))));
    EXPECT_TRUE(IsNull(stored(QStringLiteral("PAYEAddressID"))));
}

TEST_F(PayeInfoTest, NonCashAndTaxOfficeShowButAreNotStored) {
    addTaxOffice();
    PayeInfoForm form;
    form.Form_Load();
    const QString before = form.lbltaxationInfo;
    form.chkNonCash = true;
    form.chkNonCash_Click();
    EXPECT_NE(form.lbltaxationInfo, before);
    EXPECT_TRUE(form.lblPayeNoncash.startsWith(QStringLiteral("Untick to pay PAYE manually")));
    form.cmbTaxOffice.setSelectedIndex(0);
    form.cmbTaxOffice_Click();
    form.cmdPartners_Click(0);
    form.Form_Unload();
    EXPECT_EQ(stored(QStringLiteral("PAYENonCash")).toInt(), 0);
    EXPECT_TRUE(IsNull(stored(QStringLiteral("PAYEAddressID"))));
    PayeInfoForm again;
    again.Form_Load();
    EXPECT_FALSE(again.chkNonCash); // as stored, not as left
    again.Form_Unload();
}

TEST_F(PayeInfoTest, TheFrequencyListHasOnlyIndexZero) {
    PayeInfoForm form;
    EXPECT_NO_THROW(form.cmbFreq1(0));
    try {
        form.cmbFreq1(1);
        FAIL() << "index 1 exists";
    } catch (const VbError& e) {
        EXPECT_EQ(e.number(), 340);
    }
}

TEST_F(PayeInfoTest, AdjustmentsRefuseTheWageAccount) {
    PayeInfoForm form;
    form.Form_Load();
    const int before = form.cmbAdjust.selectedIndex();
    form.cmbAdjust_GotFocus();
    form.cmbAdjust.setSelectedIndex(form.cmbWage1.selectedIndex());
    form.cmbAdjust_Click();
    EXPECT_EQ(form.cmbAdjust.selectedIndex(), before);
    ASSERT_EQ(messages(), 1);
    const DialogCall& c = rows.dialogs.calls.last();
    EXPECT_EQ(
        c.message,
        QStringLiteral("Adjustments should not be put into the same account as the taxable Wage amount"));
    EXPECT_EQ(c.heading, QStringLiteral("Invalid Entry"));
    EXPECT_EQ(c.kindOrLevel, 3);
    // Another account is taken without a word.
    form.cmbAdjust_GotFocus();
    form.cmbAdjust.setSelectedIndex(indexOfData(form.cmbAdjust, 201001));
    form.cmbAdjust_Click();
    EXPECT_EQ(form.cmbAdjust.itemData(form.cmbAdjust.selectedIndex()), 201001);
    EXPECT_EQ(messages(), 1);
    form.Form_Unload();
    EXPECT_EQ(stored(QStringLiteral("AdjustAccount")).toInt(), 201001);
}

TEST_F(PayeInfoTest, WageEqualToAdjustmentsLeavesAdjustmentsUnwritten) {
    SavePayeInfo(rows.farm, QStringLiteral("AdjustAccount"), 401008);
    PayeInfoForm form;
    form.Form_Load();
    form.cmbWage1.setSelectedIndex(form.cmbAdjust.selectedIndex()); // not refused at this point
    form.cmbWage1_Click();
    form.cmbAdjust.setSelectedIndex(indexOfData(form.cmbAdjust, 201002));
    // The adjustment list's click would refuse the wage account; here it is set with no click.
    form.cmbAdjust.setSelectedIndex(form.cmbWage1.selectedIndex());
    form.cmdPartners_Click(0);
    form.Form_Unload();
    EXPECT_EQ(rows.dialogs.calls.size(), 0);
    EXPECT_EQ(stored(QStringLiteral("WageAccount")).toInt(), 401008);
    EXPECT_EQ(stored(QStringLiteral("AdjustAccount")).toInt(), 401008); // unwritten: the old value
}

TEST_F(PayeInfoTest, BadStartDateKeepsTheOldOneAndSavesTheRest) {
    SavePayeInfo(rows.farm, QStringLiteral("PAYEStart"), QDate(2026, 4, 1));
    PayeInfoForm form;
    form.Form_Load();
    EXPECT_EQ(form.txt_GSTDate2, QStringLiteral("1/04/2026"));
    form.txt_GSTDate2 = QStringLiteral("not a date");
    form.cmbWage1.setSelectedIndex(indexOfData(form.cmbWage1, 201005));
    form.Form_Unload();
    EXPECT_EQ(stored(QStringLiteral("PAYEStart")).toString(), QStringLiteral("2026-04-01"));
    EXPECT_EQ(stored(QStringLiteral("WageAccount")).toInt(), 201005);
}

TEST_F(PayeInfoTest, CancelSavesAllTheSameAndSaysCancelled) {
    PayeInfoForm form;
    form.Form_Load();
    form.cmbPayment.setSelectedIndex(indexOfData(form.cmbPayment, 201004));
    EXPECT_TRUE(form.cmdPartners_Click(2));
    EXPECT_EQ(form.result, QStringLiteral("Cancelled"));
    ASSERT_EQ(rows.dialogs.calls.size(), 1);
    EXPECT_EQ(rows.dialogs.calls.at(0).message, QStringLiteral("Turn 'Update Cashbook' off to continue"));
    EXPECT_EQ(rows.dialogs.calls.at(0).heading, QStringLiteral("Cancel Selected"));
    EXPECT_EQ(rows.dialogs.calls.at(0).kindOrLevel, 6);
    form.Form_Unload();
    EXPECT_EQ(stored(QStringLiteral("PaymentAccount")).toInt(), 201004);
    // Any other button does nothing, but empties the result first.
    PayeInfoForm other;
    other.result = QStringLiteral("x");
    EXPECT_FALSE(other.cmdPartners_Click(1));
    EXPECT_TRUE(other.result.isEmpty());
}

TEST_F(PayeInfoTest, NoHoldingAccountSavesNothing) {
    rows.farm.execute(QStringLiteral("DELETE FROM PayeInfo"));
    PayeInfoForm form;
    form.Form_Load();
    form.cmbHolding1.setSelectedIndex(-1);
    form.cmbWage1.setSelectedIndex(indexOfData(form.cmbWage1, 201005));
    form.Form_Unload();
    EXPECT_EQ(rowCount(), 0);
}

TEST_F(PayeInfoTest, AccountOrderFollowsTheCodeOrderSetting) {
    PayeInfoForm byCode;
    byCode.Form_Load();
    EXPECT_EQ(byCode.cmbWage1.itemData(0), 101001);
    byCode.Form_Unload();
    WriteSetting(QStringLiteral("OPTIONS"), QStringLiteral("CodeOrder"), QStringLiteral("False"));
    PayeInfoForm byName;
    byName.Form_Load();
    EXPECT_EQ(byName.cmbWage1.text(0), QStringLiteral("Animal Health:E"));
    byName.Form_Unload();
}

} // namespace
