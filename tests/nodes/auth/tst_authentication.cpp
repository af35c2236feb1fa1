#include "nodes/ManualClock.h"
#include "nodes/ProjectFixture.h"
#include "nodes/auth/AccessCheck.h"
#include "nodes/auth/PrivilegeSet.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/journal/EventJournal.h"
#include "nodes/model/ValidationResults.h"
#include "nodes/signals/BasicSignal.h"
#include "nodes/system/systemCore.h"

#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <thread>

using namespace Nodes;

namespace {

/// A plant of two areas, one user with one role, and a role for guests.
struct UsersFixture : ProjectFixture
{
    UsersFixture()
        : area(add("folder", root(), "Area")),
          sub(add("folder", area, "Sub")),
          tag(add("memorySignal", sub, "Tag")),
          other(add("memorySignal", root(), "Other")),
          users(static_cast<systemAuthentication *>(add("authentication", add("station", root())))),
          role(add("role", users)),
          guests(add("role", users)),
          user(addUser("anna"))
    {
        set(user, "roles", idOf(role));
        set(user, "passwordless", "true");
        set(users, "guestRole", idOf(guests));
    }
    ConfigNode *addUser(const char *name) { return add("user", users, name); }
    static std::string idOf(const ConfigNode *node) { return std::to_string(node->GetId()); }
    static void set(ConfigNode *node, const char *key, const std::string &text)
    {
        const Result result = node->SetPropertyText(key, text);
        QVERIFY2(result, result.ToString().c_str());
    }
    ConfigNode *grant(ConfigNode *owner, const char *mode, const char *privileges,
                      const ConfigNode *scope)
    {
        ConfigNode *rule = add("grant", owner);
        read(rule, "mode", mode);
        set(rule, "privileges", privileges);
        set(rule, "scope", scope ? idOf(scope) : "");
        return rule;
    }
    /// As the reader of project files does: what does not read is kept aside.
    static void read(ConfigNode *node, const char *key, const char *text)
    {
        if (!node->SetPropertyText(key, text))
            node->AddForeignAttribute(key, text);
    }

    ConfigNode *area, *sub, *tag, *other;
    systemAuthentication *users;
    ConfigNode *role, *guests, *user;
};

} // namespace

class TestAuthentication : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_hash = systemAuthentication::HashPassword("секрет"); }
    void access_data();
    void access();
    void noUsers();
    void sessions();
    void followsChanges();
    void otherThreads();
    void passwords_data();
    void passwords();
    void slowedDown();
    void journalled();
    void writes_data();
    void writes();
    void withoutPassword_data();
    void withoutPassword();
    void validation_data();
    void validation();

private:
    std::string m_hash;
};

void TestAuthentication::access_data()
{
    QTest::addColumn<QString>("rules"); // mode:privileges:scope, parted by ';'
    QTest::addColumn<int>("onTag");
    QTest::addColumn<int>("onOther");
    const auto row = [](const char *name, const char *rules, int onTag, int onOther) {
        QTest::newRow(name) << QString(rules) << onTag << onOther;
    };
    row("no rule", "", PrivModeNoRule, PrivModeNoRule);
    row("whole project", "allow:write:", PrivModeGranted, PrivModeGranted);
    row("all privileges", "allow:all:", PrivModeGranted, PrivModeGranted);
    row("another privilege", "allow:view open:", PrivModeNoRule, PrivModeNoRule);
    row("one area", "allow:view write:area", PrivModeGranted, PrivModeNoRule);
    row("the node itself", "allow:write:tag", PrivModeGranted, PrivModeNoRule);
    row("nearer denial wins", "allow:write:;deny:write:sub", PrivModeDenied, PrivModeGranted);
    row("nearer grant wins", "deny:all:area;allow:write:sub", PrivModeGranted, PrivModeNoRule);
    row("equal distance: denial wins", "allow:write:sub;deny:write:sub", PrivModeDenied,
        PrivModeNoRule);
    row("denial of another privilege", "allow:write:area;deny:view:sub", PrivModeGranted,
        PrivModeNoRule);
    row("the root is nearer than the project", "deny:write:;allow:write:root", PrivModeGranted,
        PrivModeGranted);
    row("slip in a grant grants the rest", "allow:wirte view:", PrivModeNoRule, PrivModeNoRule);
    row("slip in the mode denies", "allow:write:;dney:write:area", PrivModeDenied, PrivModeGranted);
    row("unreadable scope grants nothing", "allow:write:here", PrivModeNoRule, PrivModeNoRule);
    row("slip in a denial denies all", "allow:write:;deny:veiw:area", PrivModeDenied,
        PrivModeGranted);
}

