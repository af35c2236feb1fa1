#include "editor/tree/TreeCommands.h"

#include "editor/tree/ProjectTreePanel.h"

#include "nodes/model/ConfigNode.h"

#include <algorithm>

namespace Editor {

namespace {

bool isOne(const Nodes::NodeLinks &nodes)
{
    return nodes.size() == 1;
}

bool isAny(const Nodes::NodeLinks &nodes)
{
    return !nodes.empty();
}

bool isAnyMovable(const Nodes::NodeLinks &nodes)
{
    return std::any_of(nodes.begin(), nodes.end(), [](const Nodes::NodeLink &node) {
        return node.isValid() && node->GetParent();
    });
}

} // namespace

const QVector<TreeCommand> &TreeCommands()
{
    using Panel = ProjectTreePanel;
    const TreeCommand separator = {"", nullptr, "", "", false, nullptr, nullptr};
    static const QVector<TreeCommand> rows = {
        {"open", "Открыть", ":/editor/icons/jump.svg", "Return", false, &isOne,
         &Panel::openCurrent},
        separator,
        {"rename", "Переименовать", ":/editor/icons/rename.svg", "F2", true, &isOne,
         &Panel::renameCurrent},
        {"duplicate", "Дублировать", ":/icons/arrange/duplicate.svg", "Ctrl+D", true, &isAnyMovable,
         &Panel::duplicate},
        separator,
        {"cut", "Вырезать", ":/editor/icons/cut.svg", "Ctrl+X", true, &isAnyMovable, &Panel::cut},
        {"copy", "Копировать", ":/editor/icons/copy.svg", "Ctrl+C", false, &isAnyMovable,
         &Panel::copy},
        {"paste", "Вставить", ":/editor/icons/paste.svg", "Ctrl+V", true, &isOne, &Panel::paste},
        {"copyPath", "Копировать путь", ":/editor/icons/copyPath.svg", "Ctrl+Shift+C", false,
         &isAnyMovable, &Panel::copyPath},
        {"delete", "Удалить…", ":/editor/icons/delete.svg", "Del", true, &isAnyMovable,
         &Panel::remove},
        separator,
        {"up", "Переместить выше", ":/icons/arrange/orderUp.svg", "Alt+Up", true, &isAnyMovable,
         &Panel::moveUp},
        {"down", "Переместить ниже", ":/icons/arrange/orderDown.svg", "Alt+Down", true,
         &isAnyMovable, &Panel::moveDown},
        separator,
        {"usages", "Найти использование", ":/editor/icons/usages.svg", "Shift+F12", false, &isAny,
         &Panel::findUsages},
        {"replace", "Заменить сигнал…", ":/editor/icons/replace.svg", "", true, &isAny,
         &Panel::replaceLinks},
        {"find", "Поиск", ":/editor/icons/find.svg", "Ctrl+F", false, nullptr, &Panel::startSearch},
    };
    return rows;
}

} // namespace Editor
