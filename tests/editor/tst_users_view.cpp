#include "editor/project/ProjectSession.h"
#include "editor/users/PasswordDialog.h"
#include "editor/users/StandardRoles.h"
#include "editor/users/UserEdits.h"
#include "editor/users/UsersView.h"
#include "editor/workspace/Workspace.h"

#include "nodes/auth/AccessReview.h"
#include "nodes/auth/securityGrant.h"
#include "nodes/auth/securityRole.h"
#include "nodes/auth/securityUser.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/model/KindInfo.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/serial/ProjectWriter.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QtTest>

using namespace Editor;
using Nodes::NodeLink;
using Nodes::NodeType;

namespace {

constexpr const char *secret = "Кр4йне-тайный-пароль";

/// A new project with users and nobody in it.
struct Office
{
    Office()
    {
        if (!session.create(directory.filePath("p"), "П"))
            qFatal("no project");
        Nodes::NodeLinks found;
        session.project()->FindNodes(NodeType(Nodes::systemAuthentication::Code), &found);
        users = found.empty()
                    ? session.project()->CreateNode(NodeType(Nodes::systemAuthentication::Code),
                                                    session.root()->GetNodeAt(0))
                    : found[0];
        ivanov = UserEdits::add(workspace, users, NodeType(Nodes::securityUser::Code), "ivanov");
        role = UserEdits::add(workspace, users, NodeType(Nodes::securityRole::Code), "Оператор");
        grant = UserEdits::add(workspace, role, NodeType(Nodes::securityGrant::Code), "Правило");
    }
    std::string file() const { return Nodes::ProjectWriter::ToText(*session.project()); }
    std::string privileges() const
    {
        const auto *d = grant->GetKind()->FindProperty(std::string_view("privileges"));
        return d->binding.format(*d, *grant.GetNode());
    }
    Nodes::enNodePrivMode mayWrite(const NodeLink &node) const
    {
        return Nodes::AccessReview::OfUser(*session.project(), ivanov)
            .Decide(Nodes::PrivilegeWrite, node);
    }

    QTemporaryDir directory;
    QWidget window;
    ProjectSession session;
    Workspace workspace{session, window};
    NodeLink users;
    NodeLink ivanov;
    NodeLink role;
    NodeLink grant;
};

} // namespace

class UsersViewTest : public QObject
{
    Q_OBJECT

private slots:
    void standardRolesRiseFromLookingToEverything()
    {
        Office office;
        const NodeLink station(office.users->GetParent());
        station->RemoveNode(office.users).reset();
        NodeLink made;
        const int before = office.session.undoStack().count();
        QVERIFY(office.workspace.push(StandardRoles::add(station, made)));
        QCOMPARE(office.session.undoStack().count(), before + 1);
        const auto *users = dynamic_cast<const Nodes::systemAuthentication *>(made.GetNode());
        const auto *guest = users->GetSubObject("Гость");
        QCOMPARE(
            made->GetPropertyByValueId(Nodes::systemAuthentication::Prop::GuestRole)->ToString(),
            std::to_string(guest->GetNodeLink().GetNodeId()));
        const Nodes::NodesCollection &project = *office.session.project();
        const auto may = [&](const char *who, Nodes::enPrivilegeType privilege) {
            const auto review =
                who ? Nodes::AccessReview::OfUser(project, users->GetSubObject(who)->GetNodeLink())
                    : Nodes::AccessReview::OfRole(project, guest->GetNodeLink());
            return review.Decide(privilege, station) == Nodes::PrivModeGranted;
        };
        using namespace Nodes;
        QVERIFY(may(nullptr, PrivilegeView) && !may(nullptr, PrivilegeWrite));
        QVERIFY(may("operator", PrivilegeWrite) && may("operator", PrivilegeAcknowledge));
        QVERIFY(!may("operator", PrivilegeConfigure) && may("engineer", PrivilegeConfigure));
        office.session.undoStack().undo();
        QVERIFY(!made.isValid());
    }

    void passwordsAreKeptAsHashesOnly()
    {
        Office o;
        auto &users = dynamic_cast<Nodes::systemAuthentication &>(*o.users.GetNode());
        QVERIFY(UserEdits::setPassword(o.workspace, o.ivanov, secret));
        QVERIFY(o.file().find(secret) == std::string::npos);
        QVERIFY(o.file().find("$argon2id$") != std::string::npos);
        QUndoStack &stack = o.session.undoStack();
        for (int i = 0; i < stack.count(); ++i) {
            QVERIFY(!stack.text(i).contains(secret));
            QVERIFY(!stack.text(i).contains("argon2"));
        }
        QVERIFY(users.Authenticate(o.ivanov, secret));
        QVERIFY(!users.Authenticate(o.ivanov, "другой"));
        stack.undo();
        QVERIFY(o.file().find("$argon2id$") == std::string::npos);
        stack.redo();
        QVERIFY(UserEdits::setPassword(o.workspace, o.ivanov, {}));
        QVERIFY(!users.Authenticate(o.ivanov, ""));
    }