void TestAuthentication::access()
{
    QFETCH(QString, rules);
    UsersFixture plant;
    const std::map<QString, ConfigNode *> scopes{{"", nullptr},
                                                 {"root", plant.root()},
                                                 {"area", plant.area},
                                                 {"sub", plant.sub},
                                                 {"tag", plant.tag}};
    for (const QString &rule : rules.split(';', Qt::SkipEmptyParts)) {
        const QStringList parts = rule.split(':');
        const bool isKnown = scopes.count(parts[2]) != 0;
        ConfigNode *made = plant.grant(plant.role, qPrintable(parts[0]), qPrintable(parts[1]),
                                       isKnown ? scopes.at(parts[2]) : nullptr);
        if (!isKnown)
            UsersFixture::read(made, "scope", qPrintable(parts[2]));
    }
    QVERIFY(plant.users->Authenticate(plant.user));
    QTEST(int(plant.users->CheckAccess(PrivilegeWrite, plant.tag)), "onTag");
    QTEST(int(plant.users->CheckAccess(PrivilegeWrite, plant.other)), "onOther");
}

void TestAuthentication::noUsers()
{
    UsersFixture plant;
    plant.grant(plant.guests, "deny", "all", nullptr);
    QCOMPARE(plant.users->CheckAccess(PrivilegeWrite, plant.tag), PrivModeDenied);
    QVERIFY(plant.users->DeleteNode(plant.user->GetId(), true, true));
    QCOMPARE(plant.users->CheckAccess(PrivilegeWrite, plant.tag), PrivModeUnchecked);
}

void TestAuthentication::sessions()
{
    UsersFixture plant;
    plant.grant(plant.role, "allow", "write", nullptr);
    plant.grant(plant.guests, "allow", "view", nullptr);
    QVERIFY(plant.users->Start());
    std::vector<NodeLink> heard;
    const auto connection =
        plant.users->ConnectUserChanged([&](NodeLink user) { heard.push_back(user); });

    QVERIFY(plant.users->GetCurrentUser().isEmpty());
    QVERIFY(IsGranted(plant.users->CheckAccess(PrivilegeView, plant.tag)));
    QVERIFY(!IsGranted(plant.users->CheckAccess(PrivilegeWrite, plant.tag)));
    QVERIFY(plant.users->Authenticate(plant.user));
    QCOMPARE(plant.users->GetCurrentUserName(), std::string("anna"));
    QVERIFY(plant.users->GetCurrentUser() == NodeLink(plant.user));
    QVERIFY(!IsGranted(plant.users->CheckAccess(PrivilegeView, plant.tag)));
    QVERIFY(IsGranted(plant.users->CheckAccess(PrivilegeWrite, plant.tag)));
    plant.users->Logout();
    plant.users->Logout();
    QCOMPARE(plant.users->GetCurrentUserName(), std::string());
    QVERIFY(!IsGranted(plant.users->CheckAccess(PrivilegeWrite, plant.tag)));
    QVERIFY((heard == std::vector<NodeLink>{plant.user, NodeLink()}));
}

