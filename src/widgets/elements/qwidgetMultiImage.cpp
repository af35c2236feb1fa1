#include "widgets/elements/qwidgetMultiImage.h"

#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/binding/StateVisibility.h"

#include "nodes/visual/elements/widgetMultiImage.h"

#include <QTimer>

namespace Widgets {

namespace {

const QImage &redCross()
{
    static const QImage image(QStringLiteral(":/icons/close_red.png"));
    return image;
}

} // namespace

qwidgetMultiImage::qwidgetMultiImage(Nodes::BasicWidget *node, QWidget *parent,
                                     const SceneContextPtr &context)
    : qwidgetImage(node, parent, context), m_multi(dynamic_cast<Nodes::widgetMultiImage *>(node))
{
}

qwidgetMultiImage::~qwidgetMultiImage() = default;

const PropertyBindings &qwidgetMultiImage::bindings() const
{
    using Prop = Node::Prop;
    static constexpr PropertyRow rows[] = {
        // The host shows and hides it as well; a state may forbid what the node allows.
        PropertyRow::only(Then::Value, Prop::BadImage, Prop::NoPicture, Prop::Visible),
    };
    static const PropertyBindings all(rows, &qwidgetImage::bindings());
    return all;
}

void qwidgetMultiImage::onUpdateProperties(Nodes::BasicProperty *property)
{
    m_isForced = true;
    qwidgetImage::onUpdateProperties(property);
    m_isForced = false;
}

void qwidgetMultiImage::onValueUpdated(Nodes::SignalValue handed)
{
    if (!m_multi)
        return;
    const Nodes::Quality marked = m_quality;
    const int state = m_multi->GetStateIndex(take(*m_multi, handed, isEditor()));
    if (marked != m_quality)
        DirectPainting::repaint(*this);
    if (state == m_lastState && !m_isForced && isRuntime())
        return;
    showState(state);
    m_lastState = state;
    DirectPainting::repaint(*this);
}

void qwidgetMultiImage::showState(int state)
{
    const Nodes::ResourceLink picture = m_multi->GetStateImage(state);
    if (!showPicture(picture)) {
        if (picture.GetFilePath().empty()) {
            showWithoutPicture(state);
            return;
        }
        showPlaceholder(placeholderOf(state)); // the picture of another state would be a lie
    }
    setHiddenByState(false);
}

QString qwidgetMultiImage::placeholderOf(int state) const
{
    const QString name = QString::fromStdString(m_multi->GetStateName(state));
    return name.isEmpty() ? QStringLiteral("?") : name;
}

void qwidgetMultiImage::showWithoutPicture(int state)
{
    const bool isBad = state == Nodes::widgetMultiImage::StateBad;
    switch (m_multi->GetNoPicture()) {
    case Nodes::widgetMultiImage::NoPictureHide:
        // Back in sight even when it was hidden: only the mark says then that nothing is known.
        if (!isBad)
            clearPicture();
        setHiddenByState(isRuntime() && !isBad);
        break;
    case Nodes::widgetMultiImage::NoPictureCross:
        if (!isRuntime())
            break;
        showBuiltIn(redCross());
        setHiddenByState(false);
        break;
    default:
        if (isBad && !hasPicture())
            showPlaceholder(placeholderOf(state));
        break;
    }
}

void qwidgetMultiImage::setHiddenByState(bool isHidden)
{
    m_isHiddenByState = isHidden;
    setVisibleByState(*this, !isHidden && m_multi->isVisible());
}

void qwidgetMultiImage::showEvent(QShowEvent *event)
{
    qwidgetImage::showEvent(event);
    // The host shows what the node calls visible; the state may still forbid it. Not at once: a
    // widget cannot be hidden while it is being shown.
    if (m_isHiddenByState)
        QTimer::singleShot(0, this, [this] {
            if (m_isHiddenByState)
                hide();
        });
}

} // namespace Widgets
