#include "editor/properties/values/LinkEditor.h"

#include "editor/picker/NodePicker.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/NodesCollection.h"
#include "nodes/model/properties/PropertyDescriptor.h"

#include <QLineEdit>
#include <QToolButton>

namespace Editor {

LinkEditor::LinkEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_line(new QLineEdit(this))
{
    m_line->setReadOnly(true);
    m_line->setFrame(false);
    setMain(m_line);
    QToolButton *other = addButton(QStringLiteral("…"), QStringLiteral("Выбрать узел (Alt+Вниз)"));
    other->setShortcut(QKeySequence(Qt::ALT + Qt::Key_Down));
    connect(other, &QToolButton::clicked, this, &LinkEditor::pick);
    QToolButton *none = addButton(QStringLiteral("×"), QStringLiteral("Очистить (Delete)"));
    none->setShortcut(QKeySequence(Qt::Key_Delete));
    connect(none, &QToolButton::clicked, this, [this] {
        setText(QString());
        finish();
    });
    QToolButton *go = addButton(QStringLiteral("→"), QStringLiteral("Показать в дереве проекта"));
    go->setEnabled(bool(context.reveal));
    connect(go, &QToolButton::clicked, this, [this] {
        const Nodes::NodeLink link(m_text.toULong(), this->context().project);
        if (link.isValid())
            this->context().reveal(link);
    });
}

LinkEditor::~LinkEditor() = default;

void LinkEditor::setText(const QString &text)
{
    m_text = text;
    const Nodes::NodesCollection *project = context().project;
    const Nodes::ConfigNode *node = project ? project->FindNode(text.toULong()) : nullptr;
    const QString none = text.isEmpty() ? QString() : QStringLiteral("узла %1 нет").arg(text);
    m_line->setText(node ? QString::fromStdString(node->GetPath()) : none);
    m_line->setPlaceholderText(QStringLiteral("нет"));
    m_line->setToolTip(m_line->text());
}

QString LinkEditor::text() const
{
    return m_text;
}

void LinkEditor::pick()
{
    auto *picker = new NodePicker(context().project, descriptor(), this);
    picker->setCurrent(m_text.toULong());
    connect(picker, &NodePicker::picked, this, [this](const Nodes::NodeLinks &links) {
        setText(QString::number(links.front().GetNodeId()));
        finish();
    });
    picker->open();
}

} // namespace Editor
