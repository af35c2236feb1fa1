// Templates drawn on a screen: live at run time, a picture that follows its template in the editor.
#include "support/Rows.h"
#include "support/ShownEditor.h"

#include "widgets/elements/binding/ShowsValue.h"
#include "widgets/scene/editing/ElementClipboard.h"
#include "widgets/scene/editing/drops/DroppedElements.h"
#include "widgets/scene/editing/paste/PasteReport.h"
#include "widgets/scene/instances/qwidgetInstance.h"

#include "nodes/model/properties/BasicProperty.h"
#include "nodes/model/validation/ValidationResults.h"
#include "nodes/templates/templateArgument.h"
#include "nodes/templates/widgetInstance.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/DropNodesCommand.h"

#include <QDataStream>
#include <QMimeData>

using namespace Widgets;

namespace {

constexpr const char *plant = R"(
<folder id="100" name="P1"><memorySignal id="101" name="run"/><memorySignal id="102" name="amps"/></folder>
<folder id="110" name="P2"><memorySignal id="111" name="run"/><memorySignal id="112" name="amps"/></folder>
<memorySignal id="120" name="head"/>
<windowTemplate id="10" name="Pump" width="200" height="100">
  <templateParameter id="11" name="pump"><templateParameter id="12" name="run"/></templateParameter>
  <templateParameter id="17" name="head"/>
  <label id="13" name="L" signal="12" x="20" y="10" width="100" height="40" background="#ff0000"/>
  <editBox id="15" name="E" signal="17" x="20" y="60" width="100" height="20"/>
  <actionWriteValue id="16" name="w" signal="12" value="1"/>
</windowTemplate>
<compositionTemplate id="22" name="Comp" width="120" height="90">
  <templateParameter id="23" name="signal"/>
  <layer id="24" name="l"><label id="25" name="L" signal="23" width="120" height="90"/></layer>
  <layer id="26" name="off" visible="false"><label id="27" name="L" width="120" height="90"/></layer>
</compositionTemplate>
<windowTemplate id="28" name="Loop" width="50" height="50"><instance id="29" name="I" template="28"/></windowTemplate>
<windowTemplate id="60" name="A" width="50" height="50"><instance id="61" name="I" template="62" width="50" height="50"/></windowTemplate>
<windowTemplate id="62" name="B" width="50" height="50"><instance id="63" name="I" template="60" width="50" height="50"/></windowTemplate>
<composition id="30" name="C" width="800" height="600"><layer id="31" name="l">
  <instance id="40" name="I1" template="10" x="100" y="100" width="100" height="100">
    <templateArgument id="50" name="pump" node="100"/><templateArgument id="51" name="head" node="120"/>
  </instance>
  <instance id="41" name="I2" template="%1" x="300" y="100" width="200" height="100" fit="false">
    <templateArgument id="52" name="pump" node="110"/>
  </instance>
</layer></composition>)";

QByteArray nodes(int second = 10)
{
    return QString(plant).arg(second).toUtf8();
}

qwidgetInstance &instance(const ShownEditor &shown, unsigned long id)
{
    return dynamic_cast<qwidgetInstance &>(*shown.host(id)->element());
}

QString texts(const qwidgetInstance &shown)
{
    QStringList texts;
    for (const ProxyWidget *host : shown.hosts())
        texts << dynamic_cast<ShowsValue &>(*host->element()).shownText();
    return texts.join(' ');
}

/// Where the red label is seen, in pixels of the element.
QRect redOf(qwidgetInstance &shown)
{
    const QImage picture = shown.grab().toImage().convertToFormat(QImage::Format_RGB32);
    QRect red;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == QColor(255, 0, 0))
                red |= QRect(x, y, 1, 1);
        }
    }
    return red;
}

} // namespace

class TestInstances : public QObject
{
    Q_OBJECT

private slots:
    void eachIsLiveWithItsOwnValues()
    {
        ShownEditor shown(nodes());
        const std::size_t before = shown.project.core.GetNodesCollection()->GetInstances().size();
        shown.scene->setMode(Nodes::WorkModeRuntime);
        QCOMPARE(instance(shown, 40).hosts().size(), 2);
        shown.project.publish(101, 5.0);
        shown.project.publish(111, 7.0);
        QTRY_VERIFY(texts(instance(shown, 40)).startsWith("5"));
        QTRY_VERIFY(texts(instance(shown, 41)).startsWith("7"));
        // In the proportions of the template, in the middle; or as it is drawn.
        const ProxyWidget *fitted = instance(shown, 40).hosts().first();
        QCOMPARE(fitted->sceneBoundingRect().toRect(), QRect(110, 130, 50, 20));
        const ProxyWidget *plain = instance(shown, 41).hosts().first();
        QCOMPARE(plain->sceneBoundingRect().toRect(), QRect(320, 110, 100, 40));
        // Nobody operates inside of what is disabled.
        shown.project.set(40, "disabled", "true");
        QTRY_VERIFY(!fitted->isEnabled() && plain->isEnabled());
        const auto isRed = [&shown](const ProxyWidget &label) {
            QImage picture(800, 600, QImage::Format_RGB32);
            QPainter painter(&picture);
            shown.scene->render(&painter, QRectF(), {0, 0, 800, 600});
            return picture.pixelColor(label.sceneBoundingRect().topLeft().toPoint() +
                                      QPoint(4, 4)) == QColor(255, 0, 0);
        };
        QVERIFY(isRed(*plain));
        QTRY_VERIFY(!isRed(*fitted)); // covered, not only mute
        shown.project.set(40, "disabled", "false");
        QTRY_VERIFY(isRed(*fitted) && fitted->isEnabled());
        shown.scene->setMode(Nodes::WorkModeEditing);
        QCOMPARE(instance(shown, 40).hosts().size(), 0);
        QTRY_COMPARE(shown.project.core.GetNodesCollection()->GetInstances().size(), before);
    }

