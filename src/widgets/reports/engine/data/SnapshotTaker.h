#pragma once

#include "widgets/reports/engine/data/DataSet.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>

#include <memory>

class QAbstractItemModel;
class QTimer;

namespace LimeReport {

class DataSourceManager;
class SnapshotRows;

/// Reads the models of a manager on the GUI thread in slices of a few milliseconds, so that large
/// ones stall nothing. A model that changes meanwhile is read again from its beginning, and after
/// some such attempts in one go: what is taken was the model's content at one moment. Models that
/// are SharedRowsModel are taken over at once.
class WIDGETS_EXPORT SnapshotTaker : public QObject
{
    Q_OBJECT

public:
    explicit SnapshotTaker(QObject *parent = nullptr);
    ~SnapshotTaker() override;

    /// Ends what is under way. taken() follows from the event loop, never from within.
    void start(const DataSourceManager &manager);
    void cancel();
    /// How long a slice may take; 0: as few rows as are read between two looks at the clock.
    void setSlice(int milliseconds) { m_sliceMilliseconds = milliseconds; }
    bool isRunning() const { return m_isRunning; }

signals:
    void taken(const LimeReport::DataSet &data);

private:
    struct Reading;

    void onSlice();
    void onModelChanged();
    void nextModel();
    void finishModel();

    QTimer *m_timer;
    std::unique_ptr<Reading> m_reading;
    bool m_isRunning = false;
    int m_sliceMilliseconds = 6;
};

} // namespace LimeReport