void TestAuthentication::followsChanges()
{
    UsersFixture plant;
    ConfigNode *rule = plant.grant(plant.role, "allow", "write", plant.area);
    QVERIFY(plant.users->Start());
    QVERIFY(plant.users->Authenticate(plant.user));
    const auto mode = [&](const ConfigNode *node) {
        return plant.users->CheckAccess(PrivilegeWrite, node);
    };
    QCOMPARE(mode(plant.add("memorySignal", plant.sub)), PrivModeGranted);
    UsersFixture::set(rule, "mode", "deny");
    QCOMPARE(mode(plant.tag), PrivModeDenied);
    QVERIFY(plant.role->DeleteNode(rule->GetId(), true, true));
    QCOMPARE(mode(plant.tag), PrivModeNoRule);
    plant.grant(plant.role, "allow", "write", plant.tag);
    QCOMPARE(mode(plant.tag), PrivModeGranted);
    UsersFixture::set(plant.user, "enabled", "false");
    QCOMPARE(mode(plant.tag), PrivModeNoRule);
    QCOMPARE(plant.users->GetCurrentUserName(), std::string());
}

void TestAuthentication::otherThreads()
{
    UsersFixture plant;
    plant.grant(plant.role, "allow", "write", nullptr);
    QVERIFY(plant.users->Start());
    const NodeLink tag(plant.tag);
    std::atomic<bool> isEnough{false};
    std::atomic<int> granted{0};
    std::atomic<int> refused{0};
    std::thread asker([&] {
        while (!isEnough) {
            ++(IsGranted(plant.users->CheckAccess(PrivilegeWrite, tag)) ? granted : refused);
            const std::string name = plant.users->GetCurrentUserName();
            if (!name.empty() && name != "anna")
                qFatal("torn name");
        }
    });
    while (granted < 100 || refused < 100) {
        QVERIFY(plant.users->Authenticate(plant.user));
        std::this_thread::yield();
        plant.users->Logout();
        std::this_thread::yield();
    }
    isEnough = true;
    asker.join();
}

void TestAuthentication::passwords_data()
{
    QTest::addColumn<QString>("password");
    QTest::addColumn<bool>("isEnabled");
    QTest::addColumn<bool>("isKnown");
    QTest::addColumn<bool>("isAdmitted");
    QTest::newRow("right") << "секрет" << true << true << true;
    QTest::newRow("wrong") << "Секрет" << true << true << false;
    QTest::newRow("empty") << "" << true << true << false;
    QTest::newRow("disabled user") << "секрет" << false << true << false;
    QTest::newRow("no such user") << "секрет" << true << false << false;
}

void TestAuthentication::passwords()
{
    QFETCH(QString, password);
    QFETCH(bool, isEnabled);
    QFETCH(bool, isKnown);
    QFETCH(bool, isAdmitted);
    UsersFixture plant;
    UsersFixture::set(plant.user, "passwordHash", m_hash);
    UsersFixture::set(plant.user, "enabled", isEnabled ? "true" : "false");
    const NodeLink user = isKnown ? NodeLink(plant.user) : NodeLink(plant.tag);
    const Result result = plant.users->Authenticate(user, password.toStdString());
    QCOMPARE(result.GetType(), isAdmitted ? Result::Success : Result::AuthenticationFailed);
    QCOMPARE(result.GetCode(), isAdmitted ? 0 : isKnown ? 1318 : 1317);
    QVERIFY(result.GetDetail().empty());
    QCOMPARE(!plant.users->GetCurrentUser().isEmpty(), isAdmitted);
}

