#include "editor/properties/PropertyPanel.h"

#include "editor/project/ProjectSession.h"
#include "editor/properties/GeometryPreview.h"
#include "editor/properties/PropertyModel.h"
#include "editor/properties/PropertyView.h"
#include "editor/workspace/KeyboardAccess.h"
#include "editor/workspace/Workspace.h"

#include <QDockWidget>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace Editor {

namespace {

QLabel *makeNotice(QWidget *parent, const QString &style)
{
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setStyleSheet(style);
    label->setContentsMargins(6, 4, 6, 4);
    label->hide();
    return label;
}

bool isPressed()
{
    return QGuiApplication::mouseButtons() & Qt::LeftButton;
}

PropertyHost hostOf(Workspace &workspace)
{
    return {[&workspace](QUndoCommand *command) { return workspace.push(command); },
            [&workspace](const Nodes::NodeLink &node) { workspace.reveal(node); }};
}

} // namespace

PropertyPanel::PropertyPanel(Workspace &workspace, QWidget *parent)
    : QWidget(parent),
      m_workspace(workspace),
      m_search(new QLineEdit(this)),
      m_readOnly(makeNotice(this, QStringLiteral("background: #fff3cd; color: #20262c;"))),
      m_view(new PropertyView(hostOf(workspace), this)),
      m_refusal(makeNotice(this, QStringLiteral("background: #fdecea; color: #8c1d18;"))),
      m_nothing(new QLabel(QStringLiteral("Ничего не выбрано"), this))
{
    KeyboardAccess::makeSearchLine(*m_search, QStringLiteral("Поиск свойства"));
    m_nothing->setAlignment(Qt::AlignCenter);
    m_nothing->setEnabled(false);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(m_search);
    layout->addWidget(m_readOnly);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_nothing, 1);
    layout->addWidget(m_refusal);
    setMinimumWidth(260);
    connect(m_search, &QLineEdit::textChanged, m_view, &PropertyView::search);
    connect(&m_view->properties(), &PropertyModel::refused, this, &PropertyPanel::showRefusal);
    connect(&workspace.selection(), &Selection::changed, this, &PropertyPanel::takeSelection);
    connect(&workspace, &Workspace::propertyRequested, this, &PropertyPanel::goTo);
    m_released.setInterval(30);
    connect(&m_released, &QTimer::timeout, this, [this] {
        if (!isPressed())
            showSelection();
    });
    connect(&m_view->properties(), &PropertyModel::dropped, this, &PropertyPanel::keepNodes);
    connect(&workspace.session(), &ProjectSession::aboutToClose, m_view,
            [this] { m_view->setNodes({}); });
    connect(&workspace.session(), &ProjectSession::readOnlyChanged, this,
            &PropertyPanel::showReadOnly);
    connect(&m_view->properties(), &PropertyModel::nodesChanged, this, [this] {
        const bool isEmpty = m_view->properties().nodes().empty();
        m_view->setVisible(!isEmpty);
        m_nothing->setVisible(isEmpty);
    });
    new GeometryPreview(workspace, m_view->properties(), this);
    showSelection();
    showReadOnly();
}

PropertyPanel::~PropertyPanel() = default;

// Wide enough for the longest values at 1366 pixels, with room for a scene beside it.
QSize PropertyPanel::sizeHint() const
{
    return {320, 600};
}

void PropertyPanel::takeSelection(const Nodes::NodeLinks &, QObject *by)
{
    // What follows a press, such as a scene that lets go of its elements, waits with it.
    if (isPressed() && (m_released.isActive() || qobject_cast<QWidget *>(by)))
        m_released.start();
    else
        showSelection();
}

// What was dropped on goes on being worked on, not what was dragged.
void PropertyPanel::keepNodes()
{
    if (!m_released.isActive())
        return;
    m_released.stop();
    m_workspace.selection().select(m_view->properties().nodes().GetLinks(), this);
}

void PropertyPanel::showSelection()
{
    m_released.stop();
    showRefusal(QString());
    m_view->setNodes(m_workspace.selection().nodes());
}

void PropertyPanel::goTo(const QString &key)
{
    m_search->clear(); // it may hide the row
    const QModelIndex row = m_view->find(key);
    if (!row.isValid())
        return;
    if (auto *dock = qobject_cast<QDockWidget *>(parentWidget())) {
        dock->show();
        dock->raise();
    }
    m_view->setCurrentIndex(row);
    m_view->scrollTo(row);
    m_view->setFocus();
}

void PropertyPanel::showReadOnly()
{
    const QString reason = m_workspace.session().readOnlyReason();
    m_view->setReadOnly(reason);
    m_readOnly->setText(QStringLiteral("Только чтение: %1").arg(reason));
    m_readOnly->setVisible(!reason.isEmpty());
}

void PropertyPanel::showRefusal(const QString &reason)
{
    m_refusal->setText(reason);
    m_refusal->setVisible(!reason.isEmpty());
}

} // namespace Editor
