// Raising the address book: a running sibling is asked to come forward on the bus, never started.
#include "SessionBus.h"
#include "TestEnv.h"
#include "frame/Siblings.h"
#include <QDBusConnection>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <QVariantMap>

namespace {

// The address book as the bus sees it: it counts the requests to come forward.
class FakeAddressBook : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
public:
    int activations = 0;
public slots:
    void Activate(const QVariantMap&) { ++activations; }
};

bool waitUntil(const std::function<bool()>& done) {
    QElapsedTimer t;
    t.start();
    while (!done() && t.elapsed() < 10000) {
        QEventLoop loop;
        QTimer::singleShot(20, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return done();
}

} // namespace

TEST(Siblings, ARunningAddressBookIsAskedToComeForward) {
    qltest::PrivateBus::own();
    if (!QDBusConnection::sessionBus().isConnected())
        GTEST_SKIP() << "no session bus and no dbus-daemon to start one";
    EXPECT_EQ(ql::siblingService(QStringLiteral("Address Book")), QStringLiteral("nz.fernhold.AddressBook"));
    // Nobody of that name on the bus, or no window: nothing goes out.
    EXPECT_FALSE(ql::ActivateApp(QStringLiteral("Address Book"), 4242));

    QDBusConnection book =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("fake-address-book"));
    ASSERT_TRUE(book.isConnected());
    FakeAddressBook fake;
    ASSERT_TRUE(book.registerObject(ql::siblingPath(QStringLiteral("Address Book")), &fake,
                                    QDBusConnection::ExportAllSlots));
    ASSERT_TRUE(book.registerService(ql::siblingService(QStringLiteral("Address Book"))));

    EXPECT_FALSE(ql::ActivateApp(QStringLiteral("Address Book"), 0));
    EXPECT_TRUE(ql::ActivateApp(QStringLiteral("Address Book"), 4242));
    EXPECT_TRUE(waitUntil([&] { return fake.activations == 1; }));
    // Another program's name is not the address book.
    EXPECT_FALSE(ql::ActivateApp(QStringLiteral("Livestock"), 4242));
    book.unregisterService(ql::siblingService(QStringLiteral("Address Book")));
    QDBusConnection::disconnectFromBus(QStringLiteral("fake-address-book"));
}

#include "test_siblings.moc"