void TestAuthentication::slowedDown()
{
    ManualClock &clock = ManualClock::Use();
    UsersFixture plant;
    UsersFixture::set(plant.user, "passwordHash", m_hash);
    ConfigNode *colleague = plant.addUser("boris");
    UsersFixture::set(colleague, "passwordHash", m_hash);
    const auto attempt = [&](const char *password, const ConfigNode *user) {
        return plant.users->Authenticate(user, password).GetType();
    };
    QCOMPARE(attempt("x", plant.user), Result::AuthenticationFailed);
    QCOMPARE(attempt("x", plant.user), Result::AuthenticationFailed);
    for (const int pause : {1, 2, 4, 8, 16, 32, 60, 60}) {
        QCOMPARE(attempt("x", plant.user), Result::AuthenticationFailed);
        QCOMPARE(attempt("секрет", plant.user), Result::LimitExceeded);
        QCOMPARE(plant.users->GetPause(plant.user), pause);
        clock.Advance(pause * ManualClock::second - 1);
        QCOMPARE(attempt("секрет", plant.user), Result::LimitExceeded);
        clock.Advance(1);
    }
    QCOMPARE(attempt("x", plant.user), Result::AuthenticationFailed);
    QCOMPARE(attempt("секрет", colleague), Result::Success);
    clock.Advance(60 * ManualClock::second);
    QCOMPARE(attempt("секрет", plant.user), Result::Success);
    QCOMPARE(attempt("x", plant.user), Result::AuthenticationFailed);
    QCOMPARE(attempt("секрет", plant.user), Result::Success);
}

void TestAuthentication::journalled()
{
    ManualClock::Use();
    QTemporaryDir directory;
    systemCore core;
    {
        auto plant = std::make_unique<NodesCollection>();
        QVERIFY(plant->SetRoot(plant->CreateDetached(ProjectFixture::kind("project"))));
        core.AdoptProject(std::move(plant), directory.filePath("p.xml").toStdString());
    }
    NodesCollection *nodes = core.GetNodesCollection();
    const auto add = [nodes](const char *kind, ConfigNode *parent) {
        return nodes->CreateNode(ProjectFixture::kind(kind).type, parent);
    };
    auto *users = static_cast<systemAuthentication *>(
        add("authentication", add("station", nodes->GetRoot())));
    ConfigNode *user = add("user", users);
    user->SetName("anna");
    UsersFixture::set(user, "passwordHash", m_hash);
    QVERIFY(core.Start());
    for (const char *password : {"a", "b", "c", "d"})
        QVERIFY(!users->Authenticate(user, password));
    ManualClock::Use().Advance(ManualClock::second);
    QVERIFY(users->Authenticate(user, "секрет"));
    std::thread([users] { (void)users->StoreMessage(LevelAction, "нить", users); }).join();
    users->Logout("ушёл");
    users->Logout();
    QVERIFY(core.GetJournal().Flush());
    std::vector<BasicEvent> events;
    QVERIFY(core.GetJournal().Query({}, events));
    QStringList told;
    for (const BasicEvent &event : events) {
        if (event.source == users->GetPath())
            told << QString::fromStdString(event.text + "|" + event.user) +
                        (event.type == TypeSecurityEvent && event.level == LevelSecurity ? "|!"
                                                                                         : "");
    }
    const QString wrong = "Отказ во входе: anna — неверное имя или пароль||!";
    const QStringList expected{wrong,
                               wrong,
                               wrong,
                               "Отказ во входе: anna — слишком много попыток, ждать 1 с||!",
                               "Вход: anna|anna|!",
                               "нить|anna",
                               "Выход: anna — ушёл|anna|!"};
    QCOMPARE(told, expected);
    QCOMPARE(users->StoreMessage(LevelDebug, "", std::string()).GetType(), Result::Success);
    QCOMPARE(UsersFixture().users->StoreMessage(LevelDebug, "", std::string()).GetType(),
             Result::NotAvailable);
}

// Users of the signal's station decide, else those of the whole project; a signal deep in the tree
// is no way around them.
void TestAuthentication::writes_data()
{
    QTest::addColumn<bool>("hasStation");
    QTest::addColumn<bool>("hasUsersAtRoot");
    QTest::addColumn<bool>("isRefused");
    QTest::newRow("users at the root, no station") << false << true << true;
    QTest::newRow("users at the root, station without") << true << true << true;
    QTest::newRow("no users") << true << false << false;
}