    void passwordIsAskedTwice()
    {
        PasswordDialog dialog("ivanov", nullptr);
        auto *first = dialog.findChild<QLineEdit *>("first");
        auto *second = dialog.findChild<QLineEdit *>("second");
        const auto *ok = dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
        QCOMPARE(first->echoMode(), QLineEdit::Password);
        QVERIFY(!ok->isEnabled());
        first->setText("один");
        second->setText("другой");
        QVERIFY(!ok->isEnabled());
        second->setText("один");
        QVERIFY(ok->isEnabled());
        QCOMPARE(dialog.password(), QString("один"));
    }

    void rulesDecide()
    {
        Office o;
        const NodeLink station = o.session.root()->GetNodeAt(0);
        QCOMPARE(o.mayWrite(station), Nodes::PrivModeNoRule);
        QVERIFY(UserEdits::setRole(o.workspace, o.ivanov, o.role, true));
        QVERIFY(UserEdits::setPrivilege(o.workspace, o.grant, Nodes::PrivilegeWrite, true));
        QCOMPARE(o.mayWrite(station), Nodes::PrivModeGranted);
        QCOMPARE(o.mayWrite({}), Nodes::PrivModeGranted);
        QVERIFY(UserEdits::setScope(o.workspace, o.grant, station));
        QCOMPARE(o.mayWrite({}), Nodes::PrivModeNoRule);
        QCOMPARE(o.mayWrite(o.users), Nodes::PrivModeGranted); // below the station
        QVERIFY(UserEdits::setDenial(o.workspace, o.grant, true));
        QCOMPARE(o.mayWrite(o.users), Nodes::PrivModeDenied);
        QCOMPARE(Nodes::AccessReview::OfRole(*o.session.project(), o.role)
                     .Decide(Nodes::PrivilegeWrite, station),
                 Nodes::PrivModeDenied);
        QVERIFY(UserEdits::setRole(o.workspace, o.ivanov, o.role, false));
        QCOMPARE(o.mayWrite(o.users), Nodes::PrivModeNoRule);
        while (o.session.undoStack().index() > 3) // those that made them
            o.session.undoStack().undo();
        QCOMPARE(o.privileges(), std::string());
    }

    void everyVerdictHasItsReason()
    {
        Office o;
        const NodeLink station = o.session.root()->GetNodeAt(0);
        UsersView view(o.workspace, o.users, nullptr);
        view.show();
        view.findChild<QTabWidget *>()->setCurrentIndex(2);
        auto *matrix = view.findChild<QTableWidget *>("matrix");
        const auto *rule = view.findChild<QPushButton *>("rule");
        const auto reason = [&] {
            o.workspace.selection().select({}, this); // looks again
            o.workspace.selection().select({station}, this);
            matrix->setCurrentCell(0, Nodes::PrivilegeWrite);
            return view.findChild<QLabel *>("reason")->text();
        };
        QVERIFY(reason().contains("нет ни одной роли"));
        QVERIFY(UserEdits::setRole(o.workspace, o.ivanov, o.role, true));
        QVERIFY(reason().contains("ни одно правило"));
        QVERIFY(!rule->isEnabled());
        QVERIFY(UserEdits::setPrivilege(o.workspace, o.grant, Nodes::PrivilegeWrite, true));
        QVERIFY2(reason().contains("можно по правилу «Правило» роли «Оператор»"),
                 qPrintable(reason()));
        QVERIFY(rule->isEnabled());
        const NodeLink ban =
            UserEdits::add(o.workspace, o.role, NodeType(Nodes::securityGrant::Code), "Запрет");
        QVERIFY(UserEdits::setPrivilege(o.workspace, ban, Nodes::PrivilegeWrite, true));
        QVERIFY(UserEdits::setDenial(o.workspace, ban, true));
        QVERIFY(reason().contains("нельзя по правилу «Запрет»"));
        const auto *rules = view.findChild<QTableWidget *>("rules");
        QTRY_COMPARE(rules->rowCount(), 2);
        QVERIFY(view.reveal(ban));
        QCOMPARE(rules->currentRow(), 1);
        view.findChild<QTabWidget *>()->setCurrentIndex(2);
        QVERIFY(UserEdits::setScope(o.workspace, o.grant, station)); // is nearer
        QVERIFY(reason().contains("можно по правилу «Правило»"));
    }