    void compositionsShowTheirVisibleLayers()
    {
        ShownEditor shown(nodes(22));
        shown.project.node(41)->SetName("any");
        shown.scene->setMode(Nodes::WorkModeRuntime);
        const QList<ProxyWidget *> hosts = instance(shown, 41).hosts();
        QCOMPARE(hosts.size(), 2);
        QVERIFY(hosts[0]->isVisible() != hosts[1]->isVisible());
    }

    void theEditorFollowsTheTemplate()
    {
        ShownEditor shown(nodes());
        qwidgetInstance &first = instance(shown, 40);
        qwidgetInstance &second = instance(shown, 41);
        QCOMPARE(redOf(second).topLeft(), QPoint(20, 10));
        QCOMPARE(redOf(first).topLeft(), QPoint(10, 30));
        QSignalSpy redrawn(&second, &qwidgetInstance::redrawn);
        QVERIFY(shown.scene->pushToUndoStack(new Utils::ChangePropertyCommand(
            shown.project.node(13)->GetNodeLink(), Nodes::BasicWidget::Prop::X, 60)));
        QTRY_COMPARE(redOf(second).left(), 60);
        QCOMPARE(redOf(first).left(), 30);
        shown.stack.undo();
        QTRY_COMPARE(redOf(second).left(), 20);
        // What has nothing to do with it draws nothing anew.
        redrawn.clear();
        const Nodes::ConfigNode *content = second.content();
        shown.project.set(25, "width", "50");
        QCoreApplication::processEvents();
        QCOMPARE(redrawn.size(), 0);
        QCOMPARE(second.content(), content);
        // No element of it is an element of the screen, for the mouse neither.
        shown.press({330, 120});
        shown.release({330, 120});
        QCOMPARE(shown.selected(), QString("41"));
    }

