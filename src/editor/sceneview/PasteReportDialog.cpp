#include "editor/sceneview/PasteReportDialog.h"

#include "editor/project/ProjectSession.h"
#include "editor/workspace/Workspace.h"

#include "widgets/scene/editing/paste/PasteReport.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace Editor {

namespace {

constexpr int idRole = Qt::UserRole;
constexpr int pathColumn = 2;

QString stateText(Widgets::PasteReport::Row::enState state)
{
    return state == Widgets::PasteReport::Row::Missing
               ? QStringLiteral("нет в этом проекте")
               : QStringLiteral("под вопросом: источник неизвестен");
}

} // namespace

PasteReportDialog::PasteReportDialog(Workspace &workspace, const Widgets::PasteReport &report)
    : QDialog(workspace.window()), m_workspace(workspace), m_rows(new QTreeWidget(this))
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Вставленные элементы: ссылки"));
    resize(900, 380);
    auto *text = new QLabel(
        QStringLiteral("Элементы вставлены. Этим ссылкам нужна проверка; пока цели нет, элемент "
                       "показывает ошибку, а не значение."),
        this);
    text->setWordWrap(true);
    m_rows->setAccessibleName(windowTitle());
    m_rows->setHeaderLabels({QStringLiteral("Элемент"), QStringLiteral("Свойство"),
                             QStringLiteral("Искомый путь"), QStringLiteral("Состояние")});
    m_rows->setRootIsDecorated(false);
    m_rows->setUniformRowHeights(true);
    for (const Widgets::PasteReport::Row &row : report.rows) {
        auto *item = new QTreeWidgetItem(
            m_rows, {row.elementName, row.property, row.wanted, stateText(row.state)});
        item->setToolTip(pathColumn, row.wanted);
        item->setData(0, idRole, QVariant::fromValue<qulonglong>(row.element.GetNodeId()));
    }
    m_rows->setTextElideMode(Qt::ElideMiddle); // both ends of a path tell more than its middle
    m_rows->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_rows->header()->setSectionResizeMode(pathColumn, QHeaderView::Stretch);
    m_rows->header()->setStretchLastSection(false);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setText(QStringLiteral("Закрыть"));
    QPushButton *show =
        buttons->addButton(QStringLiteral("Показать элемент"), QDialogButtonBox::ActionRole);
    auto *column = new QVBoxLayout(this);
    column->addWidget(text);
    column->addWidget(m_rows, 1);
    column->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    connect(show, &QPushButton::clicked, this, [this] { showElement(m_rows->currentItem()); });
    connect(m_rows, &QTreeWidget::itemActivated, this, &PasteReportDialog::showElement);
    connect(&workspace.session(), &ProjectSession::aboutToClose, this, &QDialog::close);
}

void PasteReportDialog::tell(Workspace &workspace, const Widgets::PasteReport &report)
{
    if (report.isClean())
        return;
    workspace.tell(report.isFailure() ? Workspace::Error
                   : report.isSound() ? Workspace::Info
                                      : Workspace::Warning,
                   report.summary());
    if (!report.rows.isEmpty())
        (new PasteReportDialog(workspace, report))->show();
}

void PasteReportDialog::showElement(const QTreeWidgetItem *row)
{
    const Nodes::NodesCollection *project = m_workspace.session().project();
    if (!row || !project)
        return;
    m_workspace.reveal(Nodes::NodeLink(project->FindNode(row->data(0, idRole).toULongLong())));
}

} // namespace Editor
