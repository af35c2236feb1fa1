#pragma once

#include "editor/properties/PropertyModel.h"
#include "nodes/ProjectFixture.h"
#include "utils/undo/IUndo.h"

#include <QUndoStack>

/// A drawing with labels, a multi image and signals, and one history of edits.
struct PropertyFixture : ProjectFixture
{
    PropertyFixture()
        : layer(addLayer()),
          a(add("label", layer, "a", {{"text", "Котёл"}, {"x", "10"}})),
          b(add("label", layer, "b", {{"text", "Котёл"}, {"x", "20"}})),
          multi(add("multiImage", layer, "multi")),
          signal(add("memorySignal", root(), "давление")),
          action(add("actionWriteValue", root(), "пуск"))
    {
        Utils::IUndo::setUndoStack(&stack);
    }
    ~PropertyFixture() { Utils::IUndo::setUndoStack(nullptr); }

    Editor::PropertyEdits::Push push()
    {
        return [this](QUndoCommand *command) {
            stack.push(command);
            return true;
        };
    }
    static QModelIndex cell(const Editor::PropertyModel &model, const char *key)
    {
        const QModelIndex row = model.find(QString::fromUtf8(key));
        return row.sibling(row.row(), Editor::PropertyModel::ColumnValue);
    }

    Nodes::ConfigNode *layer;
    Nodes::ConfigNode *a;
    Nodes::ConfigNode *b;
    Nodes::ConfigNode *multi;
    Nodes::ConfigNode *signal;
    Nodes::ConfigNode *action;
    QUndoStack stack;
};
