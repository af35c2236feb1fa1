#include "editor/tables/CommandTable.h"

#include "editor/compare/CompareCommands.h"
#include "editor/help/HelpCommands.h"
#include "editor/jump/JumpCommands.h"
#include "editor/sceneview/SceneCommands.h"
#include "editor/shell/TabCommands.h"
#include "editor/signals/DataCommands.h"
#include "editor/symbols/SymbolCommands.h"
#include "editor/templates/TemplateCommands.h"
#include "editor/usages/NodeCommands.h"
#include "editor/wizard/StepCommands.h"

namespace Editor {

namespace {

QVector<CommandRow> tabsAndHelp()
{
    return {
        {"tabs.next", "Вид/Вкладки", "Следующая вкладка", ":/editor/icons/tabNext.svg", "Ctrl+Tab",
         &TabCommands::hasSeveral, &TabCommands::next},
        {"tabs.previous", "Вид/Вкладки", "Предыдущая вкладка", ":/editor/icons/tabPrevious.svg",
         "Ctrl+Shift+Tab", &TabCommands::hasSeveral, &TabCommands::previous},
        {"tabs.close", "Вид/Вкладки", "Закрыть вкладку", ":/editor/icons/tabClose.svg", "Ctrl+W",
         &TabCommands::hasTab, &TabCommands::close},
        {"tabs.closeOthers", "Вид/Вкладки", "Закрыть остальные вкладки",
         ":/editor/icons/tabCloseOthers.svg", "", &TabCommands::hasSeveral,
         &TabCommands::closeOthers},
        {"tabs.reopen", "Вид/Вкладки", "Открыть закрытую вкладку", ":/editor/icons/tabReopen.svg",
         "Ctrl+Shift+T", &TabCommands::canReopen, &TabCommands::reopen},
        {"help.keys", "Справка", "Клавиши", ":/editor/icons/keys.svg", "F1", &HelpCommands::always,
         &HelpCommands::showKeys},
        {"help.documents", "Справка", "Документация", ":/editor/icons/documents.svg", "",
         &HelpCommands::hasDocuments, &HelpCommands::openDocuments},
        {"", "Справка", "-", "", "", nullptr, nullptr},
        {"help.about", "Справка", "О программе", ":/editor/icons/about.svg", "",
         &HelpCommands::always, &HelpCommands::showAbout},
    };
}

} // namespace

const QVector<CommandRow> &CommandTable()
{
    using namespace StepCommands;
    static const QVector<CommandRow> own = {
        {"project.addScreens", "Проект", "Добавить экраны станции…",
         ":/editor/icons/addScreens.svg", "", &mayEdit, &addScreens},
        {"project.addPage", "Проект", "Добавить страницу…", ":/editor/icons/addPage.svg", "",
         &mayAddPage, &addPage},
        {"project.addWindow", "Проект", "Добавить окно…", ":/editor/icons/addWindow.svg", "",
         &mayEdit, &addWindow},
        {"project.addReadings", "Проект", "Добавить показания…", ":/editor/icons/addReadings.svg",
         "", &mayAddReadings, &addReadings},
        {"project.addModbus", "Проект", "Добавить устройство Modbus TCP",
         ":/editor/icons/addModbus.svg", "", &mayEdit, &addModbus},
        {"project.addSimulator", "Проект", "Добавить имитатор", ":/editor/icons/addSimulator.svg",
         "", &mayEdit, &addSimulator},
        {"", "Проект", "-", "", "", nullptr, nullptr},
        {"data.signals", "Проект", "Таблица сигналов и тревог", ":/editor/icons/table.svg",
         "Ctrl+T", &DataCommands::hasStation, &DataCommands::openSignals},
        {"data.users", "Проект", "Пользователи и права", ":/editor/icons/users.svg", "",
         &DataCommands::hasStation, &DataCommands::openUsers},
        {"", "Правка", "-", "", "", nullptr, nullptr},
        {"symbols.states", "Правка", "Состояния мнемосимвола по сигналу",
         ":/editor/icons/states.svg", "", &SymbolCommands::canFillStates,
         &SymbolCommands::fillStates},
        {"templates.make", "Правка", "Сделать шаблон из выделения…",
         ":/editor/icons/makeTemplate.svg", "", &TemplateCommands::canMake,
         &TemplateCommands::make},
        {"templates.choose", "Правка", "Выбрать шаблон экземпляра…",
         ":/editor/icons/chooseTemplate.svg", "", &TemplateCommands::canChoose,
         &TemplateCommands::choose},
        {"templates.open", "Правка", "Открыть шаблон", ":/editor/icons/openTemplate.svg",
         "Ctrl+Shift+E", &TemplateCommands::canOpen, &TemplateCommands::open},
        {"", "Проект", "-", "", "", nullptr, nullptr},
        {"project.compareSaved", "Проект", "Сравнить с сохранённым", ":/editor/icons/compare.svg",
         "", nullptr, &CompareWithSaved},
        {"project.compareFile", "Проект", "Сравнить с файлом…", ":/editor/icons/compareFile.svg",
         "", nullptr, &CompareByDialog},
        {"", "Правка", "-", "", "", nullptr, nullptr},
        {"rename", "Правка", "Переименовать", ":/editor/icons/rename.svg", "F2",
         &NodeCommands::canRename, &NodeCommands::rename},
        {"usages", "Правка", "Найти использование", ":/editor/icons/usages.svg", "Shift+F12",
         &NodeCommands::hasNodes, &NodeCommands::findUsages},
        {"replace", "Правка", "Заменить сигнал…", ":/editor/icons/replace.svg", "Ctrl+H", nullptr,
         &NodeCommands::replaceNode},
        {"replace-pattern", "Правка", "Заменить по образцу…", ":/editor/icons/replacePattern.svg",
         "Ctrl+Alt+H", nullptr, &NodeCommands::replacePattern},
        {"find-node", "Правка", "Найти узел", ":/editor/icons/find.svg", "Ctrl+Shift+F", nullptr,
         &NodeCommands::findNode},
        {"jump", "Правка", "Быстрый переход…", ":/editor/icons/jump.svg", "Ctrl+P",
         &HelpCommands::always, &JumpCommands::jump},
    };
    static const QVector<CommandRow> rows = SceneCommands() + own + tabsAndHelp();
    return rows;
}

} // namespace Editor
