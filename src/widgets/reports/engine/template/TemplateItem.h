#pragma once

#include "widgets/WidgetsExport.h"

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>
#include <QVariantMap>

#include <vector>

namespace LimeReport {

/// One object of a template: a band, an item on it, a layout. Immutable once it has been read, so
/// that any thread may read it.
///
/// A property is a QVariant: int, bool, double, QString, QColor, QRectF, QFont, QByteArray (the
/// bytes of an encoded picture), QVariantMap (an object, with its class under "ClassName") or
/// QVariantList of such maps (a collection). Enumerations are int, or QString where the file
/// writes words.
struct WIDGETS_EXPORT TemplateItem
{
    QString className;
    QString name;
    /// 0.1 mm, relative to the parent.
    QRectF geometry;
    QVariantMap properties;
    /// In the file's order.
    std::vector<TemplateItem> children;
    /// Unique in its template and dense: an index for what is kept per item.
    int number = 0;

    bool has(const QString &key) const { return properties.contains(key); }
    QString text(const QString &key, const QString &otherwise = QString()) const;
    /// Also of a property that the file writes as a number in another type.
    int integer(const QString &key, int otherwise = 0) const;
    double real(const QString &key, double otherwise = 0) const;
    bool flag(const QString &key, bool otherwise = false) const;
    QColor color(const QString &key, const QColor &otherwise = QColor()) const;
    /// A copy that no other thread uses.
    QFont font(const QString &key = QStringLiteral("font")) const;
};

} // namespace LimeReport
