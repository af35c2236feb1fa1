#include "nodes/CoreFixture.h"
#include "nodes/ManualClock.h"
#include "nodes/auth/PrivilegeSet.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/services/AccessCheck.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/serial/ProjectReader.h"
#include "nodes/signals/BasicSignal.h"
#include "support/Rows.h"

#include <QtTest>

#include <atomic>
#include <thread>

using namespace Nodes;

namespace {

/// A plant of two areas, one user with one role, and a role for guests.
struct UsersFixture : ProjectFixture
{
    UsersFixture() { set(users, {{"guestRole", idOf(guests)}}); }
    /// As the reader of project files does: what does not read is kept aside.
    ConfigNode *grant(ConfigNode *owner, const std::string &mode, const std::string &privileges,
                      const std::string &scope = {})
    {
        ConfigNode *rule = add("grant", owner);
        const Properties given{{"mode", mode}, {"privileges", privileges}, {"scope", scope}};
        for (const auto &[key, text] : given) {
            if (!rule->SetPropertyText(key, text))
                rule->AddForeignAttribute(key, text);
        }
        return rule;
    }
    ConfigNode *grant(const char *privileges) { return grant(role, "allow", privileges); }
    enNodePrivMode mode(const ConfigNode *node, AuthPriv privilege = PrivilegeWrite) const
    {
        return users->CheckAccess(privilege, node);
    }

    ConfigNode *area = add("folder", root(), "Area");
    ConfigNode *sub = add("folder", area, "Sub");
    ConfigNode *tag = add("memorySignal", sub, "Tag");
    ConfigNode *other = add("memorySignal", root(), "Other");
    systemAuthentication *users =
        add<systemAuthentication>("authentication", add("station", root()));
    ConfigNode *role = add("role", users);
    ConfigNode *guests = add("role", users);
    ConfigNode *user =
        add("user", users, "anna", {{"roles", idOf(role)}, {"passwordless", "true"}});
    std::vector<NodeLink> heard;
    Nodes::ScopedConnection connection =
        users->ConnectUserChanged([this](NodeLink now) { heard.push_back(now); });
};

} // namespace

