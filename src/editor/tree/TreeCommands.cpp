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
    static const QVector<TreeCommand> rows = {
        {"open", "Открыть", "Return", false, &isOne, &Panel::openCurrent},
        {"", nullptr, "", false, nullptr, nullptr},
        {"rename", "Переименовать", "F2", true, &isOne, &Panel::renameCurrent},
        {"duplicate", "Дублировать", "Ctrl+D", true, &isAnyMovable, &Panel::duplicate},
        {"", nullptr, "", false, nullptr, nullptr},
        {"cut", "Вырезать", "Ctrl+X", true, &isAnyMovable, &Panel::cut},
        {"copy", "Копировать", "Ctrl+C", false, &isAnyMovable, &Panel::copy},
        {"paste", "Вставить", "Ctrl+V", true, &isOne, &Panel::paste},
        {"delete", "Удалить…", "Del", true, &isAnyMovable, &Panel::remove},
        {"", nullptr, "", false, nullptr, nullptr},
        {"up", "Переместить выше", "Alt+Up", true, &isAnyMovable, &Panel::moveUp},
        {"down", "Переместить ниже", "Alt+Down", true, &isAnyMovable, &Panel::moveDown},
        {"", nullptr, "", false, nullptr, nullptr},
        {"usages", "Найти использование", "Shift+F12", false, nullptr, &Panel::findUsages},
        {"replace", "Заменить сигнал…", "", true, nullptr, &Panel::replaceLinks},
        {"find", "Поиск", "Ctrl+F", false, nullptr, &Panel::startSearch},
    };
    return rows;
}

} // namespace Editor
