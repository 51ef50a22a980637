#pragma once
// The suite's address book, a sibling program started with one argument "a,b,c,d".
#include <QString>

namespace ql {

// The address book's executable in ProgramDirectory.
QString addressBookPath();

// Starts the address book, or leaves a running one started by this program alone. A missing
// executable is passed over without a word.
void LaunchAddressBook(qint32 a, qint32 b, bool c, bool d);
// Ends an address book this program started (the shutdown does this) and forgets it.
void CloseAddressBook();
// Whether the address book this program started still runs.
bool addressBookRunning();

} // namespace ql