    void noElementOfAPictureIsAWindow()
    {
        const QByteArray changing =
            R"(<multiImage id="70" name="M" signal="12" width="20" height="20">
                 <state id="71" name="s"/></multiImage>
               <multiLabel id="72" name="S" signal="12" width="20" height="20" visibility="matching">
                 <state id="73" name="s"/></multiLabel><label id="13")";
        const ShownEditor shown(nodes().replace("<label id=\"13\"", changing));
        QCOMPARE(instance(shown, 40).refusal(), QString());
        for (const QWidget *window : QApplication::topLevelWidgets())
            QVERIFY(!window->isVisible() || window->testAttribute(Qt::WA_DontShowOnScreen) ||
                    qobject_cast<const QGraphicsView *>(window));
    }

    void whatCannotBeShownSaysWhy_data()
    {
        const Rows<int, QString, int> row("source", "reason", "findings");
        row("none", 0, "шаблон не выбран", 1);
        row("no template", 30, "«C» — не шаблон", 1);
        row("deleted", 999, "шаблона № 999 в проекте нет", 1);
        row("head is not given", 10, "", 1);
        row("nothing is given, pump is too much", 22, "", 2);
    }
    void whatCannotBeShownSaysWhy()
    {
        QFETCH(int, source);
        ShownEditor shown(nodes(source));
        QTEST(instance(shown, 41).refusal(), "reason");
        QTEST(int(shown.project.node(41)->isValid().size()), "findings");
    }

    void templatesInsideOfEachOtherEnd()
    {
        ShownEditor shown(nodes(60));
        QCOMPARE(instance(shown, 41).refusal(), QString());
        QVERIFY(!instance(shown, 41).grab().isNull());
        QVERIFY(shown.project.node<Nodes::widgetInstance>(29)->isEndless());
        shown.scene->setMode(Nodes::WorkModeRuntime);
        // A shows B, whose A would show B again.
        const qwidgetInstance *a = &instance(shown, 41);
        const auto inner = [](const qwidgetInstance *outer) {
            return dynamic_cast<const qwidgetInstance *>(outer->hosts().first()->element());
        };
        QCOMPARE(inner(inner(a))->refusal(), QString("шаблон показывает сам себя"));
    }

    void noTemplateIsDroppedIntoWhatItShows_data()
    {
        const Rows<int, int, bool> row("onto", "dropped", "taken");
        row("another one", 41, 22, true);
        row("itself", 29, 28, false);
        row("one that shows it", 63, 60, false);
        row("one that is shown by it", 61, 62, false);
        row("one that has nothing to do with it", 63, 22, true);
    }
    void noTemplateIsDroppedIntoWhatItShows()
    {
        QFETCH(int, onto);
        QFETCH(int, dropped);
        const ShownEditor shown(nodes());
        const auto *instance = shown.project.node<Nodes::widgetInstance>(onto);
        const Nodes::ConfigNode &source = *shown.project.node(dropped);
        const Nodes::NodesArray given({source.GetNodeLink()});
        QTEST(instance->CanShow(source), "taken");
        QTEST(bool(instance->CanDropNodes(given, Nodes::ConfigNode::DropLink)), "taken");
        // The same for a new instance beside it.
        QMimeData data;
        QByteArray ids;
        QDataStream stream(&ids, QIODevice::WriteOnly);
        stream << QString::number(dropped);
        data.setData("application/nodelink", ids);
        const DroppedElements fresh = DroppedElements::of(data, *instance->GetParent());
        QTEST(fresh.elements().size() == 1, "taken");
        QTEST(fresh.refusals().isEmpty(), "taken");
    }

    void aPasteElsewhereBringsTheTemplateAsOneStep()
    {
        {
            const ShownEditor shown(nodes());
            ElementClipboard::put(*shown.project.core.GetNodesCollection(),
                                  {shown.project.node(40)->GetNodeLink()});
        }
        ShownEditor shown(R"(<folder id="200" name="P1"><memorySignal id="201" name="run"/></folder>
<composition id="30" name="C" width="800" height="600"><layer id="31" name="l"/></composition>)");
        Nodes::NodesCollection &project = *shown.project.core.GetNodesCollection();
        QStringList told;
        connect(shown.scene, &ProxyScene::pasted, shown.scene,
                [&told](const PasteReport &report) { told << report.summary(); });
        shown.scene->onPasteFromBuffer(QPointF(8, 16));
        QCOMPARE(shown.stack.count(), 1);
        QCOMPARE(shown.stack.undoText(), QString("Копирование виджета I1"));
        QCOMPARE(shown.hosts().size(), 1);
        const auto &pasted = dynamic_cast<qwidgetInstance &>(*shown.hosts().first()->element());
        QCOMPARE(pasted.refusal(), QString());
        QCOMPARE(project.GetNodesByPath("Pump").size(), std::size_t(1));
        QVERIFY2(told.join(' ').contains("Pump"), qPrintable(told.join(' ')));
        shown.stack.undo();
        QVERIFY(project.GetNodesByPath("Pump").empty() && shown.hosts().isEmpty());
        shown.stack.redo();
        QCOMPARE(shown.hosts().size(), 1);
        shown.scene->onPasteFromBuffer(QPointF(8, 16)); // it is there now
        QCOMPARE(project.GetNodesByPath("Pump").size(), std::size_t(1));
        QCOMPARE(project.GetRoot()->GetSubObject("Pump 1"), nullptr);
        QCOMPARE(shown.hosts().size(), 2);
    }

    void dropsGiveWhatFits_data()
    {
        const Rows<int, int, QString> row("onto", "dropped", "arguments");
        row("another pump", 40, 110, "pump=110 head=120");
        row("a signal for the open parameter", 41, 120, "pump=110 head=120");
        row("another signal for the only parameter of its kind", 40, 101, "pump=100 head=101");
        row("a folder without the signals", 41, 30, "");
    }
    void dropsGiveWhatFits()
    {
        QFETCH(int, onto);
        QFETCH(int, dropped);
        ShownEditor shown(nodes());
        const auto given = [&] {
            QStringList each;
            for (const Nodes::ConfigNode *node :
                 shown.project.node<Nodes::widgetInstance>(onto)->GetArguments())
                each << QString::fromStdString(
                    node->GetName() + '=' +
                    node->GetPropertyByValueId(Nodes::templateArgument::Prop::Node)->ToString());
            return each.join(' ');
        };
        const QString before = given();
        QFETCH(QString, arguments);
        shown.scene->pushToUndoStack(new Utils::DropNodesCommand(
            shown.project.node(onto)->GetNodeLink(),
            Nodes::NodesArray({shown.project.node(dropped)->GetNodeLink()}),
            Nodes::ConfigNode::DropLink));
        QCOMPARE(shown.stack.count(), arguments.isEmpty() ? 0 : 1);
        if (arguments.isEmpty())
            return;
        QCOMPARE(given(), arguments);
        shown.stack.undo();
        QCOMPARE(given(), before);
        shown.stack.redo();
        QCOMPARE(given(), arguments);
    }
};

QTEST_MAIN(TestInstances)
#include "tst_instances.moc"
