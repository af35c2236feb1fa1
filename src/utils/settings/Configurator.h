#pragma once

#include "utils/UtilsExport.h"

#include "nodes/values/Result.h"

#include <QJsonObject>
#include <QString>

namespace Utils {

/// Settings kept for the next run of the program: one JSON object under a name within a file that
/// several objects share. The file lies in the user's directory for configuration. Nothing is held
/// in memory, so any number of objects may use the same file. GUI thread.
class UTILS_EXPORT Configurator
{
public:
    /// `name` is the key within the file, `fileName` relative to the configuration directory.
    Configurator(QString name, QString fileName);
    virtual ~Configurator();

    QString settingsPath() const;

    /// The kept object; empty when nothing is kept, which is a success. A file that is damaged or
    /// cannot be read is set aside beside itself as "<file>.damaged", a warning in the log says
    /// where, and the outcome is ParseError or StorageError.
    [[nodiscard]] Nodes::Result load(QJsonObject &settings) const;
    /// Replaces the kept object; those under other names stay. The file is replaced as a whole, so
    /// a loss of power leaves the old or the new one. Failures (StorageError) are logged too and
    /// leave the file as it was.
    [[nodiscard]] Nodes::Result save(const QJsonObject &settings) const;

private:
    QString m_name;
    QString m_fileName;
};

} // namespace Utils
