#include "support/Rows.h"
#include "utils/convert/TimeConversions.h"
#include "utils/convert/ValueConversions.h"
#include "utils/editing/ActionFactory.h"
#include "utils/editing/MenuGroup.h"
#include "utils/editing/NodeLinkEvent.h"
#include "utils/models/SortNodeTypes.h"
#include "utils/undo/IUndo.h"

#include "nodes/visual/elements/widgetButton.h"
#include "nodes/visual/elements/widgetLabel.h"
#include <QAction>
#include <QFontMetrics>
#include <QMenu>
#include <QScreen>
#include <QUndoStack>
#include <QtTest>
#include <qpa/qwindowsysteminterface.h>

using Nodes::NodeType;

namespace {

struct Editor : Utils::IUndo
{
    Editor() : IUndo(nullptr) {}
    QString getNameUndo() override { return QStringLiteral("Editor"); }
};

struct CountingCommand : QUndoCommand
{
    explicit CountingCommand(int &count) : m_count(count) {}
    void redo() override { ++m_count; }
    void undo() override { --m_count; }
    int &m_count;
};

/// Notes the requests that reach the application.
struct LinkFilter : QObject
{
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() != Utils::NodeLinkEvent::eventType())
            return false;
        ids << static_cast<Utils::NodeLinkEvent *>(event)->getNodeLink().GetNodeId();
        return true;
    }
    QVector<unsigned long> ids;
};

} // namespace

class ConversionsTest : public QObject
{
    Q_OBJECT

private slots:
    void badSettingsStayUsable()
    {
        QCOMPARE(int(Utils::NAligmentToQtAligment(Nodes::enAlignmentHorizontal(0),
                                                  Nodes::enAlignmentVertical(77))),
                 int(Qt::AlignCenter));
        const QFont font = Utils::NFontToQFont({"DejaVu Serif", 0, false, true, false, true});
        QCOMPARE(font.pointSize(), 1);
        QVERIFY(!font.bold() && font.italic() && !font.underline() && font.strikeOut());
    }

    void fontsFitTheScreen()
    {
        qApp->setAttribute(Qt::AA_Use96Dpi, false); // set by QtTest
        const auto height = [](int pointSize) {
            return QFontMetrics(Utils::NFontToQFont({"DejaVu Sans", pointSize})).height();
        };
        QScreen *screen = QGuiApplication::primaryScreen();
        const double dpi = screen->logicalDotsPerInch();
        const int small = height(10);
        const int large = height(20);
        QVERIFY(qAbs(large - 2 * small) <= 2);
        for (const double factor : {2.0, 1.0}) {
            QWindowSystemInterface::handleScreenLogicalDotsPerInchChange(screen, factor * dpi,
                                                                         factor * dpi);
            QCoreApplication::processEvents();
            QVERIFY(qAbs(height(10) - factor * small) <= 2);
            QVERIFY(qAbs(height(20) - factor * large) <= 2);
        }
        qApp->setAttribute(Qt::AA_Use96Dpi, true);
    }

    void times_data()
    {
        const Rows<qint64, QString> row("microseconds", "utc");
        row("rounded down", 1700000000123999, "2023-11-14T22:13:20.123Z");
        row("before the epoch", -1, "1969-12-31T23:59:59.999Z");
        row("no time", 0, "");
    }

    void times()
    {
        QFETCH(qint64, microseconds);
        QFETCH(QString, utc);
        const QDateTime local = Utils::toLocalTime(microseconds);
        QCOMPARE(local.toUTC().toString(Qt::ISODateWithMs), utc);
        const qint64 back = Utils::toTimestamp(local);
        QVERIFY(microseconds - back >= 0 && microseconds - back < 1000);
        QCOMPARE(Utils::fromAxisTime(Utils::toAxisTime(microseconds)), microseconds);
        QCOMPARE(Utils::timeText(microseconds) == QStringLiteral("—"), utc.isEmpty());
    }

    void typesAreGroupedByFamily()
    {
        const NodeType label(Nodes::widgetLabel::Code);
        const NodeType button(Nodes::widgetButton::Code);
        const NodeType layer(NodeType::SubtypeLayer);
        const auto groups = Utils::SortNodeTypes({label, layer, button, label});
        QCOMPARE(groups.size(), std::size_t(2));
        QVERIFY((groups[0] == std::vector<NodeType>{label, button}));
        QVERIFY((groups[1] == std::vector<NodeType>{layer}));
    }

    void menuGroups()
    {
        QMenu menu;
        QAction first(nullptr);
        QAction second(nullptr);
        Utils::createGroupInMenu(menu, {nullptr});
        QVERIFY(menu.actions().isEmpty());
        Utils::createGroupInMenu(menu, {&first});
        Utils::createGroupInMenu(menu, {nullptr, &second});
        QCOMPARE(menu.actions().size(), 4); // one separator between the groups, not two
        QCOMPARE(menu.actions().at(2), &second);
    }

    void standardActions()
    {
        const auto &factory = Utils::ActionFactory::getInstance();
        QObject owner;
        const auto *action = factory.createAction(Utils::ActionFactory::enActionType(3), &owner);
        QCOMPARE(action->text(), QString("Удалить"));
        QCOMPARE(action->shortcut(), QKeySequence(QKeySequence::Delete));
        QCOMPARE(action->parent(), &owner);
        QVERIFY(!factory.createAction(Utils::ActionFactory::enActionType(99), &owner));
    }

    void undoWithAndWithoutStack()
    {
        int count = 0;
        Editor editor;
        editor.pushToUndoStack(new CountingCommand(count));
        QCOMPARE(count, 1);
        {
            QUndoStack stack;
            Utils::IUndo::setUndoStack(&stack);
            editor.pushToUndoStack(new CountingCommand(count));
            QCOMPARE(count, 2);
            stack.undo();
            QCOMPARE(count, 1);
        }
        editor.pushToUndoStack(new CountingCommand(count)); // the stack is gone
        QCOMPARE(count, 2);
    }

    void linkReachesApplication()
    {
        LinkFilter filter;
        qApp->installEventFilter(&filter);
        Utils::NodeLinkEvent::SendEventToApp(Nodes::NodeLink(42ul), this);
        QTRY_COMPARE(filter.ids, QVector<unsigned long>{42});
    }
};

QTEST_MAIN(ConversionsTest)
#include "tst_conversions.moc"
