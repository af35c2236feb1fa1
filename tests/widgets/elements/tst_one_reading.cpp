// Publishers do not wait for the screen: everything an element shows comes of one reading of its
// value, whatever is published meanwhile.
#include "support/Rows.h"
#include "support/RuntimeProject.h"
#include "widgets/elements/PictureFiles.h"

#include "widgets/elements/binding/ShowsValue.h"
#include "widgets/elements/qbuttonBasic.h"
#include "widgets/elements/qwidgetBargraph.h"
#include "widgets/elements/qwidgetCheckBox.h"
#include "widgets/elements/qwidgetComboBox.h"
#include "widgets/elements/qwidgetEditBox.h"
#include "widgets/elements/qwidgetMultiImage.h"
#include "widgets/elements/qwidgetMultiLabel.h"
#include "widgets/scene/ElementFactory.h"

#include "nodes/model/KindTable.h"
#include "nodes/visual/elements/widgetBargraph.h"
#include "nodes/visual/elements/widgetButton.h"
#include "nodes/visual/elements/widgetCheckBox.h"
#include "nodes/visual/elements/widgetComboBox.h"
#include "nodes/visual/elements/widgetEditBox.h"
#include "nodes/visual/elements/widgetMultiImage.h"
#include "nodes/visual/elements/widgetMultiLabel.h"

using namespace Widgets;
using Nodes::Quality;

namespace {

unsigned lastCode = 0x15f00;

/// An element whose value is published anew after each reading: bad, good, bad, ...
template <class Node> class Restless : public Node
{
public:
    /// `key` with "restless" before it is the kind's element.
    static void Register()
    {
        Nodes::KindInfo kind = Node::Kind();
        kind.type = Nodes::NodeType(Nodes::NodeType::enNodeSubtype(++lastCode));
        kind.key = "restless" + kind.key;
        kind.create = [] { return std::unique_ptr<Nodes::ConfigNode>(new Restless); };
        Nodes::KindTable::Instance().Add(std::move(kind));
    }
    Nodes::SignalValue GetValue() const override
    {
        Nodes::SignalValue value(50.0);
        value.SetQuality(++m_readings % 2 ? Quality::Bad : Quality::Good);
        return value;
    }

private:
    mutable int m_readings = 0;
};

using Maker = QWidget *(*)(Nodes::BasicWidget *);

template <class Node, class Element> Maker maker()
{
    Restless<Node>::Register();
    return [](Nodes::BasicWidget *node) -> QWidget * {
        return new Element(dynamic_cast<Node *>(node), nullptr);
    };
}

} // namespace

Q_DECLARE_METATYPE(Maker)

class TestOneReading : public QObject
{
    Q_OBJECT

private slots:
    void allIsOfOneValue_data();
    void allIsOfOneValue();
    void aRemovedSignalLooksBad_data();
    void aRemovedSignalLooksBad();
};

void TestOneReading::allIsOfOneValue_data()
{
    const Rows<QByteArray, Maker, QString, QString> row("node", "make", "good", "bad");
    row("label", "<restlesslabel %1 showUnit='false'/>", maker<Nodes::widgetLabel, qwidgetLabel>(),
        "50.0", "----");
    row("label of states",
        "<restlessmultiLabel %1><state id='21' name='s' from='40' to='60' text='Works' "
        "ownColor='true' color='#00ff00'/></restlessmultiLabel>",
        maker<Nodes::widgetMultiLabel, qwidgetMultiLabel>(), "Works", "----");
    row("button", "<restlessbutton %1/>", maker<Nodes::widgetButton, qbuttonBasic>(), "50.0",
        "----");
    row("bargraph", "<restlessbargraph %1/>", maker<Nodes::widgetBargraph, qwidgetBargraph>(),
        "50.0", "----");
    row("edit box", "<restlesseditBox %1 step='1'/>", maker<Nodes::widgetEditBox, qwidgetEditBox>(),
        "50", "----");
    row("check box", "<restlesscheckBox %1/>", maker<Nodes::widgetCheckBox, qwidgetCheckBox>(), "1",
        "----");
    row("combo box",
        "<restlesscomboBox %1><comboItem id='21' name='f' text='Fifty' value='50'/>"
        "</restlesscomboBox>",
        maker<Nodes::widgetComboBox, qwidgetComboBox>(), "Fifty", "----");
    row("picture of states",
        "<restlessmultiImage %1 badImage='square.svg'><state id='21' name='s' from='40' to='60' "
        "image='halves.png'/></restlessmultiImage>",
        maker<Nodes::widgetMultiImage, qwidgetMultiImage>(), "halves.png", "square.svg");
}