    void privilegesAreSpelt()
    {
        Office o;
        for (int type = Nodes::PrivilegeView; type <= Nodes::PrivilegeConfigure; ++type)
            QVERIFY(UserEdits::setPrivilege(o.workspace, o.grant, type, true));
        QCOMPARE(o.privileges(), std::string("all"));
        QVERIFY(UserEdits::setPrivilege(o.workspace, o.grant, Nodes::PrivilegeWrite, false));
        QCOMPARE(o.privileges(),
                 std::string("view open close command acknowledge launch shelve configure"));
    }

    void viewFollowsAndEdits()
    {
        Office o;
        UsersView view(o.workspace, o.users, nullptr);
        view.resize(1000, 600);
        view.show();
        auto *table = view.findChild<QTableWidget *>("users");
        QVERIFY(view.reveal(o.ivanov));
        QCOMPARE(table->item(table->currentRow(), 3)->text(), QString("не задан"));
        QVERIFY(UserEdits::setPassword(o.workspace, o.ivanov, secret));
        QTRY_COMPARE(table->item(table->currentRow(), 3)->text(), QString("задан"));

        auto *roles = view.findChild<QListWidget *>("roles");
        for (int i = 0; i < roles->count(); ++i) {
            if (roles->item(i)->text() == "Оператор")
                roles->item(i)->setCheckState(Qt::Checked);
        }
        const auto *user = dynamic_cast<const Nodes::securityUser *>(o.ivanov.GetNode());
        QCOMPARE(user->GetRoles(), Nodes::NodeLinks{o.role});

        QVERIFY(view.reveal(o.role));
        auto *rules = view.findChild<QTableWidget *>("rules");
        QCOMPARE(rules->rowCount(), 1);
        rules->item(0, 2)->setCheckState(Qt::Checked);
        QCOMPARE(o.privileges(), std::string("view"));

        QVERIFY(UserEdits::remove(o.workspace, {o.role}));
        QVERIFY(user->GetRoles().empty());
        QTRY_VERIFY(!view.reveal(o.role));
        o.session.undoStack().undo();
        QTRY_VERIFY(view.reveal(o.role));
        QCOMPARE(user->GetRoles(), Nodes::NodeLinks{o.role});
    }

    void aTypedNameIsForTheUserItWasTypedFor_data()
    {
        QTest::addColumn<bool>("isTaken");
        QTest::newRow("user undone while typing") << false;
        QTest::newRow("name undone in the field") << true;
    }
    void aTypedNameIsForTheUserItWasTypedFor()
    {
        QFETCH(const bool, isTaken);
        Office o;
        UsersView view(o.workspace, o.users, nullptr);
        view.show();
        view.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&view));
        const NodeLink petrov =
            UserEdits::add(o.workspace, o.users, NodeType(Nodes::securityUser::Code), "petrov");
        QTRY_VERIFY(view.reveal(petrov));
        auto *login = view.findChild<QLineEdit *>("login");
        login->setFocus();
        login->selectAll();
        QTest::keyClicks(login, "sidorov");
        if (isTaken)
            QTest::keyClick(login, Qt::Key_Return);
        QCOMPARE(petrov.GetLinkName(), std::string(isTaken ? "sidorov" : "petrov"));
        o.session.undoStack().undo();
        QTRY_COMPARE(login->text(), QString(isTaken ? "petrov" : "ivanov"));
        login->clearFocus();
        QCOMPARE(o.ivanov.GetLinkName(), std::string("ivanov"));
        QVERIFY(!isTaken || petrov.GetLinkName() == "petrov");
        QVERIFY(o.session.undoStack().canRedo());
    }

    void allColumnsOfUsersAreInSight()
    {
        Office o;
        UsersView view(o.workspace, o.users, nullptr);
        view.resize(750, 560); // what a screen of 1366x768 leaves between the panels
        view.show();
        const auto *table = view.findChild<QTableWidget *>("users");
        QVERIFY(table->isVisible() && table->columnCount() > 1);
        QTRY_VERIFY(table->visualItemRect(table->item(0, table->columnCount() - 1)).right() <
                    table->viewport()->width());
    }

    void readOnlyProjectsStayAsTheyAre()
    {
        Office o;
        o.session.setReadOnly("занят");
        QVERIFY(!UserEdits::setPassword(o.workspace, o.ivanov, secret));
        QVERIFY(UserEdits::add(o.workspace, o.users, NodeType(Nodes::securityUser::Code), "x")
                    .isEmpty());
        QVERIFY(!UserEdits::remove(o.workspace, {o.ivanov}));
        QCOMPARE(o.ivanov.GetLinkName(), std::string("ivanov"));
    }
};

QTEST_MAIN(UsersViewTest)
#include "tst_users_view.moc"
