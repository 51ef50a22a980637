#pragma once
// The employer as a person sets it up: the farm's name, address and numbers (Farm Details of the farm
// database), the payroll contact and paying account (the payday settings of the payroll database)
// and how often PAYE is filed (PayeInfo). Every screen that reads those tables sees the change.
#include "data/Database.h"
#include <QString>

namespace ql {

struct EmployerDetails {
    QString name, address, city, postcode;
    QString ird; // the employer's IRD number
    QString gst; // the GST number; empty when the farm isn't registered apart
    QString contactName, contactPhone, contactEmail;
    QString account;  // the account the pays leave from
    int payeMonths = 1; // PAYE filed every month (1) or every two months (2)...
};

EmployerDetails LoadEmployerDetails(Database& wage, Database& farm);
// What is wrong, one problem a line; empty when nothing is.
QString EmployerDetailsProblem(const EmployerDetails& details);
// Refuses (VbError 5 with the problems) details with a problem, writing nothing.
void SaveEmployerDetails(Database& wage, Database& farm, const EmployerDetails& details);
// True once the farm has a name and an IRD number: the set-up can go on to the employees.
bool EmployerIsSetUp(Database& wage, Database& farm);

} // namespace ql
