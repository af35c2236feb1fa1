#include "widgets/elements/symbols/Symbol.h"

#include "widgets/elements/symbols/SymbolCheck.h"

#include <QPainter>
#include <QSvgRenderer>

namespace Widgets {

Symbol::Symbol(const QByteArray &svg, const Nodes::ResourcePtr &file)
    : m_file(file), m_svg(svg), m_refusal(SymbolCheck::refusal(svg))
{
    if (m_refusal.isEmpty())
        measure();
}

Symbol::~Symbol() = default;

void Symbol::measure()
{
    const QSvgRenderer &plain = renderer(SymbolStyle());
    const QRectF box = plain.viewBoxF();
    m_size = box.size();
    const bool isSane = m_size.width() < 1e6 && m_size.height() < 1e6; // not NaN either
    if (!plain.isValid() || box.isEmpty() || !isSane) {
        m_size = QSizeF();
        m_refusal = QStringLiteral("не читается как SVG или не имеет размера. Сохраните его "
                                   "заново.");
        return;
    }
    const QString level = QLatin1String(SymbolStyle::LevelId);
    if (!plain.elementExists(level))
        return;
    const QRectF own = plain.transformForElement(level).mapRect(plain.boundsOnElement(level));
    m_levelBox = QRectF((own.x() - box.x()) / box.width(), (own.y() - box.y()) / box.height(),
                        own.width() / box.width(), own.height() / box.height());
}

QSvgRenderer &Symbol::renderer(const SymbolStyle &style)
{
    std::shared_ptr<QSvgRenderer> &kept = m_renderers[style.key()];
    if (!kept)
        kept = std::make_shared<QSvgRenderer>(style.apply(m_svg));
    return *kept;
}

void Symbol::prepare(const SymbolStyle &style)
{
    if (m_refusal.isEmpty())
        (void)renderer(style);
}

QPixmap Symbol::draw(const SymbolStyle &style, const SymbolPlace &place, const QSize &pixels)
{
    if (!m_refusal.isEmpty() || pixels.isEmpty())
        return {};
    QPixmap picture(pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(double(pixels.width()) / place.area.width(),
                  double(pixels.height()) / place.area.height());
    painter.setTransform(place.transform(m_size), true);
    renderer(style).render(&painter, QRectF(0, 0, 1, 1));
    return picture;
}

} // namespace Widgets
