#pragma once

#include "widgets/WidgetsExport.h"

#include "nodes/alarms/statistics/AlarmFigures.h"

#include <QObject>
#include <QThreadPool>

#include <memory>

namespace Widgets {

/// Writes alarm health into a CSV file on a thread of its own: the measures, the alarms, and how
/// many were raised in each ten minutes. The file appears when all of it is written. GUI thread.
class WIDGETS_EXPORT HealthCsv : public QObject
{
    Q_OBJECT

public:
    explicit HealthCsv(QObject *parent = nullptr) : QObject(parent) {}
    ~HealthCsv() override;

    /// UTF-8 with a mark, separated by commas. Any thread.
    static QByteArray text(const Nodes::AlarmFigures &figures);
    void save(const QString &file, const std::shared_ptr<const Nodes::AlarmFigures> &figures);

signals:
    /// `error` is "" after success, else for operators.
    void saved(const QString &file, const QString &error);

private:
    QThreadPool m_threads;
};

} // namespace Widgets
