#include "editor/properties/values/LogicalValueEditor.h"

#include "nodes/model/ConfigNode.h"
#include "nodes/model/KindInfo.h"
#include "nodes/signals/BasicSignal.h"

#include <QComboBox>

namespace Editor {

namespace {

// The node itself, what it is linked with, or that of the node it stands below.
const Nodes::BasicSignal *signalOf(const Nodes::ConfigNode *node)
{
    for (int level = 0; node && level < 2; ++level, node = node->GetParent()) {
        if (const auto *signal = dynamic_cast<const Nodes::BasicSignal *>(node))
            return signal;
        const Nodes::KindInfo *kind = node->GetKind();
        const Nodes::PropertyDescriptor *d =
            kind ? kind->FindProperty(std::string_view("signal")) : nullptr;
        if (!d || d->binding.type != Nodes::PropertyType::Link)
            continue;
        const auto &link = *static_cast<const Nodes::NodeLink *>(d->binding.data(*node));
        if (!link.isEmpty())
            return dynamic_cast<const Nodes::BasicSignal *>(link.GetNode());
    }
    return nullptr;
}

} // namespace

bool LogicalValueEditor::fits(const ValueContext &context)
{
    const Nodes::BasicSignal *signal = signalOf(context.node.GetNode());
    return signal && signal->GetValueType() == Nodes::enSignalValueType::Bool;
}

LogicalValueEditor::LogicalValueEditor(const ValueContext &context, QWidget *parent)
    : ValueEditor(context, parent), m_box(new QComboBox(this))
{
    m_box->addItem(QStringLiteral("не задано"), QString());
    m_box->addItem(QStringLiteral("да (true)"), QStringLiteral("true"));
    m_box->addItem(QStringLiteral("нет (false)"), QStringLiteral("false"));
    m_box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMain(m_box);
    connect(m_box, QOverload<int>::of(&QComboBox::activated), this, [this] { finish(); });
}

LogicalValueEditor::~LogicalValueEditor() = default;

// "1" and the like are kept as they are.
void LogicalValueEditor::setText(const QString &text)
{
    int place = m_box->findData(text);
    if (place < 0) {
        m_box->addItem(text, text);
        place = m_box->count() - 1;
    }
    m_box->setCurrentIndex(place);
}

QString LogicalValueEditor::text() const
{
    return m_box->currentData().toString();
}

} // namespace Editor
