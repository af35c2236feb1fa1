#include "widgets/elements/qlabelBasic.h"

#include "widgets/elements/binding/ElementTooltip.h"

#include "nodes/visual/BasicWidget.h"
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
    m_binding.bind(this, m_node.get());
}

qlabelBasic::~qlabelBasic() = default;

void qlabelBasic::onActive(bool on)
{
    ElementBinding::setConnected(this, on);
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
