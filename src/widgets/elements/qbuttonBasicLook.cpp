// How a button takes its looks from its node.
#include "widgets/elements/pictures/ImageCachingManager.h"
#include "widgets/elements/pictures/MissingPicture.h"
#include "widgets/elements/pictures/PictureDecoder.h"
#include "widgets/elements/pictures/PictureIcon.h"
#include "widgets/elements/qbuttonBasic.h"

#include "nodes/model/properties/BasicProperty.h"
#include "nodes/visual/elements/widgetButton.h"
#include "utils/convert/ValueConversions.h"

#include <QApplication>
#include <QStyle>
#include <QStyleFactory>
#include <QTimer>

namespace Widgets {

namespace {

using Nodes::widgetButton;

/// Null for the codes that use the application's style.
const char *styleName(int code)
{
    switch (code) {
    case widgetButton::StyleWindows:
        return "Windows";
    case widgetButton::StyleWindowsXP:
        return "WindowsXP";
    case widgetButton::StyleWindowsVista:
        return "WindowsVista";
    case widgetButton::StyleMacintosh:
        return "Macintosh";
    case widgetButton::StyleFusion:
        return "Fusion";
    default:
        return nullptr;
    }
}

} // namespace

void qbuttonBasic::onUpdateProperties(Nodes::BasicProperty *property)
{
    if (!m_button)
        return;
    if (property && widgetButton::Prop::Has(property->GetValueId())) {
        setGeometry(Utils::NRectToQRect(m_button->GetGeometry()));
        return;
    }
    applyStyle(m_button->GetStyle());
    applyAlignment();
    setFont(Utils::NFontToQFont(m_button->GetFont()));
    m_textColor = Utils::NColorToQColor(m_button->GetTextColor());
    applySheet(m_button->GetStyle());
    applyPicture();
    // Most styles draw their panel opaque, whatever the colour; a flat button has none until it is
    // pressed.
    setFlat(m_button->isDisabled() || m_button->GetStyle() == widgetButton::StyleTransparent);
    onValueUpdated(Nodes::SignalValue());
    update();
}

void qbuttonBasic::applyStyle(int code)
{
    const bool isKnown =
        code >= widgetButton::StyleApplication && code <= widgetButton::StyleTransparent;
    if (!isKnown || code == m_styleCode)
        return;
    m_styleCode = code;
    const char *name = styleName(code);
    // Null where this platform has no such style: the application's is used then.
    std::unique_ptr<QStyle> own(name ? QStyleFactory::create(QLatin1String(name)) : nullptr);
    setStyle(own ? own.get() : QApplication::style());
    m_ownStyle = std::move(own);
}

void qbuttonBasic::applyAlignment()
{
    const Qt::Alignment flags = Utils::NAligmentToQtAligment(m_button->GetHorizontalAlignment(),
                                                             m_button->GetVerticalAlignment());
    m_alignmentFlags = int(flags);
    m_alignmentWords = flags & Qt::AlignLeft    ? QStringLiteral("left ")
                       : flags & Qt::AlignRight ? QStringLiteral("right ")
                                                : QStringLiteral("center ");
    m_alignmentWords += flags & Qt::AlignTop      ? QStringLiteral("top")
                        : flags & Qt::AlignBottom ? QStringLiteral("bottom")
                                                  : QStringLiteral("center");
}

void qbuttonBasic::applySheet(int styleCode)
{
    const bool isTransparent = styleCode == widgetButton::StyleTransparent;
    QString sheet;
    if (isTransparent)
        sheet = QStringLiteral("background-color: rgba(255, 255, 255, 0);");
    sheet += QStringLiteral("text-align:%1;").arg(m_alignmentWords);
    if (!isTransparent)
        sheet += QStringLiteral("background-color: rgba(%1);")
                     .arg(QString::fromStdString(m_button->GetBackgroundColor().ToString(true)));
    // Parsing a sheet and polishing after it is dear.
    if (sheet != styleSheet())
        setStyleSheet(sheet);
}

void qbuttonBasic::applyPicture()
{
    const Nodes::ResourceLink &link = m_button->GetImage();
    m_isPictureMissing = false;
    if (link.GetFilePath().empty())
        return; // the icon stays
    const Nodes::ResourcePtr resource = link.Load();
    const QImage *image = ImageCachingManager::getInstance().getImage(resource);
    m_isPictureMissing = !image || image->isNull();
    if (m_isPictureMissing) {
        MissingPicture::report(context(), *m_button, link);
        return;
    }
    if (resource == m_resource)
        return;
    m_resource = resource;
    const bool isVector = PictureDecoder::isVector(PictureDecoder::bytes(resource));
    setIcon(QIcon(new PictureIcon(resource, isVector)));
    QTimer::singleShot(0, this, &qbuttonBasic::fitIcon);
}

void qbuttonBasic::fitIcon()
{
    setIconSize(size());
}

void qbuttonBasic::resizeEvent(QResizeEvent *event)
{
    QPushButton::resizeEvent(event);
    fitIcon();
}

} // namespace Widgets
