#pragma once
// PHWage and qlConnector on the session bus.
//   service   nz.fernhold.Quillary
//   /qlConnector  interface nz.fernhold.Quillary.qlConnector: Connect() -> o, Release(), property Quillary
//   /PHWage       interface nz.fernhold.Quillary.PHWage: StartMenu (property), ReadySetGo(s),
//                 CheckEmployees() -> s, Finish(), GotMessage(i), signal MenuSelect(s, i, i)
#include <QString>

namespace ql {

inline const QString ServiceName = QStringLiteral("nz.fernhold.Quillary");
inline const QString ConnectorPath = QStringLiteral("/qlConnector");
inline const QString WageObjectPath = QStringLiteral("/PHWage");

// Registers the service and its objects on the session bus; false (with the reason) when no bus.
bool startObjectServer(QString* reason = nullptr);
void stopObjectServer();
// How many clients hold a connector through the bus.
int busClientCount();

class PHWage;
// Sends the object's MenuSelect on to the bus as the signal of /PHWage; nothing without the server.
void relayMenuSelect(PHWage* object);

} // namespace ql
