// What stands on the screen after changes were painted one by one is what painting all of it anew
// would give: for every kind of element, with whatever it is told.
#include "support/RuntimeProject.h"
#include "widgets/elements/PictureFiles.h"

#include "widgets/scene/ElementFactory.h"
#include "widgets/scene/ProxyScene.h"
#include "widgets/scene/ProxyView.h"

#include "nodes/model/KindTable.h"
#include "nodes/visual/BasicWidget.h"

#include <QBackingStore>
#include <QWindow>

#include <private/qwindow_p.h>

#include <random>

using namespace Widgets;
using Nodes::Quality;

unsigned qGlobalPostedEventsCount(); // of QtCore

namespace {

constexpr const char *screen = R"(
<memorySignal id="10" name="T" unit="°C"><alarmLimit id="101" name="a" type="HH" limit="90"/>
  <alarmLimit id="102" name="b" type="L" limit="20"/></memorySignal>
<memorySignal id="11" name="On" type="bool"/>
<memorySignal id="12" name="State" type="int"/>
<memorySignal id="13" name="Text" type="string"/>
<window id="2" name="W" width="360" height="260"/>)";

constexpr int elementCount = 4;
constexpr int changes = 60;

/// Changes that follow from one number.
class Chance
{
public:
    explicit Chance(unsigned seed) : m_engine(seed) {}
    int below(int count) { return int(m_engine() % unsigned(count)); }
    int between(int least, int most) { return least + below(most - least + 1); }
    template <class Item> Item of(std::initializer_list<Item> items)
    {
        return items.begin()[below(int(items.size()))];
    }

private:
    std::mt19937 m_engine;
};

std::string text(const Nodes::PropertyDescriptor &property, Chance &chance)
{
    using Type = Nodes::PropertyType;
    const int least = property.hasRange ? int(qMax(property.minimum, -40.0)) : -40;
    const int most = property.hasRange ? int(qMin(property.maximum, 150.0)) : 150;
    if (!property.choices.empty())
        return property.choices[std::size_t(chance.below(int(property.choices.size())))].token;
    switch (property.binding.type) {
    case Type::Bool:
        return chance.of({"true", "false"});
    case Type::Int:
    case Type::UInt:
    case Type::Double:
        // Sizes of texts and frames as people choose them, mostly.
        return std::to_string(chance.between(least, chance.below(4) ? qMin(most, 20) : most));
    case Type::Color:
        return chance.of({"#c00000", "#2060a080", "#ffffff00", "#101418"});
    case Type::Link:
        return chance.of({"10", "11", "12", "13", ""});
    case Type::Resource:
        return chance.of({"halves.png", "square.svg", "blinks.gif", "cut.png", "absent.png", ""});
    default:
        return chance.of({"", "12.5", "jWÅ", "Насос\\nПодпитки 2", "слово за словом по строкам"});
    }
}

/// One window with some elements of one kind at random, on the screen.
class Stage
{
public:
    Stage(unsigned code, double scale, unsigned seed) : m_chance(seed), m_project(screen)
    {
        auto *window = m_project.node<Nodes::BasicWindow>(2);
        for (int i = 0; i < elementCount; ++i)
            add(*Nodes::KindTable::Instance().Find(
                    Nodes::NodeType(Nodes::NodeType::enNodeSubtype(code))),
                *window);
        m_view = std::make_unique<ProxyView>(window, nullptr);
        m_view->setScene(window);
        m_view->setTransform(QTransform::fromScale(scale, scale));
        m_view->resize(int(364 * scale), int(264 * scale));
        m_view->show();
        if (!QTest::qWaitForWindowExposed(m_view.get()))
            qFatal("the window does not show");
    }

