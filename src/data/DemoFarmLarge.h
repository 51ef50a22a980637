#pragma once
// A large demo payroll for trying the program at scale: invented employees with the demo farm's variety
// (occupations, pay intervals, tax codes, KiwiSaver, student loan, fixed deductions), and years of
// pays made by repeating a pay the engine worked out for each employee.
#include "Database.h"
#include <QDate>

namespace ql {

// Adds invented employees (with their addresses in the farm database) to a payroll that holds the demo
// farm, until count employees are on the roster. Returns the ids of the added employees.
QList<qint32> addLargeDemoEmployees(Database& wage, Database& farm, int count);

// Repeats pay wageID (its Wages row and every detail row) times times, each a pay interval of the
// employee later than the one before. Pays of a Wages row whose interval has no days (monthly) move
// by whole months. Runs in one transaction.
void repeatPay(Database& wage, qint32 wageID, int times);

} // namespace ql
