#include "widgets/windows/frames/StationFrames.h"

#include "widgets/windows/WindowBuilder.h"
#include "widgets/windows/frames/FrameDisplays.h"
#include "widgets/windows/frames/FrameWidget.h"
#include "widgets/windows/frames/FrameWindow.h"

#include "nodes/model/NodesCollection.h"
#include "nodes/visual/windows/BasicFrame.h"

namespace Widgets {

using Nodes::NodeType;

StationFrames::StationFrames(OpenWindows &windows, QObject *parent)
    : m_windows(windows), m_displays(new FrameDisplays(parent))
{
}

void StationFrames::start(const Nodes::NodesCollection &project)
{
    Nodes::NodeLinks nodes;
    project.FindNodes(NodeType::TypeFrame, &nodes);
    for (const Nodes::NodeLink &link : nodes) {
        const auto *node = dynamic_cast<Nodes::BasicFrame *>(link.GetNode());
        QWidget *frame = node && node->IsLocal() ? create(link.GetNode()) : nullptr;
        if (!frame)
            continue;
        m_current = frame;
        m_displays->add(frame);
    }
    m_displays->show();
}

QList<QWidget *> StationFrames::openWindows(const Nodes::BasicFrame &node)
{
    QList<QWidget *> windows;
    for (const Nodes::NodeLink &link : node.GetWindows()) {
        if (QWidget *window = WindowBuilder::open(m_windows, link.GetNode(), m_current).widget)
            windows.append(window);
    }
    return windows;
}

QWidget *StationFrames::create(Nodes::ConfigNode *node)
{
    auto *frame = dynamic_cast<Nodes::BasicFrame *>(node);
    if (!frame || node->GetNodeType().GetFamily() != NodeType::TypeFrame)
        return nullptr;
    auto *widget = new FrameWidget(nullptr);
    widget->setWindowTitle(QString::fromStdString(frame->GetName()));
    widget->setNode(frame);
    widget->setWindows(openWindows(*frame));
    if (frame->GetBorderType() != Nodes::BasicFrame::BorderDecorated) {
        widget->setWindowFlags(Qt::FramelessWindowHint);
        return widget;
    }
    auto *decorated = new FrameWindow(nullptr);
    decorated->setResizeableFrame(false);
    const QPoint place = widget->pos();
    decorated->setWidget(widget);
    decorated->move(place);
    return decorated;
}

void StationFrames::destroyAll()
{
    const QVector<QPointer<QWidget>> frames = m_displays->frames();
    for (const QPointer<QWidget> &frame : frames)
        delete frame;
}

} // namespace Widgets
