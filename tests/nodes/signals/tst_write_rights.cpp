#include "nodes/ProjectFixture.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/BasicStation.h"

#include <QtTest>

using namespace Nodes;

class TestWriteRights : public QObject
{
    Q_OBJECT

private slots:
    void usersOfProjectGuardItsStations_data();
    void usersOfProjectGuardItsStations();
};

void TestWriteRights::usersOfProjectGuardItsStations_data()
{
    QTest::addColumn<bool>("hasOwnUsers"); // the station, beside those of the project
    QTest::addColumn<bool>("isLoggedIn");  // there
    QTest::addColumn<bool>("isLoggedInAtStation");
    QTest::addColumn<int>("answer");
    const int denied = Result::AccessDenied;
    const int written = Result::Success;
    QTest::newRow("nobody") << false << false << false << denied;
    QTest::newRow("user of the project") << false << true << false << written;
    QTest::newRow("the station's own count first") << true << true << false << denied;
    QTest::newRow("user of the station") << true << false << true << written;
}

void TestWriteRights::usersOfProjectGuardItsStations()
{
    QFETCH(bool, hasOwnUsers);
    QFETCH(bool, isLoggedIn);
    QFETCH(bool, isLoggedInAtStation);
    ProjectFixture f;
    ConfigNode *station = f.add("station", f.root());
    const auto addUsers = [&f](ConfigNode *owner, bool logsIn) {
        auto *users = static_cast<systemAuthentication *>(f.add("authentication", owner));
        ConfigNode *role = f.add("role", users);
        ConfigNode *user = f.add("user", users);
        QVERIFY(f.add("grant", role)->SetPropertyText("privileges", "write"));
        QVERIFY(user->SetPropertyText("roles", std::to_string(role->GetId())));
        QVERIFY(user->SetPropertyText("passwordless", "true"));
        if (logsIn)
            QVERIFY(users->Authenticate(user));
    };
    addUsers(f.root(), isLoggedIn);
    if (hasOwnUsers)
        addUsers(station, isLoggedInAtStation);
    auto *signal = static_cast<BasicSignal *>(f.add("memorySignal", station));
    QVERIFY(signal->SetPropertyText("writable", "true"));
    QTEST(int(signal->WriteValue(5.0).GetType()), "answer");
}

QTEST_APPLESS_MAIN(TestWriteRights)
#include "tst_write_rights.moc"
