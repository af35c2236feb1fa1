#pragma once

#include "support/RuntimeProject.h"

#include "widgets/scene/editing/arrange/EditedElements.h"

#include "nodes/serial/ProjectWriter.h"
#include "nodes/visual/BasicWidget.h"
#include "utils/undo/IUndo.h"

#include <QUndoStack>

/// A project that is edited, with an undo stack.
class EditedProject : public RuntimeProject
{
public:
    explicit EditedProject(const char *nodes) : RuntimeProject(nodes, Nodes::WorkModeEditing)
    {
        Utils::IUndo::setUndoStack(&stack);
    }
    ~EditedProject() { Utils::IUndo::setUndoStack(nullptr); }

    Widgets::EditedElements elements(std::initializer_list<unsigned long> ids,
                                     unsigned long key = 0, unsigned long document = 0) const
    {
        Widgets::EditedElements edited;
        for (const unsigned long id : ids)
            edited.elements.push_back(node<Nodes::BasicWidget>(id));
        edited.key = node<Nodes::BasicWidget>(key);
        edited.document = node(document);
        return edited;
    }
    QRect place(unsigned long id) const
    {
        const Nodes::NRect r = node<Nodes::BasicWidget>(id)->GetGeometry();
        return {r.x, r.y, r.width, r.height};
    }
    std::string text() const { return Nodes::ProjectWriter::ToText(*core.GetNodesCollection()); }
    /// Pushes the command; whether undo brings back the text of before, redo that of after.
    bool pushAndTakeBack(QUndoCommand *command)
    {
        const std::string before = text();
        stack.push(command);
        const std::string after = text();
        stack.undo();
        const bool isBack = text() == before;
        stack.redo();
        return isBack && before != after && text() == after;
    }

    QUndoStack stack;
};