    /// Tells what it did.
    QString change()
    {
        if (m_chance.below(2))
            return publish();
        Nodes::ConfigNode &node = *m_nodes[std::size_t(m_chance.below(int(m_nodes.size())))];
        return setAny(node);
    }
    /// Everything that was told has been painted.
    void settle()
    {
        const auto *window = QWindowPrivate::get(m_view->windowHandle());
        do {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        } while (window->updateRequestPending || qGlobalPostedEventsCount() > 0);
    }
    QImage shown() const
    {
        return static_cast<QImage *>(m_view->backingStore()->paintDevice())->copy();
    }
    QImage paintedAnew()
    {
        m_view->viewport()->repaint();
        return shown();
    }

private:
    void add(const Nodes::KindInfo &kind, Nodes::ConfigNode &parent)
    {
        auto node = m_project.core.GetNodesCollection()->CreateDetached(kind);
        Nodes::ConfigNode *added = node.get();
        if (!parent.AddNode(node))
            qFatal("%s", kind.key.c_str());
        m_nodes.push_back(added);
        for (int i = 0; i < 12; ++i)
            setAny(*added);
        if (dynamic_cast<Nodes::BasicWidget *>(added)) {
            set(*added, "x", std::to_string(m_chance.between(10, 220)));
            set(*added, "y", std::to_string(m_chance.between(10, 160)));
            set(*added, "width", std::to_string(m_chance.between(4, 130)));
            set(*added, "height", std::to_string(m_chance.between(4, 90)));
            set(*added, "signal", m_chance.of({"10", "10", "11", "12", "13"}));
        }
        for (const Nodes::KindInfo &child : Nodes::KindTable::Instance().GetKinds()) {
            if (kind.AllowsChild(child.type)) {
                add(child, *added);
                add(child, *added);
            }
        }
    }
    QString setAny(Nodes::ConfigNode &node)
    {
        const auto &properties = node.GetKind()->properties;
        const auto &property = properties[std::size_t(m_chance.below(int(properties.size())))];
        if (property.binding.type == Nodes::PropertyType::Links)
            return "nothing";
        return set(node, property.key, text(property, m_chance));
    }
    static QString set(Nodes::ConfigNode &node, const std::string &key, const std::string &value)
    {
        if (!node.SetPropertyText(key, value))
            qFatal("%s = %s", key.c_str(), value.c_str());
        return QString::fromStdString(node.GetKind()->key + ' ' + key + " = " + value);
    }
    QString publish()
    {
        const Quality quality =
            m_chance.of({Quality::Good, Quality::Uncertain, Quality::Stale, Quality::Bad});
        const int number = m_chance.between(-20, 120);
        switch (m_chance.below(4)) {
        case 0:
            m_project.publish(11, number > 50, quality);
            break;
        case 1:
            m_project.publish(12, number / 20, quality);
            break;
        case 2:
            m_project.publish(13, std::to_string(number), quality);
            break;
        default:
            m_project.publish(10, double(number), quality);
        }
        return QString("value %1, quality %2").arg(number).arg(int(quality));
    }

    Chance m_chance;
    RuntimeProject m_project;
    std::vector<Nodes::ConfigNode *> m_nodes;
    std::unique_ptr<ProxyView> m_view;
};

// Smooth edges of shapes come out a little different where Qt cuts them off elsewhere: what a pixel
// shows has to be found in the other picture within one pixel.
bool isFound(QRgb color, const QImage &image, QPoint at)
{
    constexpr int invisible = 48; // of 255
    for (const QPoint by : {QPoint(0, 0), QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1),
                            QPoint(1, 1), QPoint(-1, -1), QPoint(1, -1), QPoint(-1, 1)}) {
        if (!image.rect().contains(at + by))
            continue;
        const QRgb other = image.pixel(at + by);
        if (std::max({qAbs(qRed(color) - qRed(other)), qAbs(qGreen(color) - qGreen(other)),
                      qAbs(qBlue(color) - qBlue(other))}) <= invisible)
            return true;
    }
    return false;
}

/// Where the two differ; empty when they do not, single pixels of rounded places excepted.
QRect difference(const QImage &one, const QImage &other)
{
    constexpr int few = 3;
    QRect where;
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QPoint at(x, y);
            if (one.pixel(at) != other.pixel(at) &&
                (!isFound(one.pixel(at), other, at) || !isFound(other.pixel(at), one, at))) {
                where |= QRect(at, QSize(1, 1));
                ++count;
            }
        }
    }
    return count > few ? where : QRect();
}

} // namespace

class TestPartialRepaint : public QObject
{
    Q_OBJECT

private slots:
    void equalsFullRepaint_data();
    void equalsFullRepaint();
};

void TestPartialRepaint::equalsFullRepaint_data()
{
    QTest::addColumn<unsigned>("code");
    QTest::addColumn<double>("scale");
    for (const unsigned code : ElementFactory::codes()) {
        const Nodes::NodeType type{Nodes::NodeType::enNodeSubtype(code)};
        for (const double scale : {1.0, 1.25})
            QTest::addRow("%s at %g", type.ToString().c_str(), scale) << code << scale;
    }
}

void TestPartialRepaint::equalsFullRepaint()
{
    QFETCH(unsigned, code);
    QFETCH(double, scale);
    const QByteArray given = qgetenv("STATION_TEST_SEED");
    const unsigned seed = given.isEmpty() ? std::random_device()() : given.toUInt();
    const PictureFiles pictures;
    Stage stage(code, scale, seed);
    QStringList done;
    for (int i = 0; i < changes; ++i) {
        done << stage.change();
        stage.settle();
        const QImage shown = stage.shown();
        const QImage anew = stage.paintedAnew();
        const QRect where = difference(shown, anew);
        if (where.isEmpty())
            continue;
        const QString directory = qEnvironmentVariable("STATION_TEST_PICTURES");
        if (!directory.isEmpty() && shown.save(directory + "/shown.png"))
            anew.save(directory + "/anew.png");
        const QString message = QString("STATION_TEST_SEED=%1, change %2, %3 x %4 pixels at %5, %6 "
                                        "differ after:\n%7")
                                    .arg(seed)
                                    .arg(i)
                                    .arg(where.width())
                                    .arg(where.height())
                                    .arg(where.x())
                                    .arg(where.y())
                                    .arg(QStringList(done.mid(qMax(0, i - 4))).join('\n'));
        QFAIL(qPrintable(message));
    }
}

int main(int argc, char **argv)
{
    qputenv("QT_QPA_UPDATE_IDLE_TIME", "0");
    QApplication app(argc, argv);
    TestPartialRepaint test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_partial_repaint.moc"
