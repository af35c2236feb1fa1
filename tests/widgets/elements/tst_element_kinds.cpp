// What every kind has to have on the operator's side, whoever adds it.
#include "support/RuntimeProject.h"
#include "widgets/elements/PictureFiles.h"

#include "widgets/actions/ActionFactoryTable.h"
#include "widgets/elements/IWidget.h"
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/scene/ElementFactory.h"

#include "nodes/model/KindTable.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/visual/BasicWidget.h"

using Nodes::KindInfo;
using Nodes::NodeType;
using Nodes::PropertyDescriptor;

Q_DECLARE_METATYPE(const KindInfo *)

namespace {

constexpr const char *screen = R"(
<memorySignal id="10" name="T" unit="°C" decimals="2" minimum="0" maximum="100"/>
<memorySignal id="11" name="On" type="bool"/>
<layer id="2" name="L"><%1 id="20" name="E" width="140" height="60" signal="%2">%3</%1></layer>)";

/// Makes it show as much as it can.
const std::map<std::string, std::string> rich{{"borderWidth", "3"}, {"background", "#ffe0a0"},
                                              {"text", "T"},        {"image", "halves.png"},
                                              {"zones", "own"},     {"setPoint", "10"},
                                              {"decimals", "1"},    {"align", "center"},
                                              {"lowLow", "5"},      {"low", "10"},
                                              {"high", "60"},       {"highHigh", "80"}};

QString childrenOf(const KindInfo &kind)
{
    if (kind.AllowsChild(NodeType::TypeState) && kind.key != "comboBox" &&
        kind.key != "recorderDisplay")
        return R"(<state id="21" name="s" from="40" to="60" text="In" image="square.svg"/>)";
    if (kind.key == "comboBox")
        return R"(<comboItem id="21" name="a" value="55.5"/><comboItem id="22" name="b" value="1"/>)";
    return kind.key == "recorderDisplay" ? R"(<recorderChannel id="21" name="c" signal="10"/>)"
                                         : "";
}

/// Another value than that text; "" when there is none to try.
std::string otherThan(const std::string &text, const PropertyDescriptor &property)
{
    using Type = Nodes::PropertyType;
    for (const Nodes::PropertyChoice &choice : property.choices) {
        if (choice.token != text)
            return choice.token;
    }
    const auto either = [&text](const char *one, const char *other) {
        return text == one ? other : one;
    };
    switch (property.binding.type) {
    case Type::Bool:
        return either("true", "false");
    case Type::Int:
    case Type::UInt:
    case Type::Double:
        return either("9", "8");
    case Type::Color:
        return either("#c00000", "#2060a080");
    case Type::Link:
        return either("10", "11");
    case Type::Resource:
        return either("square.svg", "halves.png");
    case Type::String:
        return either("DejaVu Serif", "DejaVu Sans Mono");
    default:
        return {};
    }
}

struct Element
{
    explicit Element(Nodes::BasicWidget *node)
        : widget(Widgets::ElementFactory::create(node, nullptr)),
          element(dynamic_cast<IWidget *>(widget))
    {
        widget->setParent(&parent);
        element->start();
    }
    ~Element() { element->stop(); }
    /// Place and looks, once all that is waited for has come.
    std::pair<QRect, QImage> seen() const
    {
        QCoreApplication::processEvents();
        return {widget->geometry(), widget->grab().toImage()};
    }

    QWidget parent;
    QWidget *widget;
    IWidget *element;
};

} // namespace

class TestElementKinds : public QObject
{
    Q_OBJECT

private slots:
    void everyKindIsShownOrRun_data();
    void everyKindIsShownOrRun();
    void aChangedPropertyShowsAtOnce_data();
    void aChangedPropertyShowsAtOnce();
};

void TestElementKinds::everyKindIsShownOrRun_data()
{
    QTest::addColumn<const KindInfo *>("kind");
    for (const KindInfo &kind : Nodes::KindTable::Instance().GetKinds())
        QTest::newRow(kind.key.c_str()) << &kind;
}

void TestElementKinds::everyKindIsShownOrRun()
{
    QFETCH(const KindInfo *, kind);
    const NodeType::enNodeType family = kind->type.GetFamily();
    const RuntimeProject project("");
    const std::unique_ptr<Nodes::ConfigNode> node =
        project.core.GetNodesCollection()->CreateDetached(*kind);
    const std::unique_ptr<QWidget> widget(
        Widgets::ElementFactory::create(dynamic_cast<Nodes::BasicWidget *>(node.get()), nullptr));
    const auto *element = dynamic_cast<const IWidget *>(widget.get());
    QCOMPARE(element != nullptr, family == NodeType::TypeWidget);
    QCOMPARE(Widgets::ActionFactoryTable().knows(kind->type),
             family == NodeType::TypeAction || family == NodeType::TypeArchiverAction);
    QStringList unbound;
    for (const PropertyDescriptor &property : kind->properties) {
        if (element && !element->bindings().has(property.valueId))
            unbound << QString::fromStdString(property.key);
    }
    QCOMPARE(unbound, QStringList());
}

void TestElementKinds::aChangedPropertyShowsAtOnce_data()
{
    QTest::addColumn<const KindInfo *>("kind");
    QTest::addColumn<int>("signal");
    for (const unsigned code : Widgets::ElementFactory::codes()) {
        const KindInfo *kind =
            Nodes::KindTable::Instance().Find(NodeType(NodeType::enNodeSubtype(code)));
        for (const int signal : {10, 11})
            QTest::addRow("%s of %d", kind->key.c_str(), signal) << kind << signal;
    }
}

// As it would in an element made for the node as it is now: rows of bindings leave nothing out.
void TestElementKinds::aChangedPropertyShowsAtOnce()
{
    QFETCH(const KindInfo *, kind);
    QFETCH(int, signal);
    const PictureFiles pictures;
    RuntimeProject project(
        QString(screen)
            .arg(QString::fromStdString(kind->key), QString::number(signal), childrenOf(*kind))
            .toUtf8());
    project.publish(10, 55.5);
    project.publish(11, true);
    auto *node = project.node<Nodes::BasicWidget>(20);
    for (const auto &[key, text] : rich) {
        if (kind->FindProperty(std::string_view(key)))
            project.set(20, key.c_str(), QString::fromStdString(text));
    }
    const Element changed(node);
    QStringList stale;
    for (const PropertyDescriptor &property : kind->properties) {
        const Nodes::BasicProperty &shown = *node->GetPropertyByValueId(property.valueId);
        const boost::any before = shown.GetPropertyValue();
        const std::string other = otherThan(shown.ToString(), property);
        if (other.empty())
            continue;
        project.set(20, property.key.c_str(), QString::fromStdString(other));
        if (changed.seen() != Element(node).seen())
            stale << QString::fromStdString(property.key + " = " + other);
        QVERIFY(node->SetProperty(property.valueId, before));
        if (changed.seen() != Element(node).seen())
            stale << QString::fromStdString(property.key + " back");
    }
    QCOMPARE(stale.join(", "), QString());
}

QTEST_MAIN(TestElementKinds)
#include "tst_element_kinds.moc"
