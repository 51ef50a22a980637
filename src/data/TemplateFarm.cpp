// Template rows of a new farm database: empty employer details, one default tax entity with its
// banks, a small chart of accounts with the four wage accounts, and the tax periods.
#include "Schema.h"
#include "TemplateRows.h"

namespace ql {

void addFarmTemplate(Database& db) {
    insertRows(db, QStringLiteral("Farm Details"),
               {QStringLiteral("Farm Name"), QStringLiteral("Address1"), QStringLiteral("Address2"),
                QStringLiteral("Address3"), QStringLiteral("GST Reg Number"),
                QStringLiteral("Current Season")},
               {{QString(""), QString(""), QString(""), QString(""), QString(""), QString("")}});
    insertRows(db, QStringLiteral("Partners"),
               {QStringLiteral("PartnerID"), QStringLiteral("PartnerName"), QStringLiteral("PartnerGSTNum"),
                QStringLiteral("PartnerDefault"), QStringLiteral("PartnerTaxRate")},
               {{1, QStringLiteral("Main Entity"), QString(""), 1, 0}});
    insertRows(db, QStringLiteral("Banks"),
               {QStringLiteral("BanksID"), QStringLiteral("PartnerID"), QStringLiteral("AccountType"),
                QStringLiteral("BankName")},
               {
                   {1, 1, 1, QStringLiteral("Farm Cheque Account")},
                   {2, 1, 2, QStringLiteral("Farm Savings Account")},
               });
    // Account names carry the suite's ":X" marker of the account class.
    insertRows(db, QStringLiteral("Secondary Codes"),
               {QStringLiteral("Secondary Codes ID"), QStringLiteral("Cached Name")},
               {
                   {101001, QStringLiteral("Milk Sales:I")},
                   {101002, QStringLiteral("Livestock Sales:I")},
                   {201001, QStringLiteral("Animal Health:E")},
                   {201002, QStringLiteral("Fertiliser:E")},
                   {201003, QStringLiteral("Feed and Grazing:E")},
                   {201004, QStringLiteral("Repairs and Maintenance:E")},
                   {201005, QStringLiteral("Vehicle Expenses:E")},
                   {301001, QStringLiteral("Plant and Machinery:A")},
                   {401001, QStringLiteral("Wages:X")},
                   {401002, QStringLiteral("PAYE Holding:X")},
                   {401005, QStringLiteral("PAYE Payment:X")},
                   {401008, QStringLiteral("Wage Adjustments:X")},
               });
    // The PAYE settings row stands with no accounts chosen, so that a first commit that posts sends the
    // user to the tax settings; a missing row would let it post on the settings' defaults unasked.
    db.execute(QStringLiteral("INSERT INTO PayeInfo (PAYEAccount) VALUES (NULL)"));
    insertRows(db, QStringLiteral("Tax Periods"), {QStringLiteral("Months"), QStringLiteral("Prompt")},
               {
                   {1, QStringLiteral("Monthly")},
                   {2, QStringLiteral("Two-monthly")},
                   {6, QStringLiteral("Six-monthly")},
               });
}

} // namespace ql
