#pragma once

#include <QObject>
#include <QString>

class QJsonArray;
class QWidget;

namespace Configurator {

/// Writes where the visible controls are, what they say, and where elements, rows and tabs stand,
/// to a JSON file, whenever that changes: for scripted tours and tests, which then click like a
/// user. Screen coordinates. GUI thread.
class UiMap : public QObject
{
    Q_OBJECT

public:
    explicit UiMap(const QString &file, QObject *parent = nullptr);

private:
    void timerEvent(QTimerEvent *event) override;
    static void addWidget(const QWidget &widget, QJsonArray &controls);
    static void addParts(const QWidget &widget, QJsonArray &controls);

    QString m_file;
    QByteArray m_written;
};

} // namespace Configurator
