#pragma once
// The suite's sibling programs on the desktop. A sibling named "Address Book" answers on the session
// bus as nz.fernhold.AddressBook, object /nz/fernhold/AddressBook, with the desktop's standard
// interface org.freedesktop.Application; raising it is its Activate call.
#include <QString>

namespace ql {

// The bus name and object path of a sibling program by its name, blanks left out.
QString siblingService(const QString& name);
QString siblingPath(const QString& name);

// Brings a running sibling forward without starting it: nothing when window is 0 or no program of that
// name is on the bus. True when the request went out.
bool ActivateApp(const QString& name, qint64 window);

} // namespace ql
