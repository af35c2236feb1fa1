#include "editor/wizard/StationScreens.h"

#include "editor/wizard/NodeRecipe.h"
#include "editor/wizard/ProjectSteps.h"
#include "editor/wizard/ScreenRecipes.h"
#include "editor/wizard/TrendRecipe.h"

#include "nodes/actions/kinds/actionChangeComposition.h"
#include "nodes/auth/currentUser.h"
#include "nodes/auth/systemAuthentication.h"
#include "nodes/charts/widgetChartHistory.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/BasicProperty.h"
#include "nodes/visual/elements/widgetButton.h"
#include "nodes/visual/windows/BasicFrame.h"
#include "nodes/visual/windows/windowComposed.h"
#include "utils/undo/AddNodeLinkCommand.h"
#include "utils/undo/ChangePropertyCommand.h"
#include "utils/undo/CommandGroup.h"

#include <QRect>
#include <QVector>

#include <algorithm>
#include <utility>

namespace Editor {

using Nodes::NodeLink;
using Nodes::NodeLinks;
using Utils::AddNodeLinkCommand;
using Utils::ChangePropertyCommand;
using namespace ScreenRecipes;

namespace {

constexpr int titleHeight = 48; // of a page
constexpr int userWidth = 176;
constexpr int loginWidth = 88;

struct Page
{
    const char *name;
    const char *kind; // of the element that fills it; none for a page to be drawn
};

constexpr Page pages[] = {{"Обзор", nullptr},
                          {"Тренды", "chartHistory"},
                          {"Тревоги", "alarmList"},
                          {"События", "eventList"},
                          {"Отчёты", "reportDisplay"}};

NodeLinks charts(const NodeLink &page)
{
    NodeLinks found;
    for (const auto &layer : page->Children()) {
        for (const auto &element : layer->Children()) {
            if (dynamic_cast<const Nodes::widgetChartHistory *>(element.get()))
                found.push_back(NodeLink(element.get()));
        }
    }
    return found;
}

NodeLinks find(const Nodes::NodesCollection &project, Nodes::NodeType type)
{
    NodeLinks found;
    project.FindNodes(type, &found);
    return found;
}

bool bringsPage(const NodeLink &link, const NodeLink &field)
{
    const auto *action = dynamic_cast<const Nodes::actionChangeComposition *>(link.GetNode());
    return action && action->GetWindowLink() == field;
}

/// The action of the button that brings a page into the field; leads nowhere without one.
NodeLink pageAction(const Nodes::widgetButton &button, const NodeLink &field)
{
    const NodeLinks &actions = button.GetReleaseActions();
    const auto found = std::find_if(actions.begin(), actions.end(), [&field](const NodeLink &link) {
        return bringsPage(link, field);
    });
    return found == actions.end() ? NodeLink() : *found;
}

} // namespace

/// The window of a frame that has the buttons of the pages.
struct StationScreens::Row
{
    NodeLink window;
    NodeLink actions; // where those of the buttons stand
    int width = 0;
    QVector<const Nodes::widgetButton *> buttons;
};

NodeLink StationScreens::field() const
{
    for (const NodeLink &link : find(m_project, Nodes::NodeType::TypeFrame)) {
        const auto *frame = dynamic_cast<const Nodes::BasicFrame *>(link.GetNode());
        for (const NodeLink &window : frame ? frame->GetWindows() : NodeLinks()) {
            if (dynamic_cast<const Nodes::windowComposed *>(window.GetNode()))
                return window;
        }
    }
    return {};
}

bool StationScreens::hasFrame(int display) const
{
    const NodeLinks frames = find(m_project, Nodes::NodeType::TypeFrame);
    return std::any_of(frames.begin(), frames.end(), [display](const NodeLink &link) {
        const auto *frame = dynamic_cast<const Nodes::BasicFrame *>(link.GetNode());
        return frame && frame->GetDisplayNo() == display;
    });
}

NodeLink StationScreens::page(const QString &name, const QSize &size,
                              const NodeRecipe *content) const
{
    NodeRecipe layer(QStringLiteral("layer"), QStringLiteral("Основа"));
    layer.add(caption(name, {margin + grid, grid, 640, titleHeight - 2 * grid}, 16, ink()));
    if (content)
        layer.add(*content);
    NodeRecipe recipe(QStringLiteral("composition"), name);
    recipe.set(QStringLiteral("width"), size.width()).set(QStringLiteral("height"), size.height());
    recipe.set(QStringLiteral("keep"), QStringLiteral("true"));
    return recipe.add(layer).make(m_project);
}

// All displays share one.
NodeLink StationScreens::userShown(QUndoCommand *group) const
{
    for (const NodeLink &known : find(m_project, Nodes::NodeType(Nodes::currentUser::Code))) {
        const auto *form = known->GetPropertyByValueId(Nodes::currentUser::Prop::Show);
        if (form && form->ToString() == "fullName")
            return known;
    }
    NodeRecipe user(QStringLiteral("currentUser"), QStringLiteral("Пользователь"));
    user.set(QStringLiteral("show"), QStringLiteral("fullName"));
    const NodeLink made = user.make(m_project);
    new AddNodeLinkCommand(made, ProjectSteps(m_project).place("Сигналы"), group);
    return made;
}

NodeLink StationScreens::header(const QString &title, const QSize &size, const NodeLink &folder,
                                QUndoCommand *group) const
{
    NodeRecipe window =
        placed("window", QStringLiteral("Заголовок"), {0, 0, size.width(), barHeight});
    window.set(QStringLiteral("background"), bar());
    const QRect left = headingPlace(title, size.width() / 3);
    window.add(heading(title, left));
    const int height = left.height();
    int right = size.width() - margin;
    if (!find(m_project, Nodes::NodeType(Nodes::systemAuthentication::Code)).empty()) {
        const NodeLink shown = userShown(group);
        NodeRecipe in(QStringLiteral("actionAuthUser"), QStringLiteral("Войти"));
        NodeRecipe out(QStringLiteral("actionAuthUser"), QStringLiteral("Выйти"));
        out.set(QStringLiteral("logout"), QStringLiteral("true"));
        for (const auto &[text, recipe] : {std::make_pair("Выйти", out), {"Войти…", in}}) {
            const NodeLink made = recipe.make(m_project);
            new AddNodeLinkCommand(made, folder, group);
            right -= loginWidth;
            const QRect place(right, grid, loginWidth, height);
            window.add(button(QString::fromUtf8(text), place, made));
            right -= grid;
        }
        right -= userWidth;
        NodeRecipe name =
            caption(QStringLiteral("Кто вошёл"), {right, grid, userWidth, height}, 11, paper());
        name.set(QStringLiteral("text"), QString());
        name.set(QStringLiteral("signal"), shown);
        name.set(QStringLiteral("align"), QStringLiteral("right"));
        window.add(name);
        right -= grid;
    }
    const QRect rest(QPoint(left.right() + 1 + grid, 4), QPoint(right - 1, barHeight - 5));
    window.add(placed("alarmBanner", QStringLiteral("Строка тревог"), rest));
    return window.make(m_project);
}

QUndoCommand *StationScreens::build(const QString &title, const QSize &size, int display,
                                    NodeLink &overview) const
{
    auto *group = new Utils::CommandGroup(QStringLiteral("Добавление экранов станции"));
    const auto add = [this, group](const NodeRecipe &recipe, const NodeLink &parent) {
        const NodeLink made = recipe.make(m_project);
        new AddNodeLinkCommand(made, parent, group);
        return made;
    };
    const ProjectSteps steps(m_project);
    const QString where = QStringLiteral("Дисплей %1").arg(display);
    const NodeLink all = steps.place("Экраны");
    const NodeLink screens = add({QStringLiteral("folder"), freeName(all, where)}, all);
    const NodeLink shows = add({QStringLiteral("folder"), QStringLiteral("Переходы")}, screens);
    const QSize inside(size.width(), size.height() - 2 * barHeight);
    const QRect content(margin, titleHeight, inside.width() - 2 * margin,
                        inside.height() - titleHeight - margin);
    NodeRecipe field = placed("windowComposed", QStringLiteral("Поле"), {{0, barHeight}, inside});
    const NodeLink shown = field.set(QStringLiteral("background"), ground()).make(m_project);
    NodeRecipe row = placed("window", QStringLiteral("Навигация"),
                            {0, size.height() - barHeight, size.width(), barHeight});
    row.set(QStringLiteral("background"), bar());
    const int count = int(std::size(pages));
    const NodeLink top = header(title, size, shows, group);
    new AddNodeLinkCommand(top, screens, group);
    new AddNodeLinkCommand(shown, screens, group);
    for (int i = 0; i < count; ++i) {
        const QString name = QString::fromUtf8(pages[i].name);
        NodeRecipe element(QString{}, {});
        if (pages[i].kind)
            element = placed(pages[i].kind, name + QStringLiteral(" станции"), content);
        const NodeLink made = page(name, inside, pages[i].kind ? &element : nullptr);
        new AddNodeLinkCommand(made, screens, group);
        const NodeLink show = add(showPage(name, shown, made), shows);
        row.add(button(name, buttonPlace(i, count, size.width()), show));
        if (!i)
            overview = made;
        for (const NodeLink &chart : charts(made))
            TrendRecipe::fill(m_project, chart, group);
    }
    const NodeLink buttons = add(row, screens);
    new ChangePropertyCommand(shown, Nodes::windowComposed::Prop::Composition, overview, group);
    NodeRecipe frame(QStringLiteral("frame"), where);
    frame.set(QStringLiteral("display"), display).set(QStringLiteral("fit"), QStringLiteral("fit"));
    const NodeLink added = add(frame, NodeLink(steps.station()));
    new ChangePropertyCommand(added, Nodes::BasicFrame::Prop::Windows,
                              NodeLinks{top, shown, buttons}, group);
    return group;
}

StationScreens::Row StationScreens::row(const NodeLink &field) const
{
    for (const NodeLink &link : find(m_project, Nodes::NodeType::TypeWindow)) {
        const auto *window = dynamic_cast<const Nodes::BasicWindow *>(link.GetNode());
        if (!window)
            continue;
        Row row{link, {}, window->GetGeometry().width, {}};
        for (const auto &child : window->Children()) {
            const auto *found = dynamic_cast<const Nodes::widgetButton *>(child.get());
            const NodeLink action = found ? pageAction(*found, field) : NodeLink();
            if (!action.isValid())
                continue;
            row.buttons.append(found);
            row.actions = NodeLink(action->GetParent());
        }
        if (!row.buttons.isEmpty())
            return row;
    }
    return {};
}

QUndoCommand *StationScreens::addPage(const QString &wanted, NodeLink &made) const
{
    const NodeLink shown = field();
    const auto *window = dynamic_cast<const Nodes::BasicWindow *>(shown.GetNode());
    if (!window)
        return nullptr;
    const NodeLink folder(shown->GetParent());
    const QString name = freeName(folder, wanted);
    auto *group = new Utils::CommandGroup(QStringLiteral("Добавление страницы %1").arg(name));
    const Nodes::NRect place = window->GetGeometry();
    made = page(name, {place.width, place.height}, nullptr);
    new AddNodeLinkCommand(made, folder, group);
    const Row line = row(shown);
    const NodeLink show = showPage(name, shown, made).make(m_project);
    new AddNodeLinkCommand(show, line.actions.isValid() ? line.actions : folder, group);
    if (line.window.isValid()) // else the engineer leads there in a way of their own
        addButton(line, name, show, group);
    return group;
}

void StationScreens::addButton(const Row &line, const QString &name, const NodeLink &show,
                               QUndoCommand *group) const
{
    int right = margin;
    for (const Nodes::widgetButton *each : line.buttons)
        right = std::max(right, each->GetGeometry().x + each->GetGeometry().width + grid);
    const Nodes::NRect last = line.buttons.last()->GetGeometry();
    const int usual = std::min(last.width, buttonPlace(0, 1, line.width).width());
    QRect place(right, last.y, std::max(usual, widthOf(name, 11) + grid), last.height);
    if (place.right() + grid > line.width) {
        const int count = line.buttons.size() + 1;
        using Prop = Nodes::BasicWidget::Prop;
        for (int i = 0; i + 1 < count; ++i) {
            const QRect narrow = buttonPlace(i, count, line.width);
            const NodeLink each(line.buttons[i]);
            new ChangePropertyCommand(each, Prop::X, narrow.x(), group);
            new ChangePropertyCommand(each, Prop::Width, narrow.width(), group);
        }
        const QRect narrow = buttonPlace(count - 1, count, line.width);
        place = {narrow.x(), last.y, narrow.width(), last.height};
    }
    new AddNodeLinkCommand(button(name, place, show).make(m_project), line.window, group);
}

} // namespace Editor
