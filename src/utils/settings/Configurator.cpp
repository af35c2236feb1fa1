#include "utils/settings/Configurator.h"

#include "utils/settings/SettingsFile.h"

#include <QDir>
#include <QLoggingCategory>
#include <QStandardPaths>

namespace Utils {

namespace {

Q_LOGGING_CATEGORY(settingsLog, "station.settings")

} // namespace

Configurator::Configurator(QString name, QString fileName)
    : m_name(std::move(name)), m_fileName(std::move(fileName))
{
}

Configurator::~Configurator() = default;

QString Configurator::settingsPath() const
{
    const QDir base(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation));
    return base.filePath(m_fileName);
}

Nodes::Result Configurator::load(QJsonObject &settings) const
{
    QJsonObject content;
    const Nodes::Result result = SettingsFile(settingsPath()).read(content);
    const QJsonValue kept = content.value(m_name);
    settings = kept.toObject();
    if (!result || kept.isObject() || kept.isUndefined())
        return result;
    const QString text = QStringLiteral("%1: \"%2\" is not an object").arg(settingsPath(), m_name);
    qCWarning(settingsLog, "settings file %s; it is not used", qUtf8Printable(text));
    return Nodes::Result(Nodes::Result::ParseError, text.toStdString());
}

Nodes::Result Configurator::save(const QJsonObject &settings) const
{
    return SettingsFile(settingsPath()).replace(m_name, settings);
}

} // namespace Utils
