#include "editor/wizard/ProjectSteps.h"

#include "editor/wizard/NodeRecipe.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/visual/BasicWidget.h"
#include "nodes/visual/SharedProperties.h"
#include "nodes/visual/windows/BasicFrame.h"
#include "nodes/visual/windows/BasicWindow.h"
#include "utils/convert/ValueConversions.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/CommandGroup.h"

#include <QFont>
#include <QFontMetrics>
#include <QStringList>
#include <QVector>

#include <algorithm>
#include <cstdlib>

namespace Editor {

namespace {

constexpr int grid = 8; // px
constexpr int margin = 3 * grid;
const QSize captionSize(200, 32); // at least
constexpr int widestCaption = 480;
constexpr int fontSize = 14;
const QSize valueSize(136, 32);

NodeRecipe simulated(const QString &name, const QString &formula, const QString &unit, int maximum)
{
    NodeRecipe recipe(QStringLiteral("simulatorSignal"), name);
    recipe.set(QStringLiteral("formula"), formula);
    recipe.set(QStringLiteral("unit"), unit);
    recipe.set(QStringLiteral("decimals"), 1);
    recipe.set(QStringLiteral("maximum"), maximum);
    return recipe;
}

NodeRecipe label(const QString &name, const QRect &place)
{
    NodeRecipe recipe(QStringLiteral("label"), name);
    recipe.set(QStringLiteral("x"), place.x());
    recipe.set(QStringLiteral("y"), place.y());
    recipe.set(QStringLiteral("width"), place.width());
    recipe.set(QStringLiteral("height"), place.height());
    recipe.set(QStringLiteral("fontSize"), fontSize);
    return recipe;
}

/// Of the widest, in whole steps of the grid.
QSize sizeOf(const QStringList &captions)
{
    QFont font;
    font.setPointSize(fontSize);
    const QFontMetrics metrics(font);
    int width = captionSize.width();
    for (const QString &caption : captions)
        width = std::max(width, metrics.horizontalAdvance(caption) + 2 * grid);
    return {std::min((width + grid - 1) / grid * grid, widestCaption), captionSize.height()};
}

Nodes::NodeLinks find(const Nodes::NodesCollection &project, Nodes::NodeType type)
{
    Nodes::NodeLinks found;
    project.FindNodes(type, &found);
    return found;
}

} // namespace

Nodes::ConfigNode *ProjectSteps::station() const
{
    Nodes::ConfigNode *root = m_project.GetRoot();
    const auto stations = root->GetObjects(Nodes::NodeType(Nodes::NodeType::SubtypeStation));
    return stations.empty() ? root : stations.front();
}

Nodes::NodeLink ProjectSteps::place(const char *folder) const
{
    const Nodes::ConfigNode *found = station()->GetSubObject(std::string_view(folder));
    return Nodes::NodeLink(found ? found : station());
}

Nodes::NodeLinks ProjectSteps::windows() const
{
    return find(m_project, Nodes::NodeType::TypeWindow);
}

Nodes::NodeLinks ProjectSteps::signalNodes() const
{
    return find(m_project, Nodes::NodeType::TypeSignal);
}

bool ProjectSteps::hasSignals() const
{
    return !signalNodes().empty();
}

bool ProjectSteps::hasFrame() const
{
    return !find(m_project, Nodes::NodeType::TypeFrame).empty();
}

bool ProjectSteps::hasWindow() const
{
    const Nodes::NodeLinks frames = find(m_project, Nodes::NodeType::TypeFrame);
    return std::any_of(frames.begin(), frames.end(), [](const Nodes::NodeLink &link) {
        const auto *frame = dynamic_cast<const Nodes::BasicFrame *>(link.GetNode());
        return frame && !frame->GetWindows().empty();
    });
}

bool ProjectSteps::hasReading() const
{
    const Nodes::NodeLinks elements = find(m_project, Nodes::NodeType::TypeWidget);
    return std::any_of(elements.begin(), elements.end(), [](const Nodes::NodeLink &link) {
        const auto *element = dynamic_cast<const Nodes::BasicWidget *>(link.GetNode());
        return element && element->GetSignal();
    });
}

QUndoCommand *ProjectSteps::addSimulator() const
{
    NodeRecipe driver(QStringLiteral("simulatorDriver"), QStringLiteral("Имитатор"));
    driver.add(simulated(QStringLiteral("Температура"), QStringLiteral("70 + 10 * sin(t / 20)"),
                         QStringLiteral("°C"), 150));
    driver.add(simulated(QStringLiteral("Давление"), QStringLiteral("4 + sin(t / 7)"),
                         QStringLiteral("бар"), 10));
    driver.add(simulated(QStringLiteral("Расход"), QStringLiteral("25 + 5 * cos(t / 11)"),
                         QStringLiteral("м³/ч"), 50));
    auto *command =
        new Utils::AddNodeLinkCommand(driver.make(m_project), Nodes::NodeLink(station()));
    command->setText(QStringLiteral("Добавление имитатора"));
    return command;
}

QUndoCommand *ProjectSteps::addModbus(const QString &name, const QString &host, int port) const
{
    NodeRecipe signal(QStringLiteral("modbusSignal"), QStringLiteral("Сигнал 1"));
    signal.set(QStringLiteral("offset"), 0);
    NodeRecipe group(QStringLiteral("modbusGroup"), QStringLiteral("Регистры"));
    group.set(QStringLiteral("start"), 0).set(QStringLiteral("count"), 10).add(signal);
    NodeRecipe driver(QStringLiteral("modbusDriver"), name);
    driver.set(QStringLiteral("host"), host).set(QStringLiteral("port"), port).add(group);
    auto *command =
        new Utils::AddNodeLinkCommand(driver.make(m_project), Nodes::NodeLink(station()));
    command->setText(QStringLiteral("Добавление устройства %1").arg(name));
    return command;
}

QUndoCommand *ProjectSteps::addWindow(const QString &name, const QSize &size, int display,
                                      Nodes::NodeLink &made) const
{
    NodeRecipe recipe(QStringLiteral("window"), name);
    recipe.set(QStringLiteral("width"), size.width()).set(QStringLiteral("height"), size.height());
    if (!display)
        recipe.set(QStringLiteral("border"), QStringLiteral("fixed"))
            .set(QStringLiteral("closeButton"), QStringLiteral("true"));
    made = recipe.make(m_project);
    auto *group = new Utils::CommandGroup(QStringLiteral("Добавление окна %1").arg(name));
    new Utils::AddNodeLinkCommand(made, place("Экраны"), group);
    if (!display)
        return group;
    for (const Nodes::NodeLink &link : find(m_project, Nodes::NodeType::TypeFrame)) {
        const auto *frame = dynamic_cast<const Nodes::BasicFrame *>(link.GetNode());
        if (!frame || frame->GetDisplayNo() != display)
            continue;
        Nodes::NodeLinks shown = frame->GetWindows();
        shown.push_back(made);
        new Utils::ChangePropertyCommand(link, Nodes::BasicFrame::Prop::Windows, shown, group);
        return group;
    }
    addFrame(made, display, group);
    return group;
}

QUndoCommand *ProjectSteps::addFrame(const Nodes::NodeLink &window, int display) const
{
    auto *group = new Utils::CommandGroup(QStringLiteral("Добавление фрейма"));
    addFrame(window, display, group);
    return group;
}

void ProjectSteps::addFrame(const Nodes::NodeLink &window, int display, QUndoCommand *group) const
{
    NodeRecipe frame(QStringLiteral("frame"), QStringLiteral("Дисплей %1").arg(display));
    frame.set(QStringLiteral("display"), display);
    frame.set(QStringLiteral("fit"), QStringLiteral("fit"));
    const Nodes::NodeLink added = frame.make(m_project);
    new Utils::AddNodeLinkCommand(added, Nodes::NodeLink(station()), group);
    new Utils::ChangePropertyCommand(added, Nodes::BasicFrame::Prop::Windows,
                                     Nodes::NodeLinks{window}, group);
}

QRect ProjectSteps::areaOf(const Nodes::NodeLink &screen)
{
    using Prop = Nodes::SizeProp;
    const auto pixels = [&screen](unsigned property) {
        const Nodes::BasicProperty *value = screen->GetPropertyByValueId(property);
        return value ? std::atoi(value->ToString().c_str()) : 0;
    };
    return {0, 0, pixels(Prop::Width), pixels(Prop::Height)};
}

Nodes::NodeLink ProjectSteps::elementsOf(const Nodes::NodeLink &screen)
{
    const auto layers = screen->GetObjects(Nodes::NodeType(Nodes::NodeType::TypeLayer));
    return layers.empty() ? screen : Nodes::NodeLink(layers.back());
}

QVector<QRect> ProjectSteps::placesOf(const Nodes::NodeLink &screen, const QRect &area)
{
    QVector<QRect> places;
    const auto take = [&places, &area](const Nodes::ConfigNode &parent) {
        for (const auto &child : parent.Children()) {
            const auto *element = dynamic_cast<const Nodes::BasicWidget *>(child.get());
            const QRect place = element ? Utils::NRectToQRect(element->GetGeometry()) : QRect();
            if (!place.isEmpty() && !place.contains(area)) // what covers all is a background
                places.append(place);
        }
    };
    take(*screen.GetNode());
    for (const auto &child : screen->Children())
        take(*child);
    return places;
}

QPoint ProjectSteps::freePlace(const QVector<QRect> &taken, const QRect &area, const QSize &size)
{
    for (int x = margin; x + size.width() <= area.width(); x += size.width() + margin) {
        for (int y = margin; y + size.height() <= area.height(); y += size.height() + grid) {
            const QRect place(QPoint(x, y), size);
            if (std::none_of(taken.begin(), taken.end(),
                             [&place](const QRect &other) { return other.intersects(place); }))
                return place.topLeft();
        }
    }
    return {margin, margin}; // full: above the others, where it is seen and can be moved
}

QString ProjectSteps::captionOf(const Nodes::NodeLink &signal, const Nodes::NodeLinks &others)
{
    if (!signal->GetDescription().empty())
        return QString::fromStdString(signal->GetDescription());
    const std::string name = signal.GetLinkName();
    const auto same =
        std::count_if(others.begin(), others.end(), [&name](const Nodes::NodeLink &other) {
            return other.GetLinkName() == name;
        });
    if (same < 2 || !signal->GetParent())
        return QString::fromStdString(name);
    return QString::fromStdString(signal->GetParent()->GetName() + ": " + name);
}

QUndoCommand *ProjectSteps::addReadings(const Nodes::NodeLink &screen,
                                        const Nodes::NodeLinks &shown) const
{
    const Nodes::NodeLink parent = elementsOf(screen);
    const Nodes::NodeLinks all = signalNodes();
    QStringList captions;
    for (const Nodes::NodeLink &signal : shown)
        captions << captionOf(signal, all);
    const QSize words = sizeOf(captions);
    const QSize size(words.width() + grid + valueSize.width(), words.height());
    const QRect area = areaOf(screen);
    QVector<QRect> taken = placesOf(screen, area);
    auto *group = new Utils::CommandGroup(
        shown.size() == 1 ? QStringLiteral("Добавление показания %1")
                                .arg(QString::fromStdString(shown.front().GetLinkName()))
                          : QStringLiteral("Добавление показаний: %1").arg(shown.size()));
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const QPoint corner = freePlace(taken, area, size);
        taken.append({corner, size});
        const QString &name = captions[int(i)];
        NodeRecipe caption = label(name + QStringLiteral(" (подпись)"), {corner, words});
        caption.set(QStringLiteral("text"), name);
        const QPoint right = corner + QPoint(words.width() + grid, 0);
        NodeRecipe value = label(name, {right, valueSize});
        value.set(QStringLiteral("signal"), shown[i]);
        value.set(QStringLiteral("showUnit"), QStringLiteral("true"));
        value.set(QStringLiteral("align"), QStringLiteral("right"));
        for (const NodeRecipe &recipe : {caption, value})
            new Utils::AddNodeLinkCommand(recipe.make(m_project), parent, group);
    }
    return group;
}

} // namespace Editor
