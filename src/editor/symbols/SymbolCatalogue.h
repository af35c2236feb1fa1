#pragma once

#include "widgets/scene/editing/DroppedProperties.h"

#include <QSize>
#include <QString>
#include <QVector>

namespace Editor {

/// A symbol that the palette offers.
struct SymbolRow
{
    QString source; ///< as the property `source` of the element names it
    QString title;  ///< Russian
    QString group;  ///< Russian
    QSize size;     ///< of a new element, pixels
    bool keepsAspect = true;

    /// Of a new element that shows it.
    Widgets::DroppedProperties::Texts properties() const;
};

/// Built-in symbols, and the vector pictures of a project. GUI thread.
class SymbolCatalogue
{
public:
    static constexpr int MaximumOwn = 1000; ///< files of a project that are offered

    static const QVector<SymbolRow> &builtIn();
    /// SVG files below the project's directory that may be symbols, by path; those that are no
    /// symbols are left out.
    static QVector<SymbolRow> own(const QString &directory);
    static QString ownGroup();
};

} // namespace Editor
