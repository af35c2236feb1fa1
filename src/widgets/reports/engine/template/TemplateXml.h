#pragma once

#include <QStringList>
#include <QVariantMap>

class QXmlStreamReader;

namespace LimeReport {

/// The file's objects as nested maps: each has its class under ClassName and its properties under
/// their names, a collection is a list of such maps. Reads in one pass and keeps no document;
/// entities of a document type are not read, nesting and number of objects are bounded.
class TemplateXml
{
public:
    static QString ClassName() { return QStringLiteral("ClassName"); }

    /// The object under <Report>; empty with error() when there is none.
    QVariantMap read(const QByteArray &xml);
    /// With line and column; "" when all could be read.
    const QString &error() const { return m_error; }
    /// Values that could not be read and types that are not known.
    const QStringList &problems() const { return m_problems; }

private:
    QVariantMap object(QXmlStreamReader &xml, int depth);
    QVariantList collection(QXmlStreamReader &xml, int depth);
    QVariant property(QXmlStreamReader &xml, int depth);
    QVariant number(QXmlStreamReader &xml, const QString &type);
    QVariant structure(QXmlStreamReader &xml, const QString &type);
    bool readToRoot(QXmlStreamReader &xml);
    bool enter(QXmlStreamReader &xml, int depth);
    void tell(const QXmlStreamReader &xml, const QString &text);

    QString m_error;
    QStringList m_problems;
    int m_objects = 0;
};

} // namespace LimeReport
