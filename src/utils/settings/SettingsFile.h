#pragma once

#include "nodes/values/Result.h"

#include <QJsonObject>
#include <QString>

namespace Utils {

/// A file that holds one JSON object. Other processes may use it at the same time. Every failure is
/// also in the log.
class SettingsFile
{
public:
    explicit SettingsFile(QString path) : m_path(std::move(path)) {}

    /// An absent file reads as an empty object. What does not read is renamed to a free name and
    /// reported as ParseError or StorageError.
    [[nodiscard]] Nodes::Result read(QJsonObject &content) const;
    /// Reads the file, sets `key` and replaces the file. What did not read is set aside first; when
    /// that fails, nothing is written.
    [[nodiscard]] Nodes::Result replace(const QString &key, const QJsonValue &value) const;

private:
    Nodes::Result setAside(Nodes::Result::ResultType type, const QString &reason) const;
    Nodes::Result write(const QJsonObject &content) const;

    QString m_path;
};

} // namespace Utils
