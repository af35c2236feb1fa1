#include "utils/editing/ActionFactory.h"

#include <QAction>
#include <QKeySequence>

namespace Utils {

namespace {

struct ActionRow
{
    ActionFactory::enActionType type;
    const char *title;
    const char *objectName;
    QKeySequence::StandardKey shortcut;
};

const ActionRow rows[] = {
    {ActionFactory::ActionCopy, "Копировать", "actionCopy", QKeySequence::Copy},
    {ActionFactory::ActionCut, "Вырезать", "actionCut", QKeySequence::Cut},
    {ActionFactory::ActionPaste, "Вставить", "actionPaste", QKeySequence::Paste},
    {ActionFactory::ActionDelete, "Удалить", "actionDelete", QKeySequence::Delete},
    {ActionFactory::ActionUndo, "Отменить", "actionUndo", QKeySequence::Undo},
    {ActionFactory::ActionRedo, "Повторить", "actionRedo", QKeySequence::Redo},
    {ActionFactory::ActionSelectAll, "Выделить всё", "actionSelectAll", QKeySequence::SelectAll},
};

} // namespace

ActionFactory &ActionFactory::getInstance()
{
    static ActionFactory factory;
    return factory;
}

QAction *ActionFactory::createAction(enActionType type, QObject *owner) const
{
    for (const ActionRow &row : rows) {
        if (row.type != type)
            continue;
        auto *action = new QAction(QString::fromUtf8(row.title), owner);
        action->setObjectName(QString::fromLatin1(row.objectName));
        action->setShortcuts(row.shortcut);
        return action;
    }
    return nullptr;
}

} // namespace Utils
