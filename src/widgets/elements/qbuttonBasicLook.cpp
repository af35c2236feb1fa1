// How a button takes its looks from its node.
#include "widgets/elements/binding/PropertyBindings.h"
#include "widgets/elements/pictures/ImageCachingManager.h"
#include "widgets/elements/pictures/MissingPicture.h"
#include "widgets/elements/pictures/PictureDecoder.h"
#include "widgets/elements/pictures/PictureIcon.h"
#include "widgets/elements/qbuttonBasic.h"

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

const PropertyBindings &qbuttonBasic::bindings() const
{
    using Prop = widgetButton::Prop;
    static constexpr PropertyRow rows[] = {
        PropertyRow::geometry<qbuttonBasic>(Then::Nothing),
        PropertyRow::takes<&qbuttonBasic::applyStyle>(Then::Repaint, Prop::Style),
        PropertyRow::takes<&qbuttonBasic::applyAlignment>(Then::Repaint, Prop::Align, Prop::Valign),
        PropertyRow::takes<&qbuttonBasic::takeText>(Then::Repaint, Prop::FontFamily, Prop::FontSize,
                                                    Prop::Bold, Prop::Italic, Prop::Underline,
                                                    Prop::StrikeOut, Prop::Color),
        PropertyRow::takes<&qbuttonBasic::applySheet>(Then::Repaint, Prop::Style, Prop::Align,
                                                      Prop::Valign, Prop::Background),
        PropertyRow::takes<&qbuttonBasic::applyPicture>(Then::Repaint, Prop::Image),
        PropertyRow::takes<&qbuttonBasic::applyFlat>(Then::Repaint, Prop::Style, Prop::Disabled),
        PropertyRow::only(Then::Repaint, Prop::Angle),
        PropertyRow::only(Then::Value, Prop::Signal, Prop::Text, Prop::OnText, Prop::OffText),
        // The lists are read when they are run, the key when the button is made.
        PropertyRow::only(Then::Nothing, Prop::PressActions, Prop::ReleaseActions, Prop::HotKey),
    };
    static constexpr PropertyBindings all(rows);
    return all;
}

void qbuttonBasic::onUpdateProperties(Nodes::BasicProperty *property)
{
    const widgetButton *button = m_button.get();
    if (button && takeOver(*button, property))
        update();
}

void qbuttonBasic::takeText(const widgetButton &button)
{
    setFont(Utils::NFontToQFont(button.GetFont()));
    m_textColor = Utils::NColorToQColor(button.GetTextColor());
}

// Most styles draw their panel opaque, whatever the colour; a flat button has none until it is
// pressed.
void qbuttonBasic::applyFlat(const widgetButton &button)
{
    setFlat(button.isDisabled() || button.GetStyle() == widgetButton::StyleTransparent);
}

void qbuttonBasic::applyStyle(const widgetButton &button)
{
    const int code = button.GetStyle();
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

void qbuttonBasic::applyAlignment(const widgetButton &button)
{
    const Qt::Alignment flags = Utils::NAligmentToQtAligment(button.GetHorizontalAlignment(),
                                                             button.GetVerticalAlignment());
    m_alignmentFlags = int(flags);
    m_alignmentWords = flags & Qt::AlignLeft    ? QStringLiteral("left ")
                       : flags & Qt::AlignRight ? QStringLiteral("right ")
                                                : QStringLiteral("center ");
    m_alignmentWords += flags & Qt::AlignTop      ? QStringLiteral("top")
                        : flags & Qt::AlignBottom ? QStringLiteral("bottom")
                                                  : QStringLiteral("center");
}

void qbuttonBasic::applySheet(const widgetButton &button)
{
    const bool isTransparent = button.GetStyle() == widgetButton::StyleTransparent;
    QString sheet;
    if (isTransparent)
        sheet = QStringLiteral("background-color: rgba(255, 255, 255, 0);");
    sheet += QStringLiteral("text-align:%1;").arg(m_alignmentWords);
    if (!isTransparent)
        sheet += QStringLiteral("background-color: rgba(%1);")
                     .arg(QString::fromStdString(button.GetBackgroundColor().ToString(true)));
    // Parsing a sheet and polishing after it is dear.
    if (sheet != styleSheet())
        setStyleSheet(sheet);
}

void qbuttonBasic::applyPicture(const widgetButton &button)
{
    const Nodes::ResourceLink &link = button.GetImage();
    m_isPictureMissing = false;
    if (link.GetFilePath().empty())
        return; // the icon stays
    const Nodes::ResourcePtr resource = link.Load();
    const QImage *image = ImageCachingManager::getInstance().getImage(resource);
    m_isPictureMissing = !image || image->isNull();
    if (m_isPictureMissing) {
        MissingPicture::report(context(), button, link);
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
