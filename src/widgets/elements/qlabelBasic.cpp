#include "widgets/elements/qlabelBasic.h"

#include "widgets/elements/binding/ElementTooltip.h"

#include "nodes/visual/BasicWidget.h"
#include "utils/convert/MetaTypes.h"
#include "utils/convert/ValueConversions.h"

#include <QMouseEvent>

namespace Widgets {

qlabelBasic::qlabelBasic(Nodes::BasicWidget *node, QWidget *parent, const SceneContextPtr &context)
    : QLabel(parent, Qt::WindowFlags()), IWidget(node, context)
{
    if (isEditor())
        setAcceptDrops(true);
    if (m_node)
        setGeometry(Utils::NRectToQRect(m_node->GetGeometry()));
    bind();
}

qlabelBasic::~qlabelBasic() = default;

void qlabelBasic::bind()
{
    Utils::NodeRelay::Handlers handlers;
    handlers.propertyChanged = [this](Nodes::BasicProperty *p) { emit updateProperty(p); };
    Nodes::BasicWidget *node = m_node.get();
    handlers.valueChanged = [this, node] { emit valueUpdated(node->GetValue()); };
    m_relay.connect(node, std::move(handlers));
}

void qlabelBasic::onActive(bool on)
{
    if (!on) {
        disconnect(this, &qlabelBasic::updateProperty, this, &qlabelBasic::onUpdateProperties);
        disconnect(this, &qlabelBasic::valueUpdated, this, &qlabelBasic::onValueUpdated);
        return;
    }
    connect(this, &qlabelBasic::updateProperty, this, &qlabelBasic::onUpdateProperties,
            Qt::UniqueConnection);
    connect(this, &qlabelBasic::valueUpdated, this, &qlabelBasic::onValueUpdated,
            Qt::UniqueConnection);
    onUpdateProperties(nullptr);
}

void qlabelBasic::mousePressEvent(QMouseEvent *event)
{
    QLabel::mousePressEvent(event);
}

bool qlabelBasic::event(QEvent *event)
{
    return ElementTooltip::show(event, m_node.get()) || QLabel::event(event);
}

} // namespace Widgets