class TestAuthentication : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_hash = systemAuthentication::HashPassword("секрет"); }

    void access_data()
    {
        // rules: mode:privileges:scope, parted by ';'
        const Rows<QString, int, int> row("rules", "onTag", "onOther");
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
        row("slip in the mode denies", "allow:write:;dney:write:area", PrivModeDenied,
            PrivModeGranted);
        row("unreadable scope grants nothing", "allow:write:here", PrivModeNoRule, PrivModeNoRule);
        row("slip in a denial denies all", "allow:write:;deny:veiw:area", PrivModeDenied,
            PrivModeGranted);
    }

    void access()
    {
        QFETCH(QString, rules);
        UsersFixture plant;
        const std::map<QString, std::string> scopes{{"root", idOf(plant.root())},
                                                    {"area", idOf(plant.area)},
                                                    {"sub", idOf(plant.sub)},
                                                    {"tag", idOf(plant.tag)}};
        for (const QString &rule : rules.split(';', Qt::SkipEmptyParts)) {
            const QStringList parts = rule.split(':');
            const auto scope = scopes.find(parts[2]);
            plant.grant(plant.role, parts[0].toStdString(), parts[1].toStdString(),
                        scope == scopes.end() ? parts[2].toStdString() : scope->second);
        }
        QVERIFY(plant.users->Authenticate(plant.user));
        QTEST(int(plant.mode(plant.tag)), "onTag");
        QTEST(int(plant.mode(plant.other)), "onOther");
    }

    void noUsers()
    {
        UsersFixture plant;
        plant.grant(plant.guests, "deny", "all");
        QCOMPARE(plant.mode(plant.tag), PrivModeDenied);
        QVERIFY(plant.users->DeleteNode(plant.user->GetId(), true, true));
        QCOMPARE(plant.mode(plant.tag), PrivModeDenied);
        for (const ConfigNode *role : {plant.role, plant.guests})
            QVERIFY(plant.users->DeleteNode(role->GetId(), true, true));
        QCOMPARE(plant.mode(plant.tag), PrivModeUnchecked);
    }

    void slipsClose_data()
    {
        // line: of the finding; 0: the project is open
        const Rows<std::string, int> row("nodes", "line");
        row("no users", "<station id='2'>\n<somethingNew id='3'/></station>", 0);
        row("misplaced", "\n<folder id='3'>\n<authentication id='4'/></folder>", 3);
        row("misspelt", "<station id='2'/>\n<authentification id='3'/>", 2);
        row("another word", "<access id='3'>\n<user id='4'/></access>", 1);
        row("user alone", "<station id='2'>\n<user id='3'/></station>", 1);
        row("users of another station",
            "<station id='2'/>\n<station id='3'><authentication id='4'><role id='5'/>"
            "</authentication></station>",
            1);
        row("all users misspelt", "<authentication id='3'>\n<usr id='4'/></authentication>", 2);
    }

    // A slip must not open what was to be guarded.
    void slipsClose()
    {
        QFETCH(std::string, nodes);
        QFETCH(int, line);
        ProjectReader reader;
        std::unique_ptr<NodesCollection> project;
        QVERIFY(reader.ReadBuffer("<project format='1' id='1'>" + nodes +
                                      "<memorySignal id='9' writable='true'/></project>",
                                  "p.xml", project));
        systemCore core;
        core.AdoptProject(std::move(project), "p.xml");
        auto *tag = static_cast<BasicSignal *>(core.GetNodesCollection()->FindNode(9));
        QCOMPARE(tag->WriteValue(1) == Result::AccessDenied, line > 0);
        QCOMPARE(bool(CheckAccess(PrivilegeOpen, *tag)), line == 0);
        int found = 0;
        for (const LoadMessage &message : reader.GetReport().GetMessages())
            found = found == 0 && message.severity == LoadMessage::Error ? message.line : found;
        QCOMPARE(found, line);
    }

    void sessions()
    {
        UsersFixture plant;
        plant.grant("write");
        plant.grant(plant.guests, "allow", "view");
        QVERIFY(plant.users->Start());
        QCOMPARE(plant.mode(plant.tag, PrivilegeView), PrivModeGranted);
        QCOMPARE(plant.mode(plant.tag), PrivModeNoRule);
        QVERIFY(plant.users->Authenticate(plant.user));
        QCOMPARE(plant.users->GetCurrentUserName(), std::string("anna"));
        QCOMPARE(plant.mode(plant.tag, PrivilegeView), PrivModeNoRule);
        QCOMPARE(plant.mode(plant.tag), PrivModeGranted);
        plant.users->Logout();
        plant.users->Logout();
        QCOMPARE(plant.users->GetCurrentUserName(), std::string());
        QCOMPARE(plant.mode(plant.tag), PrivModeNoRule);
        QVERIFY((plant.heard == std::vector<NodeLink>{plant.user, NodeLink()}));
    }

    void followsChanges()
    {
        UsersFixture plant;
        ConfigNode *rule = plant.grant(plant.role, "allow", "write", idOf(plant.area));
        QVERIFY(plant.users->Start());
        QVERIFY(plant.users->Authenticate(plant.user));
        QCOMPARE(plant.mode(plant.add("memorySignal", plant.sub)), PrivModeGranted);
        plant.set(rule, {{"mode", "deny"}});
        QCOMPARE(plant.mode(plant.tag), PrivModeDenied);
        QVERIFY(plant.role->DeleteNode(rule->GetId(), true, true));
        QCOMPARE(plant.mode(plant.tag), PrivModeNoRule);
        plant.grant("write");
        QCOMPARE(plant.mode(plant.tag), PrivModeGranted);
        plant.set(plant.user, {{"enabled", "false"}});
        QCOMPARE(plant.mode(plant.tag), PrivModeNoRule);
        QCOMPARE(plant.users->GetCurrentUserName(), std::string());
    }

    void instancesHaveTheRightsOfTheirTemplate_data()
    {
        const Rows<QString, int, int> row("scope", "onWindow", "onButton");
        row("template", "window", PrivModeGranted, PrivModeGranted);
        row("where it stands", "folder", PrivModeGranted, PrivModeGranted);
        row("element in it", "button", PrivModeNoRule, PrivModeGranted);
    }

    void instancesHaveTheRightsOfTheirTemplate()
    {
        QFETCH(QString, scope);
        UsersFixture plant;
        ConfigNode *folder = plant.add("folder", plant.root());
        ConfigNode *window = plant.add("windowTemplate", folder);
        const ConfigNode *button = plant.add("button", window);
        const ConfigNode *scoped = scope == "window" ? window : scope == "folder" ? folder : button;
        plant.grant(plant.role, "allow", "write", idOf(scoped));
        QVERIFY(plant.users->Start());
        QVERIFY(plant.users->Authenticate(plant.user));
        (void)plant.mode(window);
        const unsigned long revision = plant.project.GetRevision();
        for (int round = 0; round < 2; ++round) {
            ConfigNode *instance = plant.project.Instantiate(*window, *window, "I", {});
            QTEST(int(plant.mode(instance)), "onWindow");
            QTEST(int(plant.mode(instance->GetNodeAt(0))), "onButton");
            plant.project.TakeClone(NodeLink(instance));
        }
        QCOMPARE(plant.project.GetRevision(), revision);
    }

    // What a place above the template forbids is not allowed because the template is deleted.
    void instancesOfADeletedTemplateHaveNoRights()
    {
        UsersFixture plant;
        ConfigNode *folder = plant.add("folder", plant.root());
        ConfigNode *window = plant.add("windowTemplate", folder);
        plant.add("button", window);
        plant.grant(plant.role, "allow", "write", idOf(plant.root()));
        plant.grant(plant.role, "deny", "write", idOf(folder));
        QVERIFY(plant.users->Start());
        QVERIFY(plant.users->Authenticate(plant.user));
        const ConfigNode *instance = plant.project.Instantiate(*window, *window, "I", {});
        for (const bool isDeleted : {false, true}) {
            if (isDeleted)
                QVERIFY(folder->DeleteNode(window->GetId()));
            QCOMPARE(plant.mode(instance), PrivModeDenied);
            QCOMPARE(plant.mode(instance->GetNodeAt(0)), PrivModeDenied);
        }
    }

    void userIsGone_data()
    {
        const Rows<bool, bool> row("isDeleted", "isInFolder");
        row("disabled", false, false);
        row("deleted", true, false);
        row("deleted with the folder", true, true);
    }

    void userIsGone()
    {
        QFETCH(bool, isDeleted);
        QFETCH(bool, isInFolder);
        UsersFixture plant;
        ConfigNode *folder = plant.add("folder", plant.users);
        ConfigNode *user = plant.add("user", isInFolder ? folder : plant.users, "boris",
                                     {{"passwordless", "true"}});
        QVERIFY(plant.users->Authenticate(user));
        plant.heard.clear();
        if (isDeleted)
            QVERIFY(plant.users->DeleteNode((isInFolder ? folder : user)->GetId(), true, true));
        else
            plant.set(user, {{"enabled", "false"}});
        QVERIFY((plant.heard == std::vector<NodeLink>{NodeLink()}));
    }

    void otherThreads()
    {
        UsersFixture plant;
        plant.grant("write");
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

    void passwords_data()
    {
        // user: who has a password, may do without, is enabled
        const Rows<QString, std::string, bool> row("user", "password", "isAdmitted");
        row("right", "password enabled", "секрет", true);
        row("right, might do without", "password without enabled", "секрет", true);
        row("wrong", "password without enabled", "Секрет", false);
        row("empty", "password without enabled", "", false);
        row("disabled", "password without", "секрет", false);
        row("none wanted", "without enabled", "", true);
        row("none wanted, one given", "without enabled", "x", false);
        row("none wanted, disabled", "without", "", false);
        row("none set", "enabled", "", false);
    }

    void passwords()
    {
        QFETCH(QString, user);
        QFETCH(std::string, password);
        QFETCH(bool, isAdmitted);
        UsersFixture plant;
        plant.set(plant.user, {{"passwordHash", user.contains("password") ? m_hash : ""},
                               {"passwordless", user.contains("without") ? "true" : "false"},
                               {"enabled", user.contains("enabled") ? "true" : "false"}});
        const Result result = plant.users->Authenticate(plant.user, password);
        QCOMPARE(result.GetType(), isAdmitted ? Result::Success : Result::AuthenticationFailed);
        QCOMPARE(result.GetCode(), isAdmitted ? 0 : 1318);
        QVERIFY(result.GetDetail().empty());
        QCOMPARE(!plant.users->GetCurrentUser().isEmpty(), isAdmitted);
        if (password.empty())
            QCOMPARE(plant.users->Authenticate(plant.user).GetCode(), result.GetCode());
        for (const NodeLink &nobody : {NodeLink(plant.tag), NodeLink()})
            QCOMPARE(plant.users->Authenticate(nobody, password).GetCode(), 1317);
    }

    void slowedDown()
    {
        ManualClock &clock = ManualClock::Use();
        UsersFixture plant;
        plant.set(plant.user, {{"passwordHash", m_hash}});
        ConfigNode *colleague = plant.add("user", plant.users, "boris", {{"passwordHash", m_hash}});
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

    void journalled()
    {
        ManualClock::Use();
        QTemporaryDir directory;
        CoreFixture plant(directory);
        auto *users =
            plant.add<systemAuthentication>("authentication", plant.add("station", plant.root()));
        ConfigNode *user = plant.add("user", users, "anna", {{"passwordHash", m_hash}});
        QVERIFY(plant.core.Start());
        for (const char *password : {"a", "b", "c", "d"})
            QVERIFY(!users->Authenticate(user, password));
        ManualClock::Use().Advance(ManualClock::second);
        QVERIFY(users->Authenticate(user, "секрет"));
        std::thread([users] { (void)users->StoreMessage(LevelAction, "нить", users); }).join();
        users->Logout("ушёл");
        users->Logout();
        JournalQuery query;
        query.source = users->GetPath();
        QStringList told;
        for (const BasicEvent &event : plant.journalled(query)) {
            const bool isSecurity = event.type == TypeSecurityEvent && event.level == LevelSecurity;
            told << QString::fromStdString(event.text + "|" + event.user) +
                        (isSecurity ? "|!" : "");
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

    // Users of the signal's station decide, else those of the whole project; a signal deep in the
    // tree is no way around them.
    void writes_data()
    {
        // places, of users and of who is logged in: p the project, s the station
        const Rows<bool, QString, QString, int> row("hasStation", "users", "loggedIn", "answer");
        row("no users", true, "", "", Result::Success);
        row("no station", false, "p", "", Result::AccessDenied);
        row("users of the project guard the station", true, "p", "", Result::AccessDenied);
        row("user of the project", true, "p", "p", Result::Success);
        row("the station's own count first", true, "ps", "p", Result::AccessDenied);
        row("user of the station", true, "ps", "s", Result::Success);
    }

    void writes()
    {
        QFETCH(bool, hasStation);
        QFETCH(QString, users);
        QFETCH(QString, loggedIn);
        QFETCH(int, answer);
        const QTemporaryDir directory;
        CoreFixture f(directory);
        ConfigNode *owner = hasStation ? f.add("station", f.root()) : f.root();
        for (const QChar place : users) {
            auto *own =
                f.add<systemAuthentication>("authentication", place == 's' ? owner : f.root());
            ConfigNode *role = f.add("role", own);
            f.add("grant", role, nullptr, {{"privileges", "write launch"}});
            ConfigNode *user =
                f.add("user", own, "anna", {{"roles", idOf(role)}, {"passwordless", "true"}});
            QVERIFY(!loggedIn.contains(place) || own->Authenticate(user));
        }
        auto *tag = f.add<BasicSignal>("memorySignal", f.add("folder", owner), "tag",
                                       {{"writable", "true"}});
        QCOMPARE(int(tag->WriteValue(1).GetType()), answer);
        QCOMPARE(int(CheckAccess(PrivilegeLaunch, *tag).GetType()), answer);
    }

    void validation_data()
    {
        const Rows<std::string, std::string, std::string, std::string> row("kind", "key", "text",
                                                                           "named");
        row("clear password", "user", "passwordHash", "qwerty", "Argon2id");
        row("no way in", "user", "fullName", "A", "пароль не задан");
        row("unknown privilege", "grant", "privileges", "write wirte", "права: wirte.");
        row("no privilege", "grant", "mode", "deny", "права не указаны");
    }

    void validation()
    {
        QFETCH(std::string, kind);
        QFETCH(std::string, key);
        QFETCH(std::string, text);
        QFETCH(std::string, named);
        UsersFixture plant;
        const ConfigNode *node = plant.add(kind.c_str(), kind == "grant" ? plant.role : plant.users,
                                           "Узел", {{key.c_str(), text}});
        ValidationResults results;
        node->Validate(results);
        QCOMPARE(results.size(), std::size_t(1));
        const std::string message = results[0].GetMessageStr();
        QVERIFY(message.find(named) != std::string::npos);
        QVERIFY(message.find("qwerty") == std::string::npos);
    }

private:
    std::string m_hash;
};

QTEST_APPLESS_MAIN(TestAuthentication)
#include "tst_authentication.moc"
