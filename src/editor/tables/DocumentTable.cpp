#include "editor/tables/DocumentTable.h"

#include "editor/drivers/DriverView.h"
#include "editor/reports/ReportDocument.h"
#include "editor/sceneview/SceneDocument.h"
#include "editor/signals/SignalTable.h"
#include "editor/users/UsersView.h"

namespace Editor {

namespace {

template <class Document>
DocumentView *make(Workspace &workspace, const Nodes::NodeLink &node, QWidget *parent)
{
    return new Document(workspace, node, parent);
}

} // namespace

const QVector<DocumentRow> &DocumentTable()
{
    static const QVector<DocumentRow> rows = {
        {&SceneDocument::shows, &make<SceneDocument>},
        {&DriverView::shows, &make<DriverView>},
        {&UsersView::shows, &make<UsersView>},
        {&ReportDocument::shows, &make<ReportDocument>},
        {&SignalTable::shows, &make<SignalTable>},
    };
    return rows;
}

const DocumentRow *FindDocument(const Nodes::ConfigNode &node)
{
    for (const DocumentRow &row : DocumentTable()) {
        if (row.shows(node))
            return &row;
    }
    return nullptr;
}

} // namespace Editor
