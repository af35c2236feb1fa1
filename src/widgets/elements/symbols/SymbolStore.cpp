#include "widgets/elements/symbols/SymbolStore.h"

#include "widgets/elements/pictures/PictureDecoder.h"

#include "nodes/model/links/ResourceLink.h"

#include <QFile>

namespace Widgets {

namespace {

QByteArray builtIn(const QString &name)
{
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

SymbolStore::SymbolStore() : m_pictures(RenditionLimit) {}

SymbolStore::~SymbolStore() = default;

SymbolStore &SymbolStore::getInstance()
{
    static SymbolStore instance;
    return instance;
}

std::shared_ptr<Symbol> SymbolStore::get(const Nodes::ResourceLink &link)
{
    if (link.GetFilePath().empty())
        return nullptr;
    const QString path = QString::fromStdString(link.GetFilePath());
    if (link.IsBuiltIn()) {
        std::shared_ptr<Symbol> &symbol = m_symbols[path];
        if (!symbol)
            symbol = std::make_shared<Symbol>(builtIn(path));
        return symbol;
    }
    const Nodes::ResourcePtr file = link.Load();
    if (!file) // it may come yet
        return std::make_shared<Symbol>(QByteArray());
    std::shared_ptr<Symbol> &symbol =
        m_symbols[QString::number(quintptr(file.GetData())) + ' ' + path];
    if (!symbol)
        symbol = std::make_shared<Symbol>(PictureDecoder::bytes(file), file);
    return symbol;
}

QPixmap SymbolStore::draw(const std::shared_ptr<Symbol> &symbol, const SymbolStyle &style,
                          const SymbolPlace &place, QSize pixels)
{
    const double count = double(pixels.width()) * pixels.height();
    if (count > MaximumPixels)
        pixels = (QSizeF(pixels) * std::sqrt(MaximumPixels / count)).toSize();
    const QString key = QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8 ")
                            .arg(quintptr(symbol.get()))
                            .arg(place.area.width())
                            .arg(place.area.height())
                            .arg(place.angle)
                            .arg(int(place.isMirrored) + 2 * int(place.keepsAspect))
                            .arg(pixels.width())
                            .arg(pixels.height())
                            .arg(style.key());
    if (const QPixmap *kept = m_pictures.object(key))
        return *kept;
    const QPixmap drawn = symbol->draw(style, place, pixels);
    // A symbol of a missing file is not the store's, its address may come back: it draws nothing.
    if (!drawn.isNull())
        m_pictures.insert(key, new QPixmap(drawn), drawn.width() * drawn.height() * 4);
    return drawn;
}

} // namespace Widgets