void TestAuthentication::writes()
{
    QFETCH(bool, hasStation);
    QFETCH(bool, hasUsersAtRoot);
    systemCore core;
    core.AdoptProject(std::make_unique<NodesCollection>(), "p.xml");
    NodesCollection &nodes = *core.GetNodesCollection();
    QVERIFY(nodes.SetRoot(nodes.CreateDetached(ProjectFixture::kind("project"))));
    const auto add = [&nodes](const char *kind, ConfigNode *parent) {
        return nodes.CreateNode(ProjectFixture::kind(kind).type, parent);
    };
    ConfigNode *owner = hasStation ? add("station", nodes.GetRoot()) : nodes.GetRoot();
    auto *tag = static_cast<BasicSignal *>(add("memorySignal", add("folder", owner)));
    UsersFixture::set(tag, "writable", "true");
    if (hasUsersAtRoot)
        add("user", add("authentication", nodes.GetRoot()));
    QTEST(tag->WriteValue(1) == Result::AccessDenied, "isRefused");
    QTEST(!CheckAccess(PrivilegeLaunch, *tag), "isRefused");
}

void TestAuthentication::withoutPassword_data()
{
    QTest::addColumn<bool>("isAllowed");
    QTest::addColumn<bool>("hasPassword");
    QTest::addColumn<bool>("isEnabled");
    QTest::addColumn<bool>("isAdmitted");
    QTest::newRow("allowed") << true << false << true << true;
    QTest::newRow("not allowed") << false << false << true << false;
    QTest::newRow("has a password") << true << true << true << false;
    QTest::newRow("disabled") << true << false << false << false;
}

void TestAuthentication::withoutPassword()
{
    QFETCH(bool, isAllowed);
    QFETCH(bool, hasPassword);
    QFETCH(bool, isEnabled);
    UsersFixture plant;
    UsersFixture::set(plant.user, "passwordless", isAllowed ? "true" : "false");
    UsersFixture::set(plant.user, "passwordHash", hasPassword ? m_hash : "");
    UsersFixture::set(plant.user, "enabled", isEnabled ? "true" : "false");
    QTEST(bool(plant.users->Authenticate(plant.user)), "isAdmitted");
    QTEST(bool(plant.users->Authenticate(plant.user, "")), "isAdmitted");
    QCOMPARE(plant.users->Authenticate(NodeLink()).GetCode(), 1317);
    QCOMPARE(plant.users->Authenticate(plant.user, "x").GetCode(), 1318);
}

void TestAuthentication::validation_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("named");
    QTest::newRow("clear password") << QByteArray("user") << QByteArray("passwordHash")
                                    << QByteArray("qwerty") << QByteArray("Argon2id");
    QTest::newRow("no way in") << QByteArray("user") << QByteArray("fullName") << QByteArray("A")
                               << QByteArray("пароль не задан");
    QTest::newRow("unknown privilege") << QByteArray("grant") << QByteArray("privileges")
                                       << QByteArray("write wirte") << QByteArray("права: wirte.");
    QTest::newRow("no privilege") << QByteArray("grant") << QByteArray("mode") << QByteArray("deny")
                                  << QByteArray("права не указаны");
}

void TestAuthentication::validation()
{
    QFETCH(QByteArray, kind);
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, named);
    UsersFixture plant;
    ConfigNode *node =
        plant.add(kind.constData(), kind == "grant" ? plant.role : plant.users, "Узел");
    UsersFixture::set(node, key.constData(), text.toStdString());
    ValidationResults results;
    node->Validate(results);
    QCOMPARE(results.size(), std::size_t(1));
    QVERIFY(QByteArray::fromStdString(results[0].GetMessageStr()).contains(named));
    QVERIFY(!QByteArray::fromStdString(results[0].GetMessageStr()).contains("qwerty"));
}

QTEST_APPLESS_MAIN(TestAuthentication)
#include "tst_authentication.moc"