void TestOneReading::allIsOfOneValue()
{
    QFETCH(QByteArray, node);
    QFETCH(Maker, make);
    QFETCH(QString, good);
    QFETCH(QString, bad);
    const PictureFiles pictures;
    const RuntimeProject project(QByteArray("<memorySignal id='10' name='S'/>" + node)
                                     .replace("%1", "id='20' name='E' signal='10'"));
    const std::unique_ptr<QWidget> widget(make(project.node<Nodes::BasicWidget>(20)));
    auto *element = dynamic_cast<IWidget *>(widget.get());
    const auto *shown = dynamic_cast<ShowsValue *>(widget.get());
    const auto *label = qobject_cast<qwidgetMultiLabel *>(widget.get());
    QSet<int> seen;
    element->start();
    for (int i = 0; i < 9; ++i) {
        // A second reading of one would come to rest on the same of the two each time.
        if (i % 3 == 2)
            (void)project.node<Nodes::BasicWidget>(20)->GetValue();
        element->onValueUpdated(Nodes::SignalValue());
        seen << int(shown->shownQuality());
        const bool isGood = shown->shownQuality() == Quality::Good;
        QCOMPARE(shown->shownText(), isGood ? good : bad);
        QVERIFY(!label || (label->textColor() == QColor(Qt::green)) == isGood);
    }
    QCOMPARE(seen.size(), 2);
    // What is handed over needs no reading at all.
    Nodes::SignalValue stale(50.0);
    stale.SetQuality(Quality::Stale);
    for (int i = 0; i < 2; ++i) {
        element->onValueUpdated(stale);
        QCOMPARE(shown->shownQuality(), Quality::Stale);
        QCOMPARE(shown->shownText(), good);
    }
    element->stop();
}

void TestOneReading::aRemovedSignalLooksBad_data()
{
    const Rows<QByteArray, Quality> row("node", "afterReturn");
    for (const char *kind :
         {"label", "button", "bargraph", "editBox", "checkBox", "comboBox", "multiImage"})
        row(kind, QByteArray("<") + kind + " id='20' name='E' signal='11'/>", Quality::Good);
    row("fed by a driver", "<label id='20' name='E' signal='12'/>", Quality::Bad);
}

// Nothing announces a removal but the signal itself: the link stays.
void TestOneReading::aRemovedSignalLooksBad()
{
    QFETCH(QByteArray, node);
    const RuntimeProject project("<folder id='10' name='F'><memorySignal id='11' name='S'/>"
                                 "<hostSignal id='12' name='H'/></folder>" +
                                 node);
    project.publish(11, 1.0);
    project.publish(12, 1.0);
    auto *element = project.node<Nodes::BasicWidget>(20);
    const std::unique_ptr<QWidget> widget(ElementFactory::create(element, nullptr));
    const auto *shown = dynamic_cast<ShowsValue *>(widget.get());
    dynamic_cast<IWidget *>(widget.get())->start();
    QCOMPARE(shown->shownQuality(), Quality::Good);
    Nodes::ConfigNode *root = project.node(10)->GetParent();
    std::unique_ptr<Nodes::ConfigNode> removed = root->RemoveNode(project.node(10));
    QTRY_COMPARE(shown->shownQuality(), Quality::Bad);
    QVERIFY(root->AddNode(removed));
    QFETCH(Quality, afterReturn);
    QTRY_COMPARE(shown->shownQuality(), afterReturn);
    dynamic_cast<IWidget *>(widget.get())->stop();
}

QTEST_MAIN(TestOneReading)
#include "tst_one_reading.moc"
