#include "editor/compare/CompareDocument.h"
#include "editor/compare/CompareView.h"
#include "editor/help/KeysDialog.h"
#include "editor/properties/PropertyView.h"
#include "editor/shell/CommandMenus.h"
#include "editor/shell/DocumentTabs.h"
#include "editor/shell/MainWindow.h"
#include "editor/shell/NewProjectDialog.h"
#include "editor/shell/PlantCheck.h"
#include "editor/shell/ProjectFiles.h"
#include "editor/shell/RecentProjects.h"
#include "editor/shell/StationRun.h"
#include "editor/tables/CommandTable.h"
#include "editor/tables/PanelTable.h"
#include "editor/wizard/NodeRecipe.h"
#include "editor/wizard/ProjectSteps.h"
#include "editor/workspace/DocumentView.h"

#include "nodes/model/ConfigNode.h"
#include "support/MessageBoxes.h"
#include "utils/editing/NodeLinkEvent.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangeTextCommand.h"
#include "utils/undo/IUndo.h"
#include "widgets/scene/ProxyScene.h"

#include <QAction>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTimer>
#include <QTreeView>
#include <QTreeWidget>
#include <QtTest>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

using Editor::MainWindow;
using Editor::Workspace;

namespace {

/// Presses a button of the next message box by its text.
void answer(const QString &text)
{
    QTimer::singleShot(0, qApp, [text] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box)
            return answer(text);
        const auto buttons = box->buttons();
        for (QAbstractButton *button : buttons) {
            if (button->text() == text)
                return button->click();
        }
        box->reject();
    });
}

/// Takes connections on a free port of the loopback address and says nothing.
class SilentDevice
{
public:
    SilentDevice() : m_socket(socket(AF_INET, SOCK_STREAM, 0))
    {
        m_address.sin_family = AF_INET;
        m_address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof m_address;
        auto *address = reinterpret_cast<sockaddr *>(&m_address);
        if (bind(m_socket, address, length) || listen(m_socket, 4) ||
            getsockname(m_socket, address, &length))
            qFatal("no socket");
    }
    ~SilentDevice() { leave(); }
    int port() const { return ntohs(m_address.sin_port); }
    void leave()
    {
        if (m_socket >= 0)
            close(m_socket);
        m_socket = -1;
    }

private:
    int m_socket;
    sockaddr_in m_address{};
};

struct Fixture
{
    Fixture()
    {
        if (!session().create(directory.filePath("p"), "P"))
            qFatal("no project");
    }
    Editor::ProjectSession &session() { return window.workspace().session(); }
    bool rename(const char *name)
    {
        return Utils::IUndo::execute(new Utils::ChangeTextCommand(
            Nodes::NodeLink(session().root()), Utils::ChangeTextCommand::Name, name));
    }
    Nodes::NodeLink addWindow()
    {
        Nodes::NodeLink made;
        Editor::ProjectSteps steps(*session().project());
        (void)Utils::IUndo::execute(steps.addWindow("W", {640, 480}, 1, made));
        return made;
    }

    QTemporaryDir directory;
    MainWindow window{QStringLiteral("/nowhere/station")};
};

} // namespace

class MainWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qRegisterMetaType<Workspace::Level>("Editor::Workspace::Level"); }

    void tablesAreWhole()
    {
        QSet<QString> ids;
        QSet<QString> shortcuts;
        for (const Editor::CommandRow &row : Editor::CommandTable()) {
            if (!*row.id)
                continue;
            QVERIFY2(!ids.contains(row.id), row.id);
            ids.insert(row.id);
            const QString keys = QString::fromUtf8(row.shortcut);
            QVERIFY2(keys.isEmpty() || !QKeySequence::fromString(keys).isEmpty(), row.id);
            QVERIFY2(keys.isEmpty() || !shortcuts.contains(keys), row.id);
            shortcuts.insert(keys);
            QVERIFY2(QFile::exists(row.icon), row.id);
        }
        MainWindow window{QString()};
        for (const Editor::PanelRow &row : Editor::PanelTable()) {
            const auto *dock = window.findChild<QDockWidget *>(row.key);
            QVERIFY2(dock && dock->widget(), row.key);
        }
    }

    void proposesAPlaceThatIsThere()
    {
        const QTemporaryDir home;
        qputenv("HOME", home.path().toUtf8());
        const QString name = QStringLiteral("/Новый проект");
        QCOMPARE(Editor::NewProjectDialog(nullptr).directory(), home.path() + name);
        QVERIFY(QDir(home.path()).mkdir("Documents"));
        QCOMPARE(Editor::NewProjectDialog(nullptr).directory(), home.path() + "/Documents" + name);
    }

    void commandsFollowTheProject()
    {
        Fixture f;
        QCoreApplication::processEvents();
        QAction *action = f.window.commands().action("project.addWindow");
        QVERIFY(action && action->isEnabled());
        f.session().setReadOnly(QStringLiteral("занят"));
        QTRY_VERIFY(!action->isEnabled());
        QVERIFY(f.window.windowTitle().contains(QStringLiteral("только чтение")));
        f.session().close();
        QTRY_VERIFY(!f.window.commands().action("project.addReadings")->isEnabled());
    }

    void documentsFollowTheirNodes()
    {
        Fixture f;
        const Nodes::NodeLink node = f.addWindow();
        f.window.workspace().open(node);
        QCOMPARE(f.window.tabs().count(), 1);
        f.window.workspace().open(node); // again: brought forward
        QCOMPARE(f.window.tabs().count(), 1);
        QCOMPARE(f.window.workspace().document()->node(), node);
        QVERIFY(Utils::IUndo::execute(
            new Utils::ChangeTextCommand(node, Utils::ChangeTextCommand::Name, "Другое")));
        QTRY_COMPARE(f.window.tabs().tabText(0), QStringLiteral("Другое"));
        f.session().undoStack().undo();
        f.session().undoStack().undo(); // the window is gone
        QTRY_COMPARE(f.window.tabs().count(), 0);
        QVERIFY(!f.window.workspace().document());
        f.session().undoStack().redo();
        QVERIFY(f.session().save());
        const QString file = f.session().file();
        f.session().close();
        QCOMPARE(f.window.tabs().count(), 0);
        QVERIFY(f.session().open(file)); // nothing was open: the screen that operators see first
        QCOMPARE(f.window.tabs().count(), 1);
        QCOMPARE(f.window.workspace().document()->node().GetNodeId(), node.GetNodeId());
        f.session().close();
        QVERIFY(f.session().open(file));
        QCOMPARE(f.window.tabs().count(), 1);
        f.session().close();
    }

    void aSceneGivesWayToWhoSelectedSince()
    {
        Fixture f;
        const Nodes::NodeLink node = f.addWindow();
        Workspace &workspace = f.window.workspace();
        workspace.open(node);
        QObject *scene = workspace.document()->scene();
        QVERIFY(scene);
        const Nodes::NodeLink root(f.session().root());
        Utils::NodeLinkEvent::SendEventToApp(Nodes::NodeLinks{root}, scene);
        QTRY_COMPARE(workspace.selection().nodes(), Nodes::NodeLinks{root});
        Utils::NodeLinkEvent::SendEventToApp(Nodes::NodeLinks(), scene); // nothing selected in it
        QTRY_COMPARE(workspace.selection().nodes(), Nodes::NodeLinks{node});
        workspace.selection().select({root}, &f.window);
        Utils::NodeLinkEvent::SendEventToApp(Nodes::NodeLinks(), scene);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(workspace.selection().nodes(), Nodes::NodeLinks{root});
    }

    void aComparisonIsATab()
    {
        Fixture f;
        const Nodes::NodeLink node = f.addWindow();
        QVERIFY(f.session().save());
        const auto compare = [&f] {
            f.window.commands().action("project.compareSaved")->trigger();
            return qobject_cast<Editor::CompareDocument *>(f.window.workspace().document());
        };
        const Editor::CompareDocument *document = compare();
        QVERIFY(document);
        f.window.show();
        QTRY_VERIFY(document->differences().summary().contains("Различий нет"));
        QVERIFY(Utils::IUndo::execute(
            new Utils::ChangeTextCommand(node, Utils::ChangeTextCommand::Name, "Другое")));
        QTRY_VERIFY(document->differences().summary().contains("1"));
        const QTreeView &rows = document->differences().tree();
        emit document->differences().tree().activated(rows.model()->index(0, 0));
        QCOMPARE(f.window.workspace().document()->node(), node);
        QCOMPARE(f.window.tabs().count(), 2);
        QVERIFY(compare()); // in place of the one before
        QCOMPARE(f.window.tabs().count(), 2);
        QVERIFY(f.session().save());
        const QString file = f.session().file();
        f.session().close();
        QVERIFY(f.session().open(file)); // with what had its node
        QCOMPARE(f.window.workspace().selection().nodes().front().GetNodeId(), node.GetNodeId());
        QCOMPARE(f.window.tabs().count(), 1);
        QCOMPARE(f.window.workspace().document()->node().GetNodeId(), node.GetNodeId());
    }

    void takesFromAComparison_data()
    {
        QTest::addColumn<bool>("isWhole");
        QTest::addColumn<bool>("isReadOnly");
        QTest::newRow("the node") << true << false;
        QTest::newRow("one property") << false << false;
        QTest::newRow("open for reading only") << true << true;
    }
    void takesFromAComparison()
    {
        QFETCH(const bool, isWhole);
        QFETCH(const bool, isReadOnly);
        Fixture f;
        f.window.show();
        QVERIFY(f.rename("Q"));
        QVERIFY(Utils::IUndo::execute(new Utils::ChangeTextCommand(
            Nodes::NodeLink(f.session().root()), Utils::ChangeTextCommand::Description, "D")));
        if (isReadOnly)
            f.session().setReadOnly("R");
        f.window.commands().action("project.compareSaved")->trigger();
        const auto *document =
            qobject_cast<Editor::CompareDocument *>(f.window.workspace().document());
        QVERIFY(document);
        QTreeView &rows = document->differences().tree();
        QTRY_COMPARE(rows.model()->rowCount(), 1);
        const QModelIndex node = rows.model()->index(0, 0);
        rows.setCurrentIndex(isWhole ? node : rows.model()->index(0, 0, node)); // the name
        QAction *take = rows.actions().value(0);
        QVERIFY(take && take->isEnabled());
        take->trigger();
        QCOMPARE(f.session().name(), QString(isReadOnly ? "Q" : "P"));
        QCOMPARE(f.session().root()->GetDescription().empty(), isWhole && !isReadOnly);
        QCOMPARE(rows.model()->rowCount(), isWhole && !isReadOnly ? 0 : 1);
        QCOMPARE(take->isEnabled(), rows.model()->rowCount() > 0);
        f.session().abandon();
    }

    void showsWhatCouldNotBeRead_data()
    {
        QTest::addColumn<QByteArray>("inside");
        QTest::addColumn<bool>("isShown");
        QTest::newRow("whole") << QByteArray("<folder id=\"2\" name=\"a\"/>") << false;
        QTest::newRow("not whole") << QByteArray("<folder id=\"2\" name=\"a\" odd=\"1\"/>") << true;
    }
    void showsWhatCouldNotBeRead()
    {
        QFETCH(const QByteArray, inside);
        QFETCH(const bool, isShown);
        const QTemporaryDir directory;
        QFile file(directory.filePath("project.xml"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("<project format=\"1\" id=\"1\" name=\"P\">" + inside + "</project>");
        file.close();
        MainWindow window{QString()};
        window.show();
        auto *dock = window.findChild<QDockWidget *>("problems");
        QVERIFY(dock && !dock->isVisible());
        QVERIFY(window.files().open(directory.path()));
        QCoreApplication::processEvents();
        QCOMPARE(dock->isVisible(), isShown);
    }

    void panelsAreReachedByKeys()
    {
        Fixture f;
        f.window.workspace().open(f.addWindow());
        f.window.show();
        f.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.window));
        f.window.workspace().document()->setFocus();
        const auto isInDocument = [&f] {
            return f.window.workspace().document()->isAncestorOf(QApplication::focusWidget());
        };
        const Qt::Key keys[] = {Qt::Key_1, Qt::Key_2, Qt::Key_3, Qt::Key_4, Qt::Key_5,
                                Qt::Key_6, Qt::Key_7, Qt::Key_8, Qt::Key_9, Qt::Key_Minus};
        QCOMPARE(Editor::PanelTable().size(), int(std::size(keys)));
        for (int i = 0; i < Editor::PanelTable().size(); ++i) {
            const char *name = Editor::PanelTable()[i].key;
            const auto *dock = f.window.findChild<QDockWidget *>(name);
            QTest::keyClick(&f.window, keys[i], Qt::AltModifier);
            QTRY_VERIFY2(dock->isVisible() && dock->isAncestorOf(QApplication::focusWidget()),
                         name);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
            QTRY_VERIFY2(isInDocument(), name);
        }
        QTest::keyClick(&f.window, Qt::Key_2, Qt::AltModifier);
        QTRY_VERIFY(!isInDocument());
        QTest::keyClick(&f.window, Qt::Key_0, Qt::AltModifier);
        QTRY_VERIFY(isInDocument());
    }

    // Keys that two commands have run neither of them; letters of menus that two have, one.
    void keysAndLettersAreUnique()
    {
        const Fixture f;
        QSet<QChar> letters;
        QStringList keys;
        const std::function<void(const QMenu &)> collect = [&](const QMenu &menu) {
            for (const QAction *action : menu.actions()) {
                if (action->menu())
                    collect(*action->menu());
                for (const QKeySequence &sequence : action->shortcuts())
                    keys << sequence.toString();
            }
        };
        for (const QAction *top : f.window.menuBar()->actions()) {
            const int at = top->text().indexOf('&');
            QVERIFY2(at >= 0 && !letters.contains(top->text().at(at + 1).toLower()),
                     qPrintable(top->text()));
            letters.insert(top->text().at(at + 1).toLower());
            QVERIFY2(!top->menu()->isEmpty(), qPrintable(top->text()));
            collect(*top->menu());
        }
        QVERIFY(keys.size() > 30);
        QCOMPARE(keys.removeDuplicates(), 0);
    }

    void listsTheKeysOfItsMenus()
    {
        const Fixture f;
        Editor::KeysDialog dialog;
        dialog.addMenus(f.window);
        auto *rows = dialog.findChild<QTreeWidget *>();
        const auto shown = [rows](const QString &text) {
            int count = 0;
            for (const QTreeWidgetItem *item :
                 rows->findItems(text, Qt::MatchContains | Qt::MatchRecursive))
                count += item->isHidden() || item->parent()->isHidden() ? 0 : 1;
            return count;
        };
        QCOMPARE(shown("Сохранить"), 2);
        dialog.search("f5");
        QCOMPARE(shown("Запуск"), 1);
        QCOMPARE(shown("Сохранить"), 0);
    }

    void goesToAProperty()
    {
        Fixture f;
        const Nodes::NodeLink node = f.addWindow();
        auto *panel = f.window.findChild<QDockWidget *>("properties");
        panel->hide();
        f.window.workspace().revealProperty(node, QStringLiteral("noSuchKey"));
        QVERIFY(panel->isHidden());
        f.window.workspace().revealProperty(node, QStringLiteral("background"));
        QVERIFY(!panel->isHidden());
        const auto *view = panel->findChild<Editor::PropertyView *>();
        QCOMPARE(view->currentIndex(), view->find(QStringLiteral("background")));
        QVERIFY(view->currentIndex().isValid());
    }

    void tellsWhyAProjectIsNotOpened_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("told");
        QTest::newRow("no file") << QByteArray() << "файл проекта не найден";
        QTest::newRow("damaged") << QByteArray("<project format=\"1\"") << "project.xml:1";
    }
    void tellsWhyAProjectIsNotOpened()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, told);
        const QTemporaryDir directory;
        const auto write = [&](const char *name, const QByteArray &bytes) {
            QFile file(directory.filePath(name));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
        };
        if (!content.isEmpty())
            write("project.xml", content);
        write("project.xml.bak", "<project/>");
        MainWindow window{QString()};
        QString said;
        QTimer look;
        connect(&look, &QTimer::timeout, &window, [&] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                return;
            said = box->text() + box->informativeText() + box->detailedText();
            box->reject();
        });
        look.start(1);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("project\\.xml")));
        QVERIFY(!window.files().open(directory.path()));
        QVERIFY2(said.contains(told) && said.contains(directory.path()), qPrintable(said));
        QVERIFY(said.contains("project.xml.bak"));
        QVERIFY(!said.remove(directory.path()).contains(QRegularExpression("[a-z]{4,} [a-z]{3,}")));
    }

    void aRecentProjectStaysUntilItIsTakenOut()
    {
        const QTemporaryDir directory;
        const QString gone = directory.filePath("gone & away");
        Editor::RecentProjects::remember(gone);
        MainWindow window{QString()};
        const auto shown = [&window, &gone] {
            auto *menu = window.findChild<QMenu *>("file.recent");
            emit menu->aboutToShow();
            const QString text = menu->actions().value(0)->text();
            return text.startsWith("&1") && text.contains(QString(gone).replace("&", "&&"));
        };
        QVERIFY(shown());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("gone")));
        answer(QStringLiteral("Закрыть"));
        QVERIFY(!window.files().open(gone));
        QVERIFY(shown());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("gone")));
        answer(QStringLiteral("Убрать из списка"));
        QVERIFY(!window.files().open(gone));
        QVERIFY(!Editor::RecentProjects::all().contains(gone));
        QVERIFY(!shown());
    }

    void asksForUnsavedWork_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("isClosed");
        QTest::addColumn<bool>("isKept");
        QTest::newRow("saved") << "Сохранить" << true << true;
        QTest::newRow("dropped") << "Не сохранять" << true << false;
        QTest::newRow("stays") << "Отмена" << false << false;
    }
    void asksForUnsavedWork()
    {
        QFETCH(QString, button);
        QFETCH(bool, isKept);
        Fixture f;
        QVERIFY(f.window.files().mayLeave()); // nothing to ask about
        QVERIFY(f.rename("Q"));
        const QString file = f.session().file();
        answer(button);
        QTEST(f.window.close(), "isClosed");
        QFile saved(file);
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QCOMPARE(saved.readAll().contains("name=\"Q\""), isKept);
    }

    void whatIsBeingTypedIsPartOfTheProject_data()
    {
        QTest::addColumn<QString>("leaveBy");
        for (const char *way : {"Ctrl+S", "F5", "close"})
            QTest::newRow(way) << way;
    }
    void whatIsBeingTypedIsPartOfTheProject()
    {
        QFETCH(const QString, leaveBy);
        Fixture f;
        const Nodes::NodeLink node = f.addWindow();
        QVERIFY(f.window.files().save());
        f.window.show();
        f.window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&f.window));
        f.window.workspace().revealProperty(node, QStringLiteral("#description"));
        auto *view = f.window.findChild<Editor::PropertyView *>();
        view->edit(view->currentIndex().siblingAtColumn(1));
        auto *field = qobject_cast<QLineEdit *>(QApplication::focusWidget());
        QVERIFY(field && view->isAncestorOf(field));
        QTest::keyClicks(field, "typed");
        QVERIFY(!f.session().isModified());
        const QString file = f.session().file();
        if (leaveBy == "close") {
            answer(QStringLiteral("Сохранить"));
            QVERIFY(f.window.close());
        } else {
            QTest::keySequence(field, QKeySequence(leaveBy));
        }
        QFile saved(file);
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QVERIFY(saved.readAll().contains("\"typed\""));
    }

    void tellsWhatKeepsAFileFromBeingSaved_data()
    {
        QTest::addColumn<bool>("isGone");
        QTest::addColumn<QString>("told");
        QTest::newRow("directory removed") << true << "больше нет";
        QTest::newRow("cannot be replaced") << false << "остался прежним";
    }
    void tellsWhatKeepsAFileFromBeingSaved()
    {
        QFETCH(const bool, isGone);
        QFETCH(const QString, told);
        Fixture f;
        QVERIFY(f.rename("Q"));
        const QString file = f.session().file();
        QVERIFY(isGone ? QDir(f.session().directory()).removeRecursively()
                       : QDir().mkpath(file + ".bak/in the way"));
        const MessageBoxes boxes(QMessageBox::Close);
        QVERIFY(!f.window.files().save());
        QVERIFY(f.session().isModified());
        QCOMPARE(boxes.shown.size(), 1);
        QVERIFY2(boxes.shown[0].contains(told), qPrintable(boxes.shown[0]));
    }

    void tellsThatNoStationStarted()
    {
        Fixture f;
        QSignalSpy told(&f.window.workspace(), &Workspace::told);
        Editor::StationRun run(f.window.workspace(), QStringLiteral("/nowhere/station"), nullptr);
        run.start({});
        QTRY_COMPARE(told.size(), 1);
        QCOMPARE(told[0][0].value<Workspace::Level>(), Workspace::Error);
        QVERIFY(!run.isRunning());
    }

    void offersAFrameToRun_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("isMade");
        QTest::newRow("made") << "Создать фрейм" << true;
        QTest::newRow("cancelled") << "Отмена" << false;
    }
    void offersAFrameToRun()
    {
        QFETCH(const QString, button);
        QFETCH(const bool, isMade);
        Fixture f;
        const Nodes::NodeLink window =
            Editor::NodeRecipe("window", "W").make(*f.session().project());
        QVERIFY(Utils::IUndo::execute(
            new Utils::AddNodeLinkCommand(window, Nodes::NodeLink(f.session().root()))));
        QSignalSpy told(&f.window.workspace(), &Workspace::told);
        answer(button);
        f.window.findChild<QAction *>("file.run")->trigger();
        const Editor::ProjectSteps steps(*f.session().project());
        QCOMPARE(steps.hasWindow(), isMade);         // in a frame
        QCOMPARE(f.session().isModified(), !isMade); // saved for the station
        if (!isMade)
            QCOMPARE(told.size(), 0);
        else // the station that is not there was started
            QTRY_COMPARE(told.last()[0].value<Workspace::Level>(), Workspace::Error);
        f.session().abandon();
    }

    void findsThePlantAway_data()
    {
        QTest::addColumn<bool>("isThere");
        QTest::newRow("there") << true;
        QTest::newRow("away") << false;
    }
    void findsThePlantAway()
    {
        QFETCH(bool, isThere);
        Fixture f;
        SilentDevice device;
        const int port = device.port();
        if (!isThere)
            device.leave();
        Editor::ProjectSteps steps(*f.session().project());
        QVERIFY(Utils::IUndo::execute(steps.addModbus("ПЛК", "127.0.0.1", port)));
        Editor::PlantCheck check(nullptr);
        QSignalSpy finished(&check, &Editor::PlantCheck::finished);
        check.start(f.session());
        QTRY_COMPARE(finished.size(), 1);
        const QStringList away = finished[0][0].toStringList();
        QCOMPARE(away.isEmpty(), isThere);
        QVERIFY(isThere || away[0].startsWith(QStringLiteral("ПЛК")));
    }
};

QTEST_MAIN(MainWindowTest)
#include "tst_main_window.moc"
