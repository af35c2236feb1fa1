#pragma once

#include "widgets/WidgetsExport.h"
#include "widgets/elements/symbols/Symbol.h"

#include <QCache>

namespace Nodes {
class ResourceLink;
}

namespace Widgets {

/// Symbols of the process and what they look like, shared by all who show them: each file is read
/// once, each picture of the same look and size is drawn once. GUI thread.
class WIDGETS_EXPORT SymbolStore
{
public:
    static constexpr int RenditionLimit = 32 << 20; ///< bytes of pixels kept
    /// Pixels of one picture: more than a display shows, whatever a node asks for.
    static constexpr qint64 MaximumPixels = 16'000'000;

    static SymbolStore &getInstance();
    SymbolStore(const SymbolStore &) = delete;
    SymbolStore &operator=(const SymbolStore &) = delete;

    /// File of the project or a built-in picture; null only for an empty link. One that cannot be
    /// shown says why.
    std::shared_ptr<Symbol> get(const Nodes::ResourceLink &link);
    /// Its picture for that many pixels, coarser beyond MaximumPixels.
    QPixmap draw(const std::shared_ptr<Symbol> &symbol, const SymbolStyle &style,
                 const SymbolPlace &place, QSize pixels);

    int getCount() const { return m_symbols.size(); }

private:
    SymbolStore();
    ~SymbolStore();

    QHash<QString, std::shared_ptr<Symbol>> m_symbols; // by file and its bytes
    QCache<QString, QPixmap> m_pictures;
};

} // namespace Widgets
