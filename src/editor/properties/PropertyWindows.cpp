#include "editor/properties/PropertyWindows.h"

#include "editor/properties/PropertyModel.h"
#include "editor/properties/children/ChildrenWindow.h"
#include "editor/properties/font/FontWindow.h"
#include "editor/properties/links/LinksWindow.h"

#include "nodes/model/properties/PropertyDescriptor.h"

namespace Editor {

namespace {

bool isList(const PropertyRow &row)
{
    return row.what == PropertyRow::Property &&
           row.descriptor->binding.type == Nodes::PropertyType::Links;
}

} // namespace

bool PropertyWindows::has(const PropertyRow &row)
{
    return row.what == PropertyRow::Font || row.what == PropertyRow::Children || isList(row);
}

void PropertyWindows::open(const PropertyRow &row, PropertyModel &model, const PropertyHost &host,
                           QWidget &parent)
{
    QDialog *window = nullptr;
    if (row.what == PropertyRow::Font)
        window = new FontWindow(model, row.key, &parent);
    else if (row.what == PropertyRow::Children)
        window = new ChildrenWindow(model.nodes()[0], row.family, host, model.edits().readOnly(),
                                    &parent);
    else if (isList(row))
        window = new LinksWindow(model, row.key, host, &parent);
    if (!window)
        return;
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->setWindowTitle(row.title);
    window->open();
}

} // namespace Editor
