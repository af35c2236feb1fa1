#include "widgets/scene/editing/arrange/ElementEdits.h"

#include "widgets/scene/editing/arrange/EditGroup.h"
#include "widgets/scene/editing/arrange/EditedElements.h"
#include "widgets/scene/editing/groups/RectScale.h"

#include "nodes/visual/BasicWidget.h"
#include "utils/convert/ValueConversions.h"

#include <algorithm>
#include <limits>
#include <map>
#include <set>

namespace Widgets {

namespace {

using Prop = Nodes::BasicWidget::Prop;
using Elements = std::vector<Nodes::BasicWidget *>;

bool isSpread(Arrangement::enKind kind)
{
    using Kind = Arrangement::enKind;
    return kind == Kind::GapsAcross || kind == Kind::GapsDown || kind == Kind::CentresAcross ||
           kind == Kind::CentresDown;
}

void setGeometry(EditGroup &group, const Nodes::BasicWidget &element, const QRect &rect)
{
    if (element.isMovable()) {
        group.set(element, Prop::X, rect.x());
        group.set(element, Prop::Y, rect.y());
    }
    group.set(element, Prop::Width, rect.width());
    group.set(element, Prop::Height, rect.height());
}

bool isMovable(const Elements &unit)
{
    return std::all_of(unit.begin(), unit.end(),
                       [](const Nodes::BasicWidget *e) { return e->isMovable(); });
}

QRect around(const Elements &unit)
{
    QRect rect = Utils::NRectToQRect(unit.front()->GetGeometry());
    for (const Nodes::BasicWidget *element : unit)
        rect |= Utils::NRectToQRect(element->GetGeometry());
    return rect;
}

// A group with one that is not movable would be torn: it stays as a whole.
void place(EditGroup &group, const Elements &unit, const QRect &from, const QRect &to)
{
    if (unit.size() == 1)
        setGeometry(group, *unit.front(), to);
    else if (isMovable(unit)) {
        const RectScale scale{QRectF(from), QRectF(to)};
        for (const Nodes::BasicWidget *element : unit) {
            const QRectF own(Utils::NRectToQRect(element->GetGeometry()));
            setGeometry(group, *element, scale.mapped(own).toRect());
        }
    }
}

/// The chosen elements of one layer, and how the others there are stacked.
struct Stack
{
    Elements chosen;
    std::set<int> orders; ///< of the chosen
    long long lowest = std::numeric_limits<int>::max();
    long long highest = std::numeric_limits<int>::min();
    bool hasOthers = false;
};

std::vector<Stack> stacksOf(const EditedElements &edited)
{
    std::map<const Nodes::ConfigNode *, Stack> stacks;
    const std::set<const Nodes::ConfigNode *> chosen(edited.elements.begin(),
                                                     edited.elements.end());
    for (Nodes::BasicWidget *element : edited.elements) {
        Stack &stack = stacks[element->GetParent()];
        stack.chosen.push_back(element);
        stack.orders.insert(element->GetZOrder());
    }
    std::vector<Stack> found;
    for (auto &[layer, stack] : stacks) {
        if (!layer)
            continue;
        for (const auto &child : layer->Children()) {
            const auto *other = dynamic_cast<const Nodes::BasicWidget *>(child.get());
            if (!other || chosen.count(other) != 0)
                continue;
            stack.hasOthers = true;
            stack.lowest = std::min<long long>(stack.lowest, other->GetZOrder());
            stack.highest = std::max<long long>(stack.highest, other->GetZOrder());
        }
        found.push_back(stack);
    }
    return found;
}

int inRange(long long order)
{
    return static_cast<int>(std::clamp<long long>(order, std::numeric_limits<int>::min(),
                                                  std::numeric_limits<int>::max()));
}

// Those of one order stay of one order.
void restack(EditGroup &group, const Stack &stack, long long first)
{
    for (const Nodes::BasicWidget *element : stack.chosen) {
        const auto rank =
            std::distance(stack.orders.begin(), stack.orders.find(element->GetZOrder()));
        group.set(*element, Prop::ZOrder, inRange(first + rank));
    }
}

} // namespace

QUndoCommand *ElementEdits::arrange(const EditedElements &edited, Arrangement::enKind kind,
                                    const QString &text)
{
    std::vector<Elements> taking = edited.scope.units(edited.elements);
    if (isSpread(kind))
        taking.erase(std::remove_if(taking.begin(), taking.end(),
                                    [](const Elements &unit) { return !isMovable(unit); }),
                     taking.end());
    QVector<QRect> rects;
    int key = 0;
    for (const Elements &unit : taking) {
        if (std::find(unit.begin(), unit.end(), edited.key) != unit.end())
            key = rects.size();
        rects.append(around(unit));
    }
    const QVector<QRect> arranged = Arrangement::arranged(kind, rects, isSpread(kind) ? 0 : key);
    EditGroup group(text);
    for (int i = 0; i < rects.size(); ++i)
        place(group, taking[std::size_t(i)], rects.at(i), arranged.at(i));
    return group.take();
}

QUndoCommand *ElementEdits::toFront(const EditedElements &edited)
{
    EditGroup group(QStringLiteral("Перемещение виджетов на передний план"));
    for (const Stack &stack : stacksOf(edited)) {
        if (stack.hasOthers && *stack.orders.begin() <= stack.highest)
            restack(group, stack, stack.highest + 1);
    }
    return group.take();
}

QUndoCommand *ElementEdits::toBack(const EditedElements &edited)
{
    EditGroup group(QStringLiteral("Перемещение виджетов на задний план"));
    for (const Stack &stack : stacksOf(edited)) {
        if (stack.hasOthers && *stack.orders.rbegin() >= stack.lowest)
            restack(group, stack, stack.lowest - static_cast<long long>(stack.orders.size()));
    }
    return group.take();
}

QUndoCommand *ElementEdits::moveOrder(const EditedElements &edited, int step)
{
    EditGroup group(QStringLiteral("Изменение порядка виджетов"));
    for (const Nodes::BasicWidget *element : edited.elements)
        group.set(*element, Prop::ZOrder,
                  inRange(static_cast<long long>(element->GetZOrder()) + step));
    return group.take();
}

QUndoCommand *ElementEdits::setMovable(const EditedElements &edited, bool isMovable)
{
    EditGroup group(isMovable ? QStringLiteral("Снятие блокировки виджетов")
                              : QStringLiteral("Блокировка виджетов"));
    for (const Nodes::BasicWidget *element : edited.elements)
        group.set(*element, Prop::Movable, isMovable);
    return group.take();
}

QUndoCommand *ElementEdits::hide(const EditedElements &edited)
{
    EditGroup group(QStringLiteral("Скрытие виджетов"));
    for (const Nodes::BasicWidget *element : edited.elements)
        group.set(*element, Prop::Visible, false);
    return group.take();
}

} // namespace Widgets
