#include "editor/tables/CommandTable.h"

#include "editor/compare/CompareCommands.h"
#include "editor/sceneview/SceneCommands.h"
#include "editor/signals/DataCommands.h"
#include "editor/symbols/SymbolCommands.h"
#include "editor/templates/TemplateCommands.h"
#include "editor/usages/NodeCommands.h"
#include "editor/wizard/StepCommands.h"

namespace Editor {

const QVector<CommandRow> &CommandTable()
{
    using namespace StepCommands;
    static const QVector<CommandRow> own = {
        {"project.addWindow", "Проект", "Добавить окно…", "", "", &mayEdit, &addWindow},
        {"project.addReadings", "Проект", "Добавить показания…", "", "", &mayAddReadings,
         &addReadings},
        {"project.addModbus", "Проект", "Добавить устройство Modbus TCP", "", "", &mayEdit,
         &addModbus},
        {"project.addSimulator", "Проект", "Добавить имитатор", "", "", &mayEdit, &addSimulator},
        {"data.signals", "Проект", "Таблица сигналов и тревог", "", "Ctrl+T",
         &DataCommands::hasStation, &DataCommands::openSignals},
        {"data.users", "Проект", "Пользователи и права", "", "", &DataCommands::hasStation,
         &DataCommands::openUsers},
        {"symbols.states", "Правка", "Состояния мнемосимвола по сигналу", "", "",
         &SymbolCommands::canFillStates, &SymbolCommands::fillStates},
        {"templates.make", "Правка", "Сделать шаблон из выделения…", "", "",
         &TemplateCommands::canMake, &TemplateCommands::make},
        {"project.compareSaved", "Проект", "Сравнить с сохранённым", "", "", nullptr,
         &CompareWithSaved},
        {"project.compareFile", "Проект", "Сравнить с файлом…", "", "", nullptr, &CompareByDialog},
        {"rename", "Правка", "Переименовать", "", "F2", &NodeCommands::canRename,
         &NodeCommands::rename},
        {"usages", "Правка", "Найти использование", "", "Shift+F12", &NodeCommands::hasNodes,
         &NodeCommands::findUsages},
        {"replace", "Правка", "Заменить сигнал…", "", "Ctrl+H", nullptr,
         &NodeCommands::replaceNode},
        {"replace-pattern", "Правка", "Заменить по образцу…", "", "Ctrl+Alt+H", nullptr,
         &NodeCommands::replacePattern},
        {"find-node", "Правка", "Найти узел", "", "Ctrl+Shift+F", nullptr, &NodeCommands::findNode},
    };
    static const QVector<CommandRow> rows = SceneCommands() + own;
    return rows;
}

} // namespace Editor
