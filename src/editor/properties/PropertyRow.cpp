#include "editor/properties/PropertyRow.h"

#include "nodes/model/properties/PropertyDescriptor.h"

namespace Editor {

bool PropertyRow::isEditable() const
{
    switch (what) {
    case Name:
    case Description:
        return true;
    case Property:
        return descriptor->editorHint != "readonly";
    default:
        return false;
    }
}

} // namespace Editor
