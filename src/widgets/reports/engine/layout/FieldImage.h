#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

namespace LimeReport {

class ReportScope;
struct TemplateItem;

/// The picture of an ImageItem that comes from a field of a data source: encoded bytes, an image,
/// or the name of a file in the template's directory. Files anywhere else are refused.
class FieldImage
{
public:
    FieldImage(const TemplateItem &item, const QString &directory, const ReportScope &scope);

    /// Encoded; empty for no value and errors.
    const QByteArray &bytes() const { return m_bytes; }
    const QString &error() const { return m_error; }
    /// The error for operators.
    const QString &told() const { return m_told; }

private:
    void take(const QVariant &value, const QString &directory);
    void readFile(const QString &name, const QString &directory);
    void fail(const QString &error, const QString &told);

    QByteArray m_bytes;
    QString m_error;
    QString m_told;
};

} // namespace LimeReport
